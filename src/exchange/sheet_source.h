#pragma once
#include <QString>
#include <QTemporaryDir>
#include <memory>

#include "platform/database.h"
#include "workbook/workbook.h"

// Where sheets and rows are read from.

// The workbook of that path, to be read. Error 53 if there is none, 321 with a German text for what is no workbook, one
// of the former binary kind too; 70 as reading files.
std::unique_ptr<Workbook> Open_Workbook_To_Read(const QString& path);

// The rows of a table file as they stand on the disk, whoever has it open: a copy that goes with the object.
class TableCopy {
 public:
  // Error 53 if there is none, 3343 for what is no table of entries; raises what the database raises.
  explicit TableCopy(const QString& table);
  Recordset& Rows() { return *rows; }

 private:
  QTemporaryDir folder;
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

// MapData of an open database. Error 3343 where its columns are others.
std::unique_ptr<Recordset> Open_Entries(Database& database);
