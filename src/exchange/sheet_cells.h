#pragma once
#include <QHash>
#include <QString>
#include <vector>

#include "platform/database.h"
#include "workbook/workbook_sheet.h"

// The cells of a sheet, however a spreadsheet program has left them, as values for the columns of a table.

struct SheetTitle {
  int column = 0;  // of the sheet, from 1
  QString text;
};
// The titles are the first row that holds a text; entries stand below it.
struct SheetTitles {
  int row = 0;  // 0: an empty sheet
  std::vector<SheetTitle> columns;
  // The first column of that title, in any case; 0 if there is none.
  int Column_Of(const QString& title) const;
};
// Those of the sheet.
SheetTitles Titles_Of(const Sheet& sheet);

// A cell as a value of a column. The value counts only where `problem` is empty.
struct CellTaken {
  Value value;
  QString problem;  // why it cannot be taken, in German
};

class SheetCells {
 public:
  explicit SheetCells(const Sheet& from);
  // Nothing in the row but empty cells.
  bool Is_Empty_Row(int row) const;
  // The cell as it is shown in a list.
  QString Shown(int row, int column) const;
  // What keeps the cell from being read at all: a formula without a result, one of several merged cells; "" if nothing.
  QString Flaw(int row, int column) const;
  // Numbers become texts in a text column, dates "03.04.2024"; texts numbers where they are some. `mayBeEmpty`: an
  // empty cell of a number column is Null there, else a problem.
  CellTaken Take(int row, int column, const FieldInfo& field, bool mayBeEmpty) const;

 private:
  const Sheet& sheet;
  bool Is_Covered(int row, int column) const;  // by a merged cell whose value stands elsewhere
  QHash<int, std::vector<CellRange>> merges;   // by the rows they reach into
  std::vector<CellRange> longMerges;           // of very many rows
};

// Two values of a column that no sheet could tell apart: line ends, signs that no cell holds, the last digits of a
// number are not looked at. Equal marks for such values, others for others.
QString Sheet_Mark(const Value& value);
bool Same_In_Sheet(const Value& stored, const Value& taken);
// As it is shown in a list: decimal comma, one line.
QString Shown_Value(const Value& value);
