#pragma once
#include <QString>
#include <vector>

#include "exchange/sheet_cells.h"
#include "platform/database.h"
#include "workbook/workbook_sheet.h"

// A sheet against the rows of MapData: what would change if it were taken over, and what cannot be. Only values; the
// table is written by Take_From_Sheet alone.

inline constexpr int ownNumber = -1;  // in place of a column of the table: the row's own number (RowNumbers)

struct SheetPair {
  int column = 0;       // of the table, from 0
  int sheetColumn = 0;  // of the sheet, from 1
};
struct SheetOrder {
  int key = ownNumber;  // column of the table that says which row is meant, or ownNumber
  int keyColumn = 0;    // of the sheet; 0: it has none, nothing can be compared
  // Where the ID of the rows stands in the sheet, 0 if nowhere: with the own number as the key, a row whose number
  // belongs to another entry by now is told by it.
  int idColumn = 0;
  std::vector<SheetPair> pairs;  // what is brought over
};
// Every column of the table whose title is in the sheet, except the key.
SheetOrder Proposed_Order(const Recordset& rows, const SheetTitles& titles, int key = ownNumber);
// "Nr.", "Eintrag": the title of a key.
QString Key_Title(const Recordset& rows, int key);

struct SheetDifference {
  qint64 key = 0;     // of the row
  qint64 number = 0;  // the same as it stands in the sheet
  int sheetRow = 0;
  int column = 0;  // of the table
  Value was, becomes;
};
struct SheetRefusal {
  qint64 number = 0;  // of the row; 0 where none was found
  int sheetRow = 0;
  QString column;  // its title; empty: the whole row
  QString text, reason;
};
// A row of the sheet that the table does not have.
struct SheetNewRow {
  int sheetRow = 0;
  QString text;
  std::vector<std::pair<int, Value>> values;  // by the columns of the table
  QString problem;                            // why it cannot be appended; "" if it can
};
// A row of the table that the sheet does not have. It always stays.
struct SheetMissingRow {
  qint64 number = 0;
  QString text;
};

struct SheetComparison {
  int compared = 0;                          // rows of the table that were found in the sheet
  std::vector<SheetDifference> differences;  // by rows of the table, then columns
  std::vector<SheetRefusal> refused;         // by rows of the sheet
  std::vector<SheetNewRow> newRows;
  std::vector<SheetMissingRow> missing;
  int Appendable() const;  // new rows without a problem
};

// One row of the sheet stands for every row of the table with its key. Where several rows of the sheet have the same
// key, those that are as they were belong to their rows; one row that is left on either side is a pair, more are
// refused. Moves the cursor. Error 1004 if the order has no key column; raises what the table raises.
SheetComparison Compare_With_Sheet(Recordset& rows, const Sheet& sheet, const SheetOrder& order);

struct SheetTaken {
  int cells = 0, rows = 0, added = 0;
};
// Writes the differences, and appends the new rows that can be if that is wanted, in one transaction. The recordset is
// one of the database. Moves the cursor; raises what the table raises: then nothing was written.
SheetTaken Take_From_Sheet(Database& database, Recordset& rows, const SheetComparison& comparison, bool withNewRows);

// "12 Änderungen in 5 Zeilen, 1 neue Zeile, ..." for the user.
QString Comparison_Text(const SheetComparison& comparison);
