#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "workbook/workbook_package.h"
#include "workbook/workbook_xml.h"

namespace workbook_inner {

// The relationships of a part: which other parts belong to it, by an identifier.
class Relations {
 public:
  // The part of relationships that belongs to `owner`; an empty list if there is none.
  Relations(const Package& package, const QString& owner);
  static QString Part_Of(const QString& owner);  // "xl/workbook.xml" -> "xl/_rels/workbook.xml.rels"
  // Part of the relationship whose type ends with "/" + kind, or with that identifier; "" if there is none.
  QString Target_By_Kind(const QString& kind) const;
  QString Target_By_Id(const QString& id) const;  // the part it points to; "" if there is none
  // Does the type of that relationship end with "/" + kind? False if there is none.
  bool Is_Kind(const QString& id, const QString& kind) const;
  void Add(const QString& type, const QString& target);  // target relative to the owner, or absolute
  QString Id_Of(const QString& target) const;            // of the relationship that points to the part; ""
  void Remove(const QString& target);                    // all that point to that part
  QString Type_Base() const;  // what stands before "/worksheet" in a type; "" if there is none to learn from
  QByteArray Bytes() const { return Xml_Text(document); }

 private:
  QString Resolved(const pugi::xml_node& relation) const;
  QString owner;
  pugi::xml_document document;
};

// The workbook's own parts: the list of sheets in their order, relationships, content types.
class Book {
 public:
  explicit Book(Package& package);  // of an empty package: a new book

  struct Entry {
    QString name, part;
    bool worksheet = false;
  };
  std::vector<Entry> Sheets() const;    // in their order; all further numbers of sheets are places in it, from 0
  int Find(const QString& name) const;  // in any case; -1
  QString Part_Of_Kind(const QString& kind) const { return relations->Target_By_Kind(kind); }
  QString Main_Namespace() const;  // of its elements: there are two, by the kind of writer
  bool Counts_From_1904() const;   // its days; else from 1899-12-30
  bool Has_View() const;           // does it describe a window, which the views of sheets can name?
  int Active() const;              // the sheet that is shown first; 0 where nothing says so
  void Set_Active(int index);      // nothing happens without such a window

  // A part of that kind ("styles") with its relationship and content type. Its name is free.
  QString Add_Part(const QString& kind, const QString& name);
  // Adds a sheet at the end; gives the name of its part.
  QString Add_Sheet(const QString& name);
  // Moves it behind the last one and forgets the names of its former cells; it is shown again if it was hidden.
  void Renew_Sheet(int index);
  // With its part, its relationships and the names that are its own.
  void Remove_Sheet(int index);
  int Visible_Count() const;  // of sheets that are not hidden
  // Whether a name, here or of the whole book, points to the sheet.
  bool Is_Named(const QString& sheet) const;
  // Formulas of other sheets are to be computed anew when the file is opened.
  void Ask_Calculation();
  void Store();  // writes its parts into the package

 private:
  void Make_New();
  pugi::xml_node Sheet_Node(int index) const;
  void Drop_Own_Names(int index);
  void Drop_Calculation_Chain();
  void Reorder(const std::vector<int>& newPlaces);  // of every former place; -1 = gone
  void Remove_Content_Type(const QString& part);
  void Add_Content_Type(const QString& part, const char* type);
  pugi::xml_node Root() const { return document.document_element(); }

  Package& package;
  QString part;
  pugi::xml_document document, types;
  std::unique_ptr<Relations> relations;
  bool typesChanged = false, relationsChanged = false;
};

}  // namespace workbook_inner
