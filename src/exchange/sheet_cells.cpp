#include "exchange/sheet_cells.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "edit/cell_rules.h"
#include "platform/text.h"
#include "store/csv_cell.h"
#include "store/stored_number.h"
#include "workbook/workbook_dates.h"

namespace {

constexpr int longestKept = 1000;  // rows of a merged cell
constexpr int keptDigits = 14;     // of a number that a spreadsheet program has saved

QString German_Number(double value) { return Number_Text(value).replace(u'.', u','); }

const QString* Text_In(const CellValue& value) { return std::get_if<QString>(&value); }
const double* Number_In(const CellValue& value) { return std::get_if<double>(&value); }

// "" for a number that is no date.
QString Date_In(const Sheet& sheet, int row, int column) {
  const double* number = Number_In(sheet.Value(row, column));
  return number && Is_Date_Format(sheet.Style(row, column).format) ? Date_Text(*number) : QString();
}

}  // namespace

int SheetTitles::Column_Of(const QString& title) const {
  for (const SheetTitle& one : columns)
    if (one.text.compare(title.trimmed(), Qt::CaseInsensitive) == 0) return one.column;
  return 0;
}

SheetTitles Titles_Of(const Sheet& sheet) {
  SheetTitles titles;
  for (int row = 1; row <= sheet.RowCount() && titles.row == 0; ++row) {
    const auto width = static_cast<int>(sheet.Rows()[static_cast<size_t>(row - 1)].size());
    for (int column = 1; column <= width; ++column)
      if (const QString text = sheet.Text(row, column).simplified(); !text.isEmpty())
        titles.columns.push_back({column, text});
    const bool any = std::any_of(titles.columns.begin(), titles.columns.end(), [&](const SheetTitle& title) {
      return Text_In(sheet.Value(row, title.column)) != nullptr;
    });
    if (any)
      titles.row = row;
    else
      titles.columns.clear();
  }
  return titles;
}

SheetCells::SheetCells(const Sheet& from) : sheet(from) {
  for (const CellRange& merge : sheet.Merges()) {
    const int last = std::min(merge.row2, sheet.RowCount());
    if (last - merge.row1 > longestKept)
      longMerges.push_back(merge);
    else
      for (int row = merge.row1; row <= last; ++row) merges[row].push_back(merge);
  }
}

bool SheetCells::Is_Covered(int row, int column) const {
  const auto covers = [row, column](const CellRange& merge) {
    const bool first = row == merge.row1 && column == merge.column1;
    return !first && row >= merge.row1 && row <= merge.row2 && column >= merge.column1 && column <= merge.column2;
  };
  if (std::any_of(longMerges.begin(), longMerges.end(), covers)) return true;
  const auto here = merges.find(row);
  return here != merges.end() && std::any_of(here->begin(), here->end(), covers);
}

bool SheetCells::Is_Empty_Row(int row) const {
  const Sheet::Row& cells = sheet.Rows()[static_cast<size_t>(row - 1)];
  return std::all_of(cells.begin(), cells.end(), [](const Sheet::Cell& cell) {
    const QString* text = Text_In(cell.value);
    return cell.flaw == CellFlaw::None && (text ? text->isEmpty() : !Number_In(cell.value));
  });
}

QString SheetCells::Shown(int row, int column) const {
  if (const QString date = Date_In(sheet, row, column); !date.isEmpty()) return date;
  if (const double* number = Number_In(sheet.Value(row, column))) return German_Number(*number);
  return Csv_One_Line(sheet.Text(row, column));
}

QString SheetCells::Flaw(int row, int column) const {
  switch (sheet.Flaw(row, column)) {
    case CellFlaw::Fault:
      return QStringLiteral("Die Formel ergibt einen Fehler: ") + sheet.Text(row, column);
    case CellFlaw::NoResult:
      return QStringLiteral(
          "Die Formel hat kein Ergebnis. Öffnen und speichern Sie das Blatt in der Tabellenkalkulation.");
    case CellFlaw::None:
      break;
  }
  if (Is_Covered(row, column)) return QStringLiteral("Die Zelle ist mit anderen verbunden.");
  return {};
}

namespace {

// As a value of a number column.
QString Number_Problem(const FieldInfo& field, std::optional<double> number, Value& value) {
  if (!number) return QStringLiteral("In der Zelle steht keine Zahl.");
  if (field.type != FieldType::Double && *number != Int(*number))
    return QStringLiteral("Die Spalte kann nur ganze Zahlen aufnehmen.");
  return Value_Problem(field, *number, value);
}

}  // namespace

CellTaken SheetCells::Take(int row, int column, const FieldInfo& field, bool mayBeEmpty) const {
  CellTaken taken;
  taken.problem = Flaw(row, column);
  if (!taken.problem.isEmpty()) return taken;
  const bool isText = field.type == FieldType::Text;
  const CellValue& cell = sheet.Value(row, column);
  const QString date = Date_In(sheet, row, column);
  if (const double* number = Number_In(cell)) {
    if (isText)
      taken.problem = Value_Problem(field, date.isEmpty() ? German_Number(*number) : date, taken.value);
    else if (!date.isEmpty())
      taken.problem = QStringLiteral("In der Zelle steht ein Datum und keine Zahl.");
    else
      taken.problem = Number_Problem(field, *number, taken.value);
  } else {
    const QString* text = Text_In(cell);
    const QString words = text ? Stored_Lines(*text) : QString();
    if (isText)
      taken.problem = Value_Problem(field, words, taken.value);
    else if (!words.trimmed().isEmpty())
      taken.problem = Number_Problem(field, Number_Typed(words), taken.value);
    else if (!mayBeEmpty)
      taken.problem = QStringLiteral("Die Zelle ist leer.");
  }
  return taken;
}

QString Sheet_Mark(const Value& value) {
  if (const auto* text = std::get_if<QString>(&value)) return Sheet_Text(*text);
  if (const auto* whole = std::get_if<qint64>(&value))
    return QString::number(static_cast<double>(*whole), 'g', keptDigits);
  const auto* real = std::get_if<double>(&value);
  return real && std::isfinite(*real) ? QString::number(*real == 0 ? 0 : *real, 'g', keptDigits) : QString();
}

bool Same_In_Sheet(const Value& stored, const Value& taken) {
  // Whole numbers and equal texts are most of a table.
  const auto *whole = std::get_if<qint64>(&stored), *other = std::get_if<qint64>(&taken);
  if (whole && other) return *whole == *other;
  return stored == taken || Sheet_Mark(stored) == Sheet_Mark(taken);
}

QString Shown_Value(const Value& value) {
  if (const auto* text = std::get_if<QString>(&value)) return Csv_One_Line(*text);
  if (const auto* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
  const auto* real = std::get_if<double>(&value);
  return real ? German_Number(*real) : QString();
}
