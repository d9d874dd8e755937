#pragma once
#include <QByteArray>

#include "analysis/species_matrix.h"
#include "workbook/workbook_sheet.h"

// The sheet "Matrix": a row an area, figure, line or group, indices, then a column a species; totals in the last row.
// Error 1004 for more species than a sheet has columns.
Sheet Matrix_Sheet(const SpeciesMatrix& matrix);
// The same as text for other programs: semicolons, decimal comma, UTF-8 with its mark, lines ended by CR LF. A text
// that begins like a formula gets an apostrophe in front, so that no program computes it.
QByteArray Matrix_Csv(const SpeciesMatrix& matrix);
