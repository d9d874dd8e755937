#pragma once
#include <QByteArray>
#include <QString>
#include <pugixml.hpp>
#include <string>
#include <string_view>

// XML as the parts of a workbook have it. Writers differ in the prefix of their elements: names are compared and made
// without it.

namespace workbook_inner {

// Raises error 321: the part cannot be read.
[[noreturn]] void Raise_Damaged(const QString& part);
void Parse_Xml(pugi::xml_document& document, const QByteArray& xml, const QString& part);  // error 321
// With the declaration of UTF-8, without blanks between the elements.
QByteArray Xml_Text(const pugi::xml_document& document);

std::string_view Local_Name(const char* name);  // without its prefix
// The first child of that name; an empty node, and an empty attribute, where there is none.
pugi::xml_node Child(const pugi::xml_node& parent, std::string_view local);
pugi::xml_attribute Attribute(const pugi::xml_node& node, std::string_view local);  // its first of that name
QString Attribute_Text(const pugi::xml_node& node, std::string_view local);         // "" where it is missing
bool Attribute_True(const pugi::xml_node& node, std::string_view local);            // "1" or "true"
// An attribute without a prefix, made where it is missing.
void Set_Attribute(pugi::xml_node node, const char* name, const QString& value);
// "x:" of <x:workbook>, else "".
std::string Prefix_Of(const pugi::xml_node& node);
// A new last child with the prefix of its parent.
pugi::xml_node Append_Child(pugi::xml_node parent, const char* local);
// The same behind `before`; the first child where that is empty.
pugi::xml_node Insert_Child(pugi::xml_node parent, const char* local, const pugi::xml_node& before);

// The text of a cell with &, <, > written as XML has them, and what could be read as an escape of its own escaped.
void Append_Escaped(std::string& out, QStringView text);
// Text of a string item: its own or that of its runs, without phonetic hints.
QString Item_Text(const pugi::xml_node& item);

// Calls visit(child) for every child of that name, in their order.
template <class Visit>
void For_Children(const pugi::xml_node& parent, std::string_view local, Visit visit) {
  for (const pugi::xml_node& child : parent.children())
    if (Local_Name(child.name()) == local) visit(child);
}

}  // namespace workbook_inner
