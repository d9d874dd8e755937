#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "import/column_values.h"
#include "import/table_place.h"
#include "import/table_source.h"

// Entries of another table into the open one.

struct TableImportOrder {
  std::vector<qint64> rows;         // keys in the source, in the order in which they come
  std::vector<ColumnValue> change;  // written over what the rows bring
  TablePlacing placing;
  bool skipExisting = false;  // what is there already does not come again
  bool asks = true;           // at each entry off the map, as long as the user wants to be asked
};

struct TableRefusal {
  int number = 0;  // of the row in the source
  QString text, reason;
};

struct TableImportResult {
  int imported = 0;
  int existed = 0;             // passed over, because they are there already
  int outside = 0;             // of the refused: off the map
  int shortened = 0;           // of the imported: with a text longer than its column
  QStringList missingColumns;  // of the source, the open table has none of that name
  bool stopped = false;        // the user ended it; what was made so far stays
  bool failed = false;         // an error of the table took everything back; it was told
  std::vector<TableRefusal> refused;
};

// Columns whose values can be changed on the way: all of the open table but those that say what an entry is.
QStringList Changeable_Columns();

// One undo point, one transaction, one redraw. Raises what is wrong with the order's values before anything is done.
TableImportResult Import_Entries(TableSource& source, const TableImportOrder& order);

// What came of it, as lines: counts, then refused rows with number, text and reason.
QStringList Table_Import_Report(const TableSource& source, const TableImportResult& result);

// File dialog; the path or "".
QString Choose_Source();
