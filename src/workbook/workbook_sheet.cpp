#include "workbook/workbook_sheet.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"
#include "workbook/workbook_errors.h"

namespace {
constexpr double standardSize = 10, standardWidth = 10, highestRow = 409;
constexpr double lineHeight = 1.28;  // of a line, by the size of its letters

bool Is_Writable(char16_t c) { return c >= 0x20 ? c != 0xFFFE && c != 0xFFFF : c == u'\t' || c == u'\n'; }

// Half of a character that has two halves, without the other.
bool Is_Torn(const QString& text, qsizetype i) {
  if (text[i].isHighSurrogate()) return i + 1 >= text.size() || !text[i + 1].isLowSurrogate();
  return text[i].isLowSurrogate() && (i == 0 || !text[i - 1].isHighSurrogate());
}

// Lines that a paragraph takes: words go whole into the next line, longer ones are broken.
int Wrapped_Lines(QStringView paragraph, double width) {
  const auto room = std::max<qsizetype>(1, static_cast<qsizetype>(width));
  int lines = 1;
  qsizetype used = 0;
  for (const QStringView word : paragraph.split(u' ')) {
    const qsizetype needed = used == 0 ? word.size() : used + 1 + word.size();
    if (needed <= room) {
      used = needed;
      continue;
    }
    if (used > 0) ++lines;
    lines += static_cast<int>((std::max<qsizetype>(word.size(), 1) - 1) / room);
    used = (std::max<qsizetype>(word.size(), 1) - 1) % room + 1;
  }
  return lines;
}
}  // namespace

size_t qHash(const CellStyle& style, size_t seed) {
  const auto color = [](const std::optional<QRgb>& value) { return value ? *value : 1U; };
  const int flags = style.bold + 2 * style.italic + 4 * style.underline + 8 * style.wrap;
  return qHashMulti(seed, style.font, style.size, flags, color(style.color), color(style.fill), color(style.border),
                    static_cast<int>(style.align), style.format);
}

QString Sheet_Text(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(u'\r', u'\n');
  const auto wrong = [&text](qsizetype i) { return !Is_Writable(text[i].unicode()) || Is_Torn(text, i); };
  bool clean = true;
  for (qsizetype i = 0; i < text.size() && clean; ++i) clean = !wrong(i);
  if (!clean) {
    QString kept;
    for (qsizetype i = 0; i < text.size(); ++i)
      if (!wrong(i)) kept += text[i];
    text = kept;
  }
  if (text.size() > Sheet::maxText) {
    text.truncate(Sheet::maxText);
    if (text.back().isHighSurrogate()) text.chop(1);
  }
  return text;
}

QString Column_Name(int column) {
  QString letters;
  for (; column > 0; column = (column - 1) / 26) letters.prepend(QChar(u'A' + (column - 1) % 26));
  return letters;
}

QString Cell_Name(int row, int column) { return Column_Name(column) + QString::number(row); }

bool Is_Sheet_Name(const QString& name) {
  if (name.trimmed().isEmpty() || name.size() > 31 || name.startsWith(u'\'') || name.endsWith(u'\'')) return false;
  return Sheet_Text(name) == name &&
         std::none_of(name.begin(), name.end(), [](QChar c) { return QStringLiteral("[]:*?/\\\n\t").contains(c); });
}

Sheet::Cell& Sheet::At(int row, int column) {
  if (row < 1 || row > maxRow || column < 1 || column > maxColumn)
    Raise(workbook_errors::bounds,
          QStringLiteral("Das Tabellenblatt \"%1\" hat keinen Platz für die Zelle in Zeile %2, "
                         "Spalte %3 (höchstens %4 Zeilen und %5 Spalten).")
              .arg(name)
              .arg(row)
              .arg(column)
              .arg(maxRow)
              .arg(maxColumn));
  if (row > RowCount()) rows.resize(static_cast<size_t>(row));
  Row& cells = rows[static_cast<size_t>(row - 1)];
  if (static_cast<size_t>(column) > cells.size()) cells.resize(static_cast<size_t>(column));
  return cells[static_cast<size_t>(column - 1)];
}

const Sheet::Cell* Sheet::Find(int row, int column) const {
  if (row < 1 || row > RowCount() || column < 1) return nullptr;
  const Row& cells = rows[static_cast<size_t>(row - 1)];
  return static_cast<size_t>(column) > cells.size() ? nullptr : &cells[static_cast<size_t>(column - 1)];
}

void Sheet::Put(int row, int column, CellValue value) {
  Cell& cell = At(row, column);
  if (auto* text = std::get_if<QString>(&value)) {
    *text = Sheet_Text(std::move(*text));
    if (text->contains(u'\n') && !styles[static_cast<size_t>(cell.style)].wrap) {
      CellStyle wrapped = styles[static_cast<size_t>(cell.style)];
      wrapped.wrap = true;
      cell.style = Style_Number(wrapped);
    }
  } else if (const auto* number = std::get_if<double>(&value); number && !std::isfinite(*number)) {
    value = std::monostate();
  }
  cell.value = std::move(value);
}

void Sheet::Put(int row, int column, CellValue value, const CellStyle& style) {
  Put(row, column, std::move(value), Style_Number(style));
}

void Sheet::Put(int row, int column, CellValue value, int styleNumber) {
  At(row, column).style = styleNumber;
  Put(row, column, std::move(value));
}

int Sheet::Style_Number(const CellStyle& style) {
  if (style == styles[0]) return 0;
  int& number = numbers[style];
  if (number == 0) {
    number = static_cast<int>(styles.size());
    styles.push_back(style);
  }
  return number;
}

void Sheet::Change(const CellRange& range, const std::function<void(CellStyle&)>& change) {
  for (int row = range.row1; row <= range.row2; ++row) {
    for (int column = range.column1; column <= range.column2; ++column) {
      Cell& cell = At(row, column);
      CellStyle style = styles[static_cast<size_t>(cell.style)];
      change(style);
      cell.style = Style_Number(style);
    }
  }
}

const CellValue& Sheet::Value(int row, int column) const {
  static const CellValue empty;
  const Cell* cell = Find(row, column);
  return cell ? cell->value : empty;
}

QString Sheet::Text(int row, int column) const {
  const CellValue& value = Value(row, column);
  if (const auto* number = std::get_if<double>(&value)) return Number_Text(*number);
  const auto* text = std::get_if<QString>(&value);
  return text ? *text : QString();
}

double Sheet::Number(int row, int column) const {
  const auto* number = std::get_if<double>(&Value(row, column));
  return number ? *number : 0;
}

const CellStyle& Sheet::Style(int row, int column) const {
  const Cell* cell = Find(row, column);
  return styles[cell ? static_cast<size_t>(cell->style) : 0];
}

CellFlaw Sheet::Flaw(int row, int column) const {
  const Cell* cell = Find(row, column);
  return cell ? cell->flaw : CellFlaw::None;
}

void Sheet::Set_Flaw(int row, int column, CellFlaw flaw) {
  if (Find(row, column)) At(row, column).flaw = flaw;
}

int Sheet::ColumnCount() const {
  size_t count = 0;
  for (const Row& row : rows) count = std::max(count, row.size());
  return static_cast<int>(count);
}

int Sheet::Lines_Of(int row, int column) const {
  int last = column;
  for (const CellRange& merge : merges)
    if (merge.row1 == row && merge.column1 == column) last = merge.column2;
  double width = 0;
  for (int i = column; i <= last; ++i) {
    const auto given = widths.find(i);
    width += given == widths.end() ? standardWidth : given->second;
  }
  const CellStyle& style = Style(row, column);
  if (style.size > 0) width *= standardSize / style.size;
  int lines = 0;
  for (const QString& paragraph : Text(row, column).split(u'\n')) lines += Wrapped_Lines(paragraph, width);
  return lines;
}

std::optional<double> Sheet::RowHeight(int row) const {
  if (const auto given = heights.find(row); given != heights.end()) return given->second;
  if (row < 1 || row > RowCount()) return {};
  double height = 0;
  const Row& cells = rows[static_cast<size_t>(row - 1)];
  for (size_t i = 0; i < cells.size(); ++i) {
    const CellStyle& style = styles[static_cast<size_t>(cells[i].style)];
    if (!style.wrap || !std::holds_alternative<QString>(cells[i].value)) continue;
    const int lines = Lines_Of(row, static_cast<int>(i) + 1);
    if (lines > 1) height = std::max(height, lines * lineHeight * (style.size > 0 ? style.size : standardSize));
  }
  if (height == 0) return {};
  return std::min(height, highestRow);
}
