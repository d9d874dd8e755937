#pragma once
#include <QByteArray>
#include <QHash>
#include <QString>
#include <array>
#include <pugixml.hpp>

#include "workbook/workbook_sheet.h"

namespace workbook_inner {

// The style part: fonts, fills, borders, number formats, and the cell formats that join them by number. Cells name a
// cell format by its place, so entries are only appended, and used again where an equal one is there.
class StyleTable {
 public:
  // No bytes: the styles of a new workbook. Error 321.
  explicit StyleTable(const QByteArray& xml);
  // Place of the cell format. `plainText`: the text begins like a formula; it stays a text when the cell is edited.
  int Place_Of(const CellStyle& style, bool plainText);
  // What of the cell format at the place a cell style can say; the standard one beyond the list.
  CellStyle Style_At(int place) const;
  bool Changed() const { return changed; }
  QByteArray Bytes() const;  // of the part as it is now

 private:
  struct List {  // one of the lists; place of each entry by its XML
    pugi::xml_node node;
    QHash<QByteArray, int> places;
    int count = 0;
  };
  void Load(List& list, const char* local, const pugi::xml_node& before);
  int Place(List& list, const std::string& entry);
  int Format_Id(const QString& format);
  std::string Font_Xml(const CellStyle& style) const;
  std::string Fill_Xml(QRgb color) const;
  std::string Border_Xml(QRgb color) const;
  QString Format_By_Id(int id) const;

  pugi::xml_document document;
  std::string prefix;
  List formats, fonts, fills, borders, cells;
  QHash<QString, int> formatIds;
  CellStyle standard;
  bool changed = false;
};

}  // namespace workbook_inner
