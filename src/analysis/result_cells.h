#pragma once
#include <QColor>
#include <array>

#include "store/entry.h"
#include "workbook/workbook_sheet.h"

// What the result sheets have in common.

// What changes in the look of a cell; the rest stays what it is.
struct CellChange {
  std::optional<CellAlign> align = {};
  std::optional<bool> bold = {}, italic = {};
  const char* format = nullptr;
  std::optional<QRgb> color = {};
};
// Puts the value and changes the look of the cell so. Error 1004 beyond the bounds of a sheet.
void Put_Cell(Sheet& sheet, int row, int column, CellValue value, const CellChange& change = {});
// The colour of the letters of a range, empty cells included.
void Color_Cells(Sheet& sheet, const CellRange& range, QRgb color);
// A text over several columns, wrapped, with room for all of its lines; CR becomes a blank.
void Put_Note(Sheet& sheet, int row, int columns, QString text);

using PaletteColors = std::array<QRgb, 16>;
PaletteColors QB_Colors();  // of the numbered colour table
// The entry's own look: letters VG, cell HG, border RA, its font. Numbers beyond the palette give no colour; as border
// such a number takes the colour of the cell.
CellStyle Own_Look(const EntryRow& row, const PaletteColors& palette);

namespace cell_formats {
inline constexpr const char *whole = "### ### ##0", *longWhole = "### ### ### ##0", *tenths = "### ### ### ##0.0",
                            *thousandths = "### ### ##0.000", *longThousandths = "### ### ### ##0.000",
                            *percent = "##0.00", *angle = "##0.000", *share = "#0.000 000";
}
