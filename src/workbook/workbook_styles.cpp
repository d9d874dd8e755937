#include "workbook/workbook_styles.h"

#include "platform/text.h"
#include "workbook/workbook_xml.h"

namespace workbook_inner {
namespace {
const char* const ownStyles =
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<fonts count=\"1\"><font><sz val=\"10\"/><name val=\"Arial\"/><family val=\"2\"/></font></fonts>"
    "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
    "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
    "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
    "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
    "<cellXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/></cellXfs>"
    "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
    "</styleSheet>";

constexpr int firstOwnFormat = 164;  // smaller numbers mean fixed formats

QByteArray Entry_Text(const pugi::xml_node& node) {
  struct Writer : pugi::xml_writer {
    QByteArray bytes;
    void write(const void* data, size_t size) override {
      bytes.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
    }
  } writer;
  node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return writer.bytes;
}

pugi::xml_node Entry_At(const pugi::xml_node& list, int place) {
  for (const pugi::xml_node& entry : list.children())
    if (place >= 0 && entry.type() == pugi::node_element && place-- == 0) return entry;
  return {};
}

// "FF0000FF" or "0000FF"; nothing for colours by theme or number.
std::optional<QRgb> Color_Of(const pugi::xml_node& node) {
  bool valid = false;
  const uint number = Attribute_Text(node, "rgb").right(6).toUInt(&valid, 16);
  if (!valid) return {};
  return 0xFF000000U | number;
}

std::string Color_Xml(const std::string& tag, QRgb color) {
  return '<' + tag + " rgb=\"" + QString::number(color | 0xFF000000U, 16).toUpper().toStdString() + "\"/>";
}

bool Switched_On(const pugi::xml_node& font, const char* local) {
  const pugi::xml_node node = Child(font, local);
  const QString value = Attribute_Text(node, "val");
  return node && value != QLatin1String("0") && value != QLatin1String("false") && value != QLatin1String("none");
}

const char* Align_Word(CellAlign align) {
  switch (align) {
    case CellAlign::Left:
      return "left";
    case CellAlign::Center:
      return "center";
    case CellAlign::Right:
      return "right";
    case CellAlign::General:
      break;
  }
  return "";
}

std::string Attribute_Escaped(const QString& text) { return text.toHtmlEscaped().toStdString(); }

// The numbers that mean a fixed format, as far as they are plain numbers, texts or dates.
QString Fixed_Format(int id) {
  static const QHash<int, QString> known = {{1, QStringLiteral("0")},         {2, QStringLiteral("0.00")},
                                            {3, QStringLiteral("#,##0")},     {4, QStringLiteral("#,##0.00")},
                                            {9, QStringLiteral("0%")},        {10, QStringLiteral("0.00%")},
                                            {11, QStringLiteral("0.00E+00")}, {14, QStringLiteral("mm-dd-yy")},
                                            {15, QStringLiteral("d-mmm-yy")}, {16, QStringLiteral("d-mmm")},
                                            {17, QStringLiteral("mmm-yy")},   {20, QStringLiteral("h:mm")},
                                            {21, QStringLiteral("h:mm:ss")},  {22, QStringLiteral("m/d/yy h:mm")},
                                            {45, QStringLiteral("mm:ss")},    {46, QStringLiteral("[h]:mm:ss")},
                                            {49, QStringLiteral("@")}};
  return known.value(id);
}
}  // namespace

StyleTable::StyleTable(const QByteArray& xml) {
  changed = xml.isEmpty();
  Parse_Xml(document, xml.isEmpty() ? QByteArray(ownStyles) : xml, QStringLiteral("styles.xml"));
  const pugi::xml_node root = document.document_element();
  prefix = Prefix_Of(root);
  formats.node = Child(root, "numFmts");
  Load(fonts, "fonts", formats.node);
  Load(fills, "fills", fonts.node);
  Load(borders, "borders", fills.node);
  const pugi::xml_node base = Child(root, "cellStyleXfs");
  Load(cells, "cellXfs", base ? base : borders.node);
  For_Children(formats.node, "numFmt", [this](const pugi::xml_node& node) {
    formatIds.insert(Attribute_Text(node, "formatCode"), Attribute(node, "numFmtId").as_int());
  });
  const pugi::xml_node font = Entry_At(fonts.node, 0);
  standard.font = Attribute_Text(Child(font, "name"), "val");
  standard.size = Attribute(Child(font, "sz"), "val").as_double(10);
  if (standard.font.isEmpty()) standard.font = QStringLiteral("Arial");
}

void StyleTable::Load(List& list, const char* local, const pugi::xml_node& before) {
  const pugi::xml_node root = document.document_element();
  list.node = Child(root, local);
  if (!list.node) {
    // A part without the list has nothing in it that its numbers could mean: the plain entries come first.
    list.node = Insert_Child(root, local, before);
    pugi::xml_document own;
    own.load_string(ownStyles);
    for (const pugi::xml_node& entry : Child(own.document_element(), local).children()) {
      const QByteArray text = Entry_Text(entry);
      list.node.append_buffer(text.constData(), static_cast<size_t>(text.size()));
    }
    changed = true;
  }
  for (const pugi::xml_node& entry : list.node.children()) {
    if (entry.type() != pugi::node_element) continue;
    const QByteArray text = Entry_Text(entry);
    if (!list.places.contains(text)) list.places.insert(text, list.count);
    ++list.count;
  }
}

int StyleTable::Place(List& list, const std::string& entry) {
  const QByteArray text = QByteArray::fromStdString(entry);
  if (const auto found = list.places.find(text); found != list.places.end()) return *found;
  list.node.append_buffer(entry.data(), entry.size(), pugi::parse_default | pugi::parse_fragment);
  list.places.insert(text, list.count);
  Set_Attribute(list.node, "count", QString::number(list.count + 1));
  changed = true;
  return list.count++;
}

int StyleTable::Format_Id(const QString& format) {
  if (format.isEmpty()) return 0;
  if (const auto found = formatIds.find(format); found != formatIds.end()) return *found;
  int id = firstOwnFormat;
  for (const int used : std::as_const(formatIds)) id = std::max(id, used + 1);
  if (!formats.node) formats.node = Insert_Child(document.document_element(), "numFmts", {});
  pugi::xml_node entry = Append_Child(formats.node, "numFmt");
  Set_Attribute(entry, "numFmtId", QString::number(id));
  Set_Attribute(entry, "formatCode", format);
  formatIds.insert(format, id);
  Set_Attribute(formats.node, "count", QString::number(formatIds.size()));
  changed = true;
  return id;
}

std::string StyleTable::Font_Xml(const CellStyle& style) const {
  const std::string open = '<' + prefix;
  std::string xml = open + "font>";
  if (style.bold) xml += open + "b/>";
  if (style.italic) xml += open + "i/>";
  if (style.underline) xml += open + "u/>";
  const double size = style.size > 0 ? style.size : standard.size;
  xml += open + "sz val=\"" + Number_Text(size).toStdString() + "\"/>";
  if (style.color) xml += Color_Xml(prefix + "color", *style.color);
  xml += open + "name val=\"" + Attribute_Escaped(style.font.isEmpty() ? standard.font : style.font) + "\"/>";
  return xml + "</" + prefix + "font>";
}

std::string StyleTable::Fill_Xml(QRgb color) const {
  return '<' + prefix + "fill><" + prefix + "patternFill patternType=\"solid\">" +
         Color_Xml(prefix + "fgColor", color) + '<' + prefix + "bgColor indexed=\"64\"/></" + prefix +
         "patternFill></" + prefix + "fill>";
}

std::string StyleTable::Border_Xml(QRgb color) const {
  std::string xml = '<' + prefix + "border>";
  for (const char* side : {"left", "right", "top", "bottom"})
    xml += '<' + prefix + side + " style=\"thin\">" + Color_Xml(prefix + "color", color) + "</" + prefix + side + '>';
  return xml + '<' + prefix + "diagonal/></" + prefix + "border>";
}

int StyleTable::Place_Of(const CellStyle& style, bool plainText) {
  const CellStyle plain;
  if (style == plain && !plainText) return 0;
  const bool ownFont = !style.font.isEmpty() || style.size > 0 || style.bold || style.italic || style.underline ||
                       style.color.has_value();
  const auto number = [](const char* name, int value) {
    return ' ' + std::string(name) + "=\"" + std::to_string(value) + '"';
  };
  const int format = Format_Id(style.format);
  const int font = ownFont ? Place(fonts, Font_Xml(style)) : 0;
  const int fill = style.fill ? Place(fills, Fill_Xml(*style.fill)) : 0;
  const int border = style.border ? Place(borders, Border_Xml(*style.border)) : 0;
  std::string xml = '<' + prefix + "xf" + number("numFmtId", format) + number("fontId", font) + number("fillId", fill) +
                    number("borderId", border) + number("xfId", 0);
  if (plainText) xml += number("quotePrefix", 1);
  if (format != 0) xml += number("applyNumberFormat", 1);
  if (font != 0) xml += number("applyFont", 1);
  if (fill != 0) xml += number("applyFill", 1);
  if (border != 0) xml += number("applyBorder", 1);
  const std::string align = Align_Word(style.align);
  if (align.empty() && !style.wrap) return Place(cells, xml + "/>");
  xml += number("applyAlignment", 1) + "><" + prefix + "alignment";
  if (!align.empty()) xml += " horizontal=\"" + align + '"';
  if (style.wrap) xml += " vertical=\"top\" wrapText=\"1\"";
  return Place(cells, xml + "/></" + prefix + "xf>");
}

QString StyleTable::Format_By_Id(int id) const {
  const QString own = formatIds.key(id);
  return own.isEmpty() ? Fixed_Format(id) : own;
}

CellStyle StyleTable::Style_At(int place) const {
  CellStyle style;
  const pugi::xml_node cell = Entry_At(cells.node, place);
  if (!cell) return style;
  style.format = Format_By_Id(Attribute(cell, "numFmtId").as_int());
  if (const int number = Attribute(cell, "fontId").as_int(); number != 0) {
    const pugi::xml_node font = Entry_At(fonts.node, number);
    const QString family = Attribute_Text(Child(font, "name"), "val");
    const double size = Attribute(Child(font, "sz"), "val").as_double();
    if (family != standard.font) style.font = family;
    if (size != standard.size) style.size = size;
    style.bold = Switched_On(font, "b");
    style.italic = Switched_On(font, "i");
    style.underline = Switched_On(font, "u");
    style.color = Color_Of(Child(font, "color"));
  }
  const pugi::xml_node pattern = Child(Entry_At(fills.node, Attribute(cell, "fillId").as_int()), "patternFill");
  if (Attribute_Text(pattern, "patternType") == QLatin1String("solid"))
    style.fill = Color_Of(Child(pattern, "fgColor"));
  const pugi::xml_node border = Entry_At(borders.node, Attribute(cell, "borderId").as_int());
  style.border = Color_Of(Child(Child(border, "left"), "color"));
  const pugi::xml_node alignment = Child(cell, "alignment");
  const QString align = Attribute_Text(alignment, "horizontal");
  for (const CellAlign known : {CellAlign::Left, CellAlign::Center, CellAlign::Right})
    if (align == QLatin1String(Align_Word(known))) style.align = known;
  style.wrap = Attribute_True(alignment, "wrapText");
  return style;
}

QByteArray StyleTable::Bytes() const { return Xml_Text(document); }

}  // namespace workbook_inner
