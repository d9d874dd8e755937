#pragma once
#include <QString>

#include "platform/database.h"
#include "store/entry.h"
#include "workbook/workbook_sheet.h"

// The rows of MapData as a sheet of a workbook, one row an entry, so that a spreadsheet program can change them and
// they can be brought back (exchange/sheet_comparison.h).
//
// A text that begins with = + - @ is a text cell marked as such, with nothing put in front: spreadsheet programs
// compute no text cell, and the text comes back as it was.

namespace sheet_rows {
inline const QString sheetName = QStringLiteral("MapData");
// Titles that no column of a table can have.
inline const QString numberTitle = QStringLiteral("Nr."), kindTitle = QStringLiteral("[Art]");
}  // namespace sheet_rows

// What a row is, in words: "Text mit Pfeil, ausgeblendet".
QString Kind_In_Words(const EntryRow& row);

// The number by which the sheet names a row: 1 for the first entry of a new table. It stays when other rows go; an
// entry that is put before or behind others gets another one.
constexpr qint64 Row_Number(qint64 key) { return key - 1; }

// A stored value as its cell holds it.
CellValue Cell_Of(const Value& stored);

// Number, the columns of the table in their order, behind Typ the kind in words. Titles stand in the first row, which
// stays in sight. The header row of the table is left out. Moves the cursor; raises what the table raises.
Sheet Sheet_Of_Rows(Recordset& rows);
// The sheet of a workbook that is most likely meant: the one of that name, else the first; "" without any.
QString Proposed_Sheet(const QStringList& names);
