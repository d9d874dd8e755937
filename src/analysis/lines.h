#pragma once
#include <QString>
#include <vector>

#include "analysis/map_input.h"
#include "workbook/workbook_sheet.h"

// The lengths of all lines with their stretches.

struct LineValues {
  int row = 0;  // number of the line's row
  std::vector<LineSegment> segments;
  LineLength length;
};
// Rows whose name contains "Linie" and that are assigned to nothing; hidden and marked ones too. A line without
// vertices has no stretches.
std::vector<LineValues> Calc_Lines(const MapInput& input);

// The sheet "Linien".
Sheet Line_Sheet(const MapInput& input, const std::vector<LineValues>& lines);
// The report "Linien.stk", lines ended by CR LF.
QString Line_Text(const MapInput& input, const std::vector<LineValues>& lines);
// "Millimeter", "Zentimeter", "Meter", "Kilometer", else "?".
QString Unit_Word(const QString& unit);
