#include "analysis/result_cells.h"

#include "platform/surface.h"

void Put_Cell(Sheet& sheet, int row, int column, CellValue value, const CellChange& change) {
  CellStyle style = sheet.Style(row, column);
  if (change.align) style.align = *change.align;
  if (change.bold) style.bold = *change.bold;
  if (change.italic) style.italic = *change.italic;
  if (change.format) style.format = QString::fromLatin1(change.format);
  if (change.color) style.color = change.color;
  sheet.Put(row, column, std::move(value), style);
}

void Color_Cells(Sheet& sheet, const CellRange& range, QRgb color) {
  sheet.Change(range, [color](CellStyle& style) { style.color = color; });
}

void Put_Note(Sheet& sheet, int row, int columns, QString text) {
  CellStyle style;
  style.color = qRgb(0, 0, 0);
  style.wrap = true;
  sheet.Put(row, 1, text.replace(u'\r', u' '), style);
  if (columns > 1) sheet.Merge(row, 1, columns);
}

PaletteColors QB_Colors() {
  PaletteColors colors;
  for (size_t i = 0; i < colors.size(); ++i) colors[i] = QBColor(static_cast<int>(i));
  return colors;
}

CellStyle Own_Look(const EntryRow& row, const PaletteColors& palette) {
  const auto color = [&palette](int number) -> std::optional<QRgb> {
    if (number < 0 || number > 15) return {};
    return palette[static_cast<size_t>(number)];
  };
  CellStyle style;
  style.font = FontSpec::Parse(Font_Text(EntryType::Parse(row.Typ), row.Schrift)).family;
  style.color = color(row.VG);
  style.fill = color(row.HG);
  style.border = row.RA < 0 || row.RA > 15 ? style.fill : color(row.RA);
  return style;
}
