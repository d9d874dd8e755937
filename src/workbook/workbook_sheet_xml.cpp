#include "workbook/workbook_sheet_xml.h"

#include <array>
#include <charconv>
#include <optional>

#include "workbook/workbook_dates.h"
#include "workbook/workbook_xml.h"

namespace workbook_inner {
namespace {

void Append_Number(std::string& out, double value) {
  std::array<char, 32> digits{};
  const auto [end, fault] = std::to_chars(digits.data(), digits.data() + digits.size(), value == 0 ? 0.0 : value);
  if (fault == std::errc()) out.append(digits.data(), end);
}

bool Looks_Like_Formula(const QString& text) { return !text.isEmpty() && QStringLiteral("=+-@").contains(text[0]); }

// Writes the rows; the places of the sheet's styles are looked up once each.
class RowWriter {
 public:
  RowWriter(std::string& target, const Sheet& from, StyleTable& table)
      : out(target), sheet(from), styles(table), places(from.Styles().size(), {-1, -1}) {
    for (int column = 1; column <= sheet.ColumnCount(); ++column) letters.push_back(Column_Name(column).toStdString());
  }

  void Write(int number) {
    const Sheet::Row& row = sheet.Rows()[static_cast<size_t>(number - 1)];
    const auto height = sheet.RowHeight(number);
    if (row.empty() && !height) return;
    const std::string digits = std::to_string(number);
    out += "<row r=\"" + digits + '"';
    if (height) {
      out += " ht=\"";
      Append_Number(out, *height);
      out += "\" customHeight=\"1\"";
    }
    out += '>';
    for (size_t i = 0; i < row.size(); ++i) Write_Cell(row[i], letters[i], digits);
    out += "</row>";
  }

 private:
  int Place(int style, bool plainText) {
    int& place = places[static_cast<size_t>(style)][plainText ? 1 : 0];
    if (place < 0) place = styles.Place_Of(sheet.Styles()[static_cast<size_t>(style)], plainText);
    return place;
  }

  void Write_Cell(const Sheet::Cell& cell, const std::string& column, const std::string& row) {
    const auto* text = std::get_if<QString>(&cell.value);
    const auto* number = std::get_if<double>(&cell.value);
    if (text && text->isEmpty()) text = nullptr;
    const int place = Place(cell.style, text && Looks_Like_Formula(*text));
    if (!text && !number && place == 0) return;
    out += "<c r=\"";
    out += column;
    out += row;
    out += '"';
    if (place != 0) {
      out += " s=\"";
      out += std::to_string(place);
      out += '"';
    }
    if (number) {
      out += "><v>";
      Append_Number(out, *number);
      out += "</v></c>";
    } else if (text) {
      out += " t=\"inlineStr\"><is><t xml:space=\"preserve\">";
      Append_Escaped(out, *text);
      out += "</t></is></c>";
    } else {
      out += "/>";
    }
  }

  std::string& out;
  const Sheet& sheet;
  StyleTable& styles;
  std::vector<std::array<int, 2>> places;
  std::vector<std::string> letters;
};

void Append_Columns(std::string& out, const Sheet& sheet) {
  if (sheet.Widths().empty()) return;
  out += "<cols>";
  for (const auto& [column, width] : sheet.Widths()) {
    const std::string number = std::to_string(column);
    out += "<col min=\"" + number + "\" max=\"" + number + "\" width=\"";
    Append_Number(out, width);
    out += "\" customWidth=\"1\"/>";
  }
  out += "</cols>";
}

void Append_Merges(std::string& out, const Sheet& sheet) {
  if (sheet.Merges().empty()) return;
  out += "<mergeCells count=\"" + std::to_string(sheet.Merges().size()) + "\">";
  for (const CellRange& merge : sheet.Merges())
    out += "<mergeCell ref=\"" + Cell_Name(merge.row1, merge.column1).toStdString() + ':' +
           Cell_Name(merge.row2, merge.column2).toStdString() + "\"/>";
  out += "</mergeCells>";
}

// "AB12" -> row 12, column 28. False for anything else or beyond the bounds.
bool Read_Cell_Name(const QString& name, int& row, int& column) {
  qsizetype i = 0;
  int letters = 0;
  for (; i < name.size() && name[i] >= u'A' && name[i] <= u'Z' && letters <= Sheet::maxColumn; ++i)
    letters = letters * 26 + (name[i].unicode() - u'A' + 1);
  bool valid = false;
  const int digits = QStringView(name).mid(i).toInt(&valid);
  if (!valid || letters < 1 || letters > Sheet::maxColumn || digits < 1 || digits > Sheet::maxRow) return false;
  row = digits;
  column = letters;
  return true;
}

CellValue Value_Of(const pugi::xml_node& cell, const QStringList& shared) {
  const QString kind = Attribute_Text(cell, "t");
  if (kind == QLatin1String("inlineStr")) return Item_Text(Child(cell, "is"));
  const pugi::xml_node value = Child(cell, "v");
  if (!value) return {};
  const QString text = QString::fromUtf8(value.child_value());
  if (kind == QLatin1String("s")) return shared.value(text.toInt());
  if (kind == QLatin1String("str")) return text;
  bool valid = false;
  const double number = text.toDouble(&valid);
  if (valid && kind != QLatin1String("e") && kind != QLatin1String("d")) return number;
  return text;
}

CellFlaw Flaw_Of(const pugi::xml_node& cell) {
  if (Attribute_Text(cell, "t") == QLatin1String("e")) return CellFlaw::Fault;
  return Child(cell, "f") && !Child(cell, "v") ? CellFlaw::NoResult : CellFlaw::None;
}

// "A1:B7" or "A1".
std::optional<CellRange> Read_Range(const QString& text) {
  CellRange range{};
  const QString first = text.section(u':', 0, 0), last = text.section(u':', -1);
  if (!Read_Cell_Name(first, range.row1, range.column1) || !Read_Cell_Name(last, range.row2, range.column2)) return {};
  return range;
}

class RowReader {
 public:
  RowReader(Sheet& target, const SheetSources& from) : sheet(target), sources(from) {}

  // Rows and cells without a place of their own follow those before them.
  void Read(const pugi::xml_node& node) {
    if (const int given = Attribute(node, "r").as_int(); given > 0 && given <= Sheet::maxRow) {
      row = given;
    } else {
      ++row;
    }
    int column = 0;
    For_Children(node, "c", [&](const pugi::xml_node& cell) {
      int atRow = row, atColumn = column + 1;
      const QString name = Attribute_Text(cell, "r");
      if (!name.isEmpty() && !Read_Cell_Name(name, atRow, atColumn)) return;
      column = atColumn;
      CellValue value = Value_Of(cell, sources.shared);
      const int style = Own_Style(Attribute(cell, "s").as_int());
      const CellFlaw flaw = Flaw_Of(cell);
      if (std::holds_alternative<std::monostate>(value) && style == 0 && flaw == CellFlaw::None) return;
      if (sources.from1904) Count_From_1899(value, style);
      sheet.Put(atRow, atColumn, std::move(value), style);
      if (flaw != CellFlaw::None) sheet.Set_Flaw(atRow, atColumn, flaw);
    });
  }

 private:
  int Own_Style(int place) {
    const auto known = numbers.find(place);
    if (known != numbers.end()) return known->second;
    return numbers[place] = sheet.Style_Number(sources.styles.Style_At(place));
  }
  void Count_From_1899(CellValue& value, int style) const {
    constexpr double days = 1462;
    auto* number = std::get_if<double>(&value);
    if (number && Is_Date_Format(sheet.Styles()[static_cast<size_t>(style)].format)) *number += days;
  }
  Sheet& sheet;
  const SheetSources& sources;
  std::map<int, int> numbers;
  int row = 0;
};

}  // namespace

static std::string Frozen_Pane(const Sheet& sheet) {
  if (sheet.frozenRows <= 0) return {};
  return "<pane ySplit=\"" + std::to_string(sheet.frozenRows) + "\" topLeftCell=\"A" +
         std::to_string(sheet.frozenRows + 1) + "\" activePane=\"bottomLeft\" state=\"frozen\"/>";
}

QByteArray Write_Sheet_Part(const Sheet& sheet, StyleTable& styles, const SheetFrame& frame) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<worksheet xmlns=\"" +
                    frame.mainNamespace + "\"><dimension ref=\"A1";
  if (sheet.RowCount() > 0 && sheet.ColumnCount() > 0)
    out += ':' + Cell_Name(sheet.RowCount(), sheet.ColumnCount()).toStdString();
  out += "\"/>";
  if (frame.hasView)
    out += std::string("<sheetViews><sheetView") + (frame.selected ? " tabSelected=\"1\"" : "") +
           " workbookViewId=\"0\">" + Frozen_Pane(sheet) + "</sheetView></sheetViews>";
  out += "<sheetFormatPr defaultRowHeight=\"12.75\"/>";
  Append_Columns(out, sheet);
  out += "<sheetData>";
  RowWriter writer(out, sheet, styles);
  for (int row = 1; row <= sheet.RowCount(); ++row) writer.Write(row);
  out += "</sheetData>";
  Append_Merges(out, sheet);
  out +=
      "<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" "
      "footer=\"0.3\"/></worksheet>";
  return QByteArray(out.data(), static_cast<qsizetype>(out.size()));
}

void Read_Sheet_Part(Sheet& sheet, const QByteArray& xml, const QString& part, const SheetSources& sources) {
  pugi::xml_document document;
  Parse_Xml(document, xml, part);
  const pugi::xml_node root = document.document_element();
  const pugi::xml_node data = Child(root, "sheetData");
  if (!data) Raise_Damaged(part);
  For_Children(Child(root, "cols"), "col", [&sheet](const pugi::xml_node& node) {
    const double width = Attribute(node, "width").as_double();
    // The last entry of some writers reaches to the end of the sheet: it says nothing of a column in use.
    const int first = std::clamp(Attribute(node, "min").as_int(), 1, Sheet::maxColumn);
    const int last = std::min({Attribute(node, "max").as_int(), first + 256, Sheet::maxColumn});
    if (width > 0)
      for (int column = first; column <= last; ++column) sheet.SetColumnWidth(column, width);
  });
  RowReader reader(sheet, sources);
  For_Children(data, "row", [&reader](const pugi::xml_node& node) { reader.Read(node); });
  For_Children(Child(root, "mergeCells"), "mergeCell", [&sheet](const pugi::xml_node& node) {
    if (const auto range = Read_Range(Attribute_Text(node, "ref"))) sheet.Merge(*range);
  });
}

QStringList Read_Shared_Strings(const QByteArray& xml, const QString& part) {
  pugi::xml_document document;
  Parse_Xml(document, xml, part);
  QStringList texts;
  For_Children(document.document_element(), "si", [&texts](const pugi::xml_node& item) { texts += Item_Text(item); });
  return texts;
}

bool Is_Empty_Sheet_Part(const QByteArray& xml, const QString& part) {
  pugi::xml_document document;
  Parse_Xml(document, xml, part);
  const pugi::xml_node root = document.document_element();
  static constexpr std::array harmless = {"sheetPr",   "dimension",    "sheetViews",  "sheetFormatPr", "cols",
                                          "sheetData", "printOptions", "pageMargins", "pageSetup",     "headerFooter"};
  if (Local_Name(root.name()) != "worksheet") return false;
  for (const pugi::xml_node& child : root.children()) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = Local_Name(child.name());
    if (std::none_of(harmless.begin(), harmless.end(), [&name](const char* known) { return name == known; }))
      return false;
    if (name != "sheetData") continue;
    for (const pugi::xml_node& row : child.children())
      if (Child(row, "c")) return false;
  }
  return true;
}

bool Is_Selected_Sheet_Part(const QByteArray& start) {
  const qsizetype at = start.indexOf("tabSelected=");
  if (at < 0) return false;
  const QByteArray value = start.mid(at + 13, 4);  // behind the quotation mark
  return value.startsWith('1') || value.startsWith("true");
}

}  // namespace workbook_inner
