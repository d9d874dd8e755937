#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "platform/database.h"
#include "store/entry.h"
#include "store/header_row.h"

// A table file out of which entries are taken. All work is on a copy of it, "Import.MDB" in the folder of the open map:
// the file itself stays closed and as it is.
class TableSource {
 public:
  // Raises what copying raises (3356: it is open elsewhere), 3343 without the table MapData or one of its columns.
  explicit TableSource(const QString& file);
  ~TableSource();  // the copy goes away
  TableSource(const TableSource&) = delete;
  TableSource& operator=(const TableSource&) = delete;

  const QString& File() const { return file; }
  const QString& Remarks() const { return remarks; }  // what reading a table of the old engine told
  Database& Data() { return *database; }
  const std::vector<FieldInfo>& Fields() const { return rows->Fields(); }
  // Numbers that the old engine gave its rows: they say nothing of an entry.
  bool Counts(int column) const { return counters.contains(Fields()[static_cast<size_t>(column)].name); }
  const HeaderRow& Header() const { return header; }
  int Count() const { return count; }  // entries, without header rows
  std::vector<qint64> Entries();       // their keys, in the order of the table

  bool Go_To(qint64 key);   // the row that the following tell of; false if it is gone
  int Number() const;       // of that row in the table, the header is 0
  QString Text_Of() const;  // its Eintrag, whatever else is wrong with it
  EntryRow Entry() const;   // 6 for numbers beyond 16 bits
  const Value& Raw(int column) const { return rows->Raw(column); }
  int Fixed_Column(int number) const { return fixed[static_cast<size_t>(number)]; }  // of column:: in this table
  // Up to the stop mark; nothing where the table is missing or is none of vertices.
  std::vector<QPoint> Vertices(const QString& table);

 private:
  void Open();

  QString file, copy, remarks;
  QStringList counters;
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
  ColumnPlaces fixed{};
  HeaderRow header;
  int count = 0;
};

// Where the copy lies. Never a file that is somebody's table: the source itself, or that of a map called "Import".
QString Import_Copy_Name(const QString& source);
