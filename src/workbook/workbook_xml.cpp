#include "workbook/workbook_xml.h"

#include <QRegularExpression>

#include "workbook/workbook_errors.h"

namespace workbook_inner {
namespace {
// "_x000D_" in a text stands for a character.
bool Is_Escape(QStringView text, qsizetype at) {
  if (text.size() < at + 7 || text[at] != u'_' || text[at + 1] != u'x' || text[at + 6] != u'_') return false;
  for (qsizetype i = at + 2; i < at + 6; ++i) {
    const char16_t c = text[i].unicode();
    if (!((c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f'))) return false;
  }
  return true;
}

QString Unescaped(const QString& text) {
  if (!text.contains(QLatin1String("_x"))) return text;
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!Is_Escape(text, i)) {
      plain += text[i];
      continue;
    }
    plain += QChar(static_cast<char16_t>(QStringView(text).mid(i + 2, 4).toUShort(nullptr, 16)));
    i += 6;
  }
  return plain;
}

struct ByteWriter : pugi::xml_writer {
  QByteArray bytes;
  void write(const void* data, size_t size) override {
    bytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
  }
};
}  // namespace

void Raise_Damaged(const QString& part) {
  Raise(workbook_errors::damaged, QStringLiteral("Die Arbeitsmappe ist beschädigt (\"%1\").").arg(part));
}

void Parse_Xml(pugi::xml_document& document, const QByteArray& xml, const QString& part) {
  // Blanks between and within elements are kept: they may be the user's texts.
  constexpr unsigned int options =
      pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration | pugi::parse_pi | pugi::parse_comments;
  if (!document.load_buffer(xml.constData(), static_cast<size_t>(xml.size()), options) || !document.document_element())
    Raise_Damaged(part);
}

QByteArray Xml_Text(const pugi::xml_document& document) {
  ByteWriter writer;
  writer.bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  for (const pugi::xml_node& node : document.children())
    if (node.type() != pugi::node_declaration) node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return writer.bytes;
}

std::string_view Local_Name(const char* name) {
  const std::string_view whole(name);
  const size_t colon = whole.rfind(':');
  return colon == std::string_view::npos ? whole : whole.substr(colon + 1);
}

pugi::xml_node Child(const pugi::xml_node& parent, std::string_view local) {
  for (const pugi::xml_node& child : parent.children())
    if (Local_Name(child.name()) == local) return child;
  return {};
}

pugi::xml_attribute Attribute(const pugi::xml_node& node, std::string_view local) {
  pugi::xml_attribute found;
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (local == attribute.name()) return attribute;
    if (!found && Local_Name(attribute.name()) == local) found = attribute;
  }
  return found;
}

QString Attribute_Text(const pugi::xml_node& node, std::string_view local) {
  return QString::fromUtf8(Attribute(node, local).value());
}

bool Attribute_True(const pugi::xml_node& node, std::string_view local) { return Attribute(node, local).as_bool(); }

void Set_Attribute(pugi::xml_node node, const char* name, const QString& value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute.set_value(value.toUtf8().constData());
}

std::string Prefix_Of(const pugi::xml_node& node) {
  const std::string name = node.name();
  const size_t colon = name.rfind(':');
  return colon == std::string::npos ? std::string() : name.substr(0, colon + 1);
}

pugi::xml_node Append_Child(pugi::xml_node parent, const char* local) {
  return parent.append_child((Prefix_Of(parent) + local).c_str());
}

pugi::xml_node Insert_Child(pugi::xml_node parent, const char* local, const pugi::xml_node& before) {
  const std::string name = Prefix_Of(parent) + local;
  return before ? parent.insert_child_after(name.c_str(), before) : parent.prepend_child(name.c_str());
}

void Append_Escaped(std::string& out, QStringView text) {
  QString escaped;
  for (qsizetype i = text.indexOf(u'_'); i >= 0; i = text.indexOf(u'_', i + 1)) {
    if (!Is_Escape(text, i)) continue;
    escaped = text.toString();
    for (qsizetype at = escaped.size() - 7; at >= 0; --at)
      if (Is_Escape(escaped, at)) escaped.insert(at, QLatin1String("_x005F"));
    text = escaped;
    break;
  }
  const QByteArray bytes = text.toUtf8();
  for (const char c : bytes) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      default:
        out += c;
    }
  }
}

QString Item_Text(const pugi::xml_node& item) {
  QString text;
  for (const pugi::xml_node& child : item.children()) {
    const std::string_view name = Local_Name(child.name());
    if (name == "t") text += QString::fromUtf8(child.child_value());
    if (name == "r") text += QString::fromUtf8(Child(child, "t").child_value());
  }
  return Unescaped(text);
}

}  // namespace workbook_inner
