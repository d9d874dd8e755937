#include "workbook/workbook_book.h"

#include <QUrl>
#include <algorithm>
#include <array>

namespace workbook_inner {
namespace {
const QString typesPart = QStringLiteral("[Content_Types].xml");
const QString officeBase = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");
const char* const mainNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* sheetType = "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
constexpr const char* styleType = "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml";

QString Folder_Of(const QString& part) { return part.left(part.lastIndexOf(u'/') + 1); }

// The prefix of identifiers, as the workbook declares it; "" if it does not.
QByteArray Id_Prefix(const pugi::xml_node& root) {
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    const QByteArray name(attribute.name()), value(attribute.value());
    if (name.startsWith("xmlns:") && value.endsWith("/relationships")) return name.mid(6);
  }
  return {};
}

const char* const newTypes =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/xl/workbook.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/></Types>";
const char* const newRelations =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";
const char* const newBook =
    "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
    "<bookViews><workbookView/></bookViews><sheets/></workbook>";
}  // namespace

Relations::Relations(const Package& package, const QString& ownerPart) : owner(ownerPart) {
  const QString name = Part_Of(owner);
  Parse_Xml(document, package.Has(name) ? package.Read(name) : QByteArray(newRelations), name);
}

QString Relations::Part_Of(const QString& owner) {
  const QString folder = Folder_Of(owner);
  return folder + QStringLiteral("_rels/") + owner.mid(folder.size()) + QStringLiteral(".rels");
}

// Targets are absolute or relative to the owner's folder, and written as in an address.
QString Relations::Resolved(const pugi::xml_node& relation) const {
  if (Attribute_Text(relation, "TargetMode") == QLatin1String("External")) return {};
  const QString target = QUrl::fromPercentEncoding(Attribute(relation, "Target").value());
  QStringList path;
  const QString whole = target.startsWith(u'/') ? target : Folder_Of(owner) + target;
  for (const QString& step : whole.split(u'/', Qt::SkipEmptyParts)) {
    if (step == QLatin1String("..")) {
      if (!path.isEmpty()) path.removeLast();
    } else if (step != QLatin1String(".")) {
      path += step;
    }
  }
  return path.join(u'/');
}

QString Relations::Target_By_Kind(const QString& kind) const {
  for (const pugi::xml_node& node : document.document_element().children())
    if (Attribute_Text(node, "Type").endsWith(u'/' + kind)) return Resolved(node);
  return {};
}

QString Relations::Target_By_Id(const QString& id) const {
  for (const pugi::xml_node& node : document.document_element().children())
    if (Attribute_Text(node, "Id") == id) return Resolved(node);
  return {};
}

bool Relations::Is_Kind(const QString& id, const QString& kind) const {
  for (const pugi::xml_node& node : document.document_element().children())
    if (Attribute_Text(node, "Id") == id) return Attribute_Text(node, "Type").endsWith(u'/' + kind);
  return false;
}

QString Relations::Type_Base() const {
  for (const pugi::xml_node& node : document.document_element().children()) {
    const QString type = Attribute_Text(node, "Type");
    if (type.endsWith(QLatin1String("/worksheet"))) return type.chopped(10);
  }
  return {};
}

QString Relations::Id_Of(const QString& target) const {
  for (const pugi::xml_node& node : document.document_element().children())
    if (Resolved(node).compare(target, Qt::CaseInsensitive) == 0) return Attribute_Text(node, "Id");
  return {};
}

void Relations::Add(const QString& type, const QString& target) {
  const pugi::xml_node root = document.document_element();
  QStringList taken;
  for (const pugi::xml_node& node : root.children()) taken += Attribute_Text(node, "Id");
  int number = 1;
  while (taken.contains(QStringLiteral("rId%1").arg(number), Qt::CaseInsensitive)) ++number;
  pugi::xml_node node = Append_Child(root, "Relationship");
  Set_Attribute(node, "Id", QStringLiteral("rId%1").arg(number));
  Set_Attribute(node, "Type", type);
  Set_Attribute(node, "Target", target);
}

void Relations::Remove(const QString& target) {
  pugi::xml_node root = document.document_element();
  for (pugi::xml_node node = root.first_child(); node;) {
    const pugi::xml_node next = node.next_sibling();
    if (Resolved(node).compare(target, Qt::CaseInsensitive) == 0) root.remove_child(node);
    node = next;
  }
}

Book::Book(Package& parts) : package(parts) {
  if (!package.Has(typesPart)) Make_New();
  part = Relations(package, QString()).Target_By_Kind(QStringLiteral("officeDocument"));
  if (part.isEmpty()) Raise_Damaged(QStringLiteral("_rels/.rels"));
  Parse_Xml(types, package.Read(typesPart), typesPart);
  Parse_Xml(document, package.Read(part), part);
  if (Local_Name(Root().name()) != "workbook" || !Child(Root(), "sheets")) Raise_Damaged(part);
  relations = std::make_unique<Relations>(package, part);
  for (const Entry& sheet : Sheets())
    if (!package.Has(sheet.part)) Raise_Damaged(sheet.name);
}

void Book::Make_New() {
  package.Put(typesPart, newTypes);
  Relations root(package, QString());
  root.Add(officeBase + QStringLiteral("/officeDocument"), QStringLiteral("xl/workbook.xml"));
  package.Put(Relations::Part_Of(QString()), root.Bytes());
  package.Put(QStringLiteral("xl/workbook.xml"), newBook);
}

std::vector<Book::Entry> Book::Sheets() const {
  std::vector<Entry> sheets;
  For_Children(Child(Root(), "sheets"), "sheet", [&](const pugi::xml_node& node) {
    const QString id = Attribute_Text(node, "id");
    sheets.push_back({Attribute_Text(node, "name"), relations->Target_By_Id(id),
                      relations->Is_Kind(id, QStringLiteral("worksheet"))});
  });
  return sheets;
}

int Book::Find(const QString& name) const {
  const std::vector<Entry> sheets = Sheets();
  for (size_t i = 0; i < sheets.size(); ++i)
    if (sheets[i].name.compare(name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  return -1;
}

pugi::xml_node Book::Sheet_Node(int index) const {
  for (const pugi::xml_node& node : Child(Root(), "sheets").children())
    if (Local_Name(node.name()) == "sheet" && index-- == 0) return node;
  return {};
}

QString Book::Main_Namespace() const {
  const std::string prefix = Prefix_Of(Root());
  const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + prefix.substr(0, prefix.size() - 1);
  const QString declared = QString::fromUtf8(Root().attribute(name.c_str()).value());
  return declared.isEmpty() ? QString::fromLatin1(mainNamespace) : declared;
}

bool Book::Counts_From_1904() const { return Attribute_True(Child(Root(), "workbookPr"), "date1904"); }

bool Book::Has_View() const { return static_cast<bool>(Child(Child(Root(), "bookViews"), "workbookView")); }

int Book::Active() const { return Attribute(Child(Child(Root(), "bookViews"), "workbookView"), "activeTab").as_int(); }

void Book::Set_Active(int index) {
  if (Has_View()) Set_Attribute(Child(Child(Root(), "bookViews"), "workbookView"), "activeTab", QString::number(index));
}

QString Book::Add_Part(const QString& kind, const QString& name) {
  const QString base = relations->Type_Base();
  const QString added = Folder_Of(part) + name;
  // Absolute: so it is right wherever the workbook's own part lies.
  relations->Add((base.isEmpty() ? officeBase : base) + u'/' + kind, u'/' + added);
  relationsChanged = true;
  Add_Content_Type(added, kind == QLatin1String("worksheet") ? sheetType : styleType);
  return added;
}

QString Book::Add_Sheet(const QString& name) {
  int number = 1, highestId = 0;
  const auto partName = [&] { return QStringLiteral("worksheets/sheet%1.xml").arg(number); };
  while (package.Has(Folder_Of(part) + partName())) ++number;
  const QString added = Add_Part(QStringLiteral("worksheet"), partName());
  for (const pugi::xml_node& node : Child(Root(), "sheets").children())
    highestId = std::max(highestId, std::min(Attribute(node, "sheetId").as_int(), std::numeric_limits<int>::max() - 1));
  pugi::xml_node node = Append_Child(Child(Root(), "sheets"), "sheet");
  Set_Attribute(node, "name", name);
  Set_Attribute(node, "sheetId", QString::number(highestId + 1));
  QByteArray prefix = Id_Prefix(Root());
  if (prefix.isEmpty()) {
    prefix = "r";
    const QString base = relations->Type_Base();
    Set_Attribute(node, "xmlns:r", base.isEmpty() ? officeBase : base);
  }
  Set_Attribute(node, (prefix + ":id").constData(), relations->Id_Of(added));
  return added;
}

void Book::Drop_Own_Names(int index) {
  pugi::xml_node names = Child(Root(), "definedNames");
  for (pugi::xml_node node = names.first_child(); node;) {
    const pugi::xml_node next = node.next_sibling();
    const pugi::xml_attribute own = Attribute(node, "localSheetId");
    if (own && own.as_int() == index) names.remove_child(node);
    node = next;
  }
  if (names && !Child(names, "definedName")) Root().remove_child(names);
}

void Book::Drop_Calculation_Chain() {
  const QString chain = relations->Target_By_Kind(QStringLiteral("calcChain"));
  if (chain.isEmpty()) return;
  package.Remove(chain);
  relations->Remove(chain);
  relationsChanged = true;
  Remove_Content_Type(chain);
}

void Book::Reorder(const std::vector<int>& newPlaces) {
  const auto map = [&newPlaces](pugi::xml_attribute attribute) {
    if (!attribute) return;
    const auto former = static_cast<size_t>(std::max(0, attribute.as_int()));
    attribute.set_value(former < newPlaces.size() ? std::max(0, newPlaces[former]) : 0);
  };
  For_Children(Child(Root(), "definedNames"), "definedName",
               [&map](const pugi::xml_node& node) { map(Attribute(node, "localSheetId")); });
  For_Children(Child(Root(), "bookViews"), "workbookView", [&map](const pugi::xml_node& node) {
    map(Attribute(node, "activeTab"));
    map(Attribute(node, "firstSheet"));
  });
}

void Book::Renew_Sheet(int index) {
  Drop_Own_Names(index);
  Drop_Calculation_Chain();
  pugi::xml_node sheets = Child(Root(), "sheets");
  pugi::xml_node node = Sheet_Node(index);
  node.remove_attribute(Attribute(node, "state"));
  sheets.append_move(node);
  const auto count = static_cast<int>(Sheets().size());
  std::vector<int> places;
  for (int i = 0; i < count; ++i) places.push_back(i == index ? count - 1 : i > index ? i - 1 : i);
  Reorder(places);
}

void Book::Remove_Sheet(int index) {
  const auto count = static_cast<int>(Sheets().size());
  const QString gone = Sheets()[static_cast<size_t>(index)].part;
  Drop_Own_Names(index);
  Drop_Calculation_Chain();
  Child(Root(), "sheets").remove_child(Sheet_Node(index));
  relations->Remove(gone);
  relationsChanged = true;
  Remove_Content_Type(gone);
  package.Remove(gone);
  package.Remove(Relations::Part_Of(gone));
  std::vector<int> places;
  for (int i = 0; i < count; ++i) places.push_back(i == index ? -1 : i > index ? i - 1 : i);
  Reorder(places);
}

int Book::Visible_Count() const {
  int count = 0;
  For_Children(Child(Root(), "sheets"), "sheet", [&count](const pugi::xml_node& node) {
    const QString state = Attribute_Text(node, "state");
    count += state.isEmpty() || state == QLatin1String("visible") ? 1 : 0;
  });
  return count;
}

bool Book::Is_Named(const QString& sheet) const {
  const int index = Find(sheet);
  bool named = false;
  For_Children(Child(Root(), "definedNames"), "definedName", [&](const pugi::xml_node& node) {
    const pugi::xml_attribute own = Attribute(node, "localSheetId");
    named = named || (own && own.as_int() == index) || QString::fromUtf8(node.child_value()).contains(sheet);
  });
  return named;
}

void Book::Ask_Calculation() {
  pugi::xml_node settings = Child(Root(), "calcPr");
  if (!settings) {
    // Its place among the children is fixed: behind the last of these that is there.
    pugi::xml_node before;
    for (const char* name : {"sheets", "functionGroups", "externalReferences", "definedNames"})
      if (const pugi::xml_node child = Child(Root(), name)) before = child;
    settings = Insert_Child(Root(), "calcPr", before);
  }
  Set_Attribute(settings, "fullCalcOnLoad", QStringLiteral("1"));
}

void Book::Remove_Content_Type(const QString& gone) {
  pugi::xml_node root = types.document_element();
  for (pugi::xml_node node = root.first_child(); node;) {
    const pugi::xml_node next = node.next_sibling();
    if (Attribute_Text(node, "PartName").compare(u'/' + gone, Qt::CaseInsensitive) == 0) {
      root.remove_child(node);
      typesChanged = true;
    }
    node = next;
  }
}

void Book::Add_Content_Type(const QString& added, const char* type) {
  pugi::xml_node node = Append_Child(types.document_element(), "Override");
  Set_Attribute(node, "PartName", u'/' + added);
  Set_Attribute(node, "ContentType", QString::fromLatin1(type));
  typesChanged = true;
}

void Book::Store() {
  package.Put(part, Xml_Text(document));
  if (typesChanged) package.Put(typesPart, Xml_Text(types));
  if (relationsChanged) package.Put(Relations::Part_Of(part), relations->Bytes());
}

}  // namespace workbook_inner
