#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

#include "platform/database.h"

struct sqlite3_stmt;
struct sqlite3_value;

// Changes of rows and tables as bytes: what the journal of a database keeps. One list can be read forwards and taken
// back from its end; every change holds what was before and what came after.

// A value as it lies in a list or in SQLite; texts are not copied and belong to whoever gave them.
struct RawValue {
  enum class Kind : quint8 { Null, Whole, Real, Text, Blob };
  Kind kind = Kind::Null;
  qint64 whole = 0;
  double real = 0;
  const char* bytes = nullptr;
  int size = 0;
  bool operator==(const RawValue& other) const;
  Value ToValue() const;  // Null for a blob
};
// Good as long as the value. Where the database keeps its texts in UTF-8 they are taken as they lie.
RawValue Raw_Of(sqlite3_value* value, bool utf8 = false);
RawValue Raw_Of(sqlite3_stmt* row, int column);  // of the row it stands on, good until its next step
// Parameters count from 1. The bytes have to stay until the statement has run.
void Bind_Raw(sqlite3_stmt* statement, int parameter, const RawValue& value);

enum class ChangeKind : quint8 {
  Names = 'N',         // of a table and its columns, for the changes behind it
  Insert = 'I',        // a row with all its columns
  Delete = 'D',        // the same
  Update = 'U',        // the columns that changed; its key may change as well
  MakeTable = 'T',     // an empty one
  DropTable = 'X',     // an empty one: its rows were deleted before
  AddColumn = 'A',     // Null in every row
  RemoveColumn = 'R',  // the same
};

struct ChangedCell {
  int column = 0;  // among the names of the table
  RawValue before, after;
};
// One change, taken apart.
struct StoredChange {
  ChangeKind kind = ChangeKind::Names;
  int table = 0;  // number of its names
  qint64 key = 0, newKey = 0;
  std::vector<ChangedCell> cells;
  QString name;       // of the table that is made or dropped, or whose columns change
  QString statement;  // that makes it
  FieldInfo column;
  int place = 0;  // of the column among all
};

struct TableNames {
  QString table;
  QStringList columns;
};

// Puts a list together.
class ChangeWriter {
 public:
  // The number of these names; written where they are new.
  int Number_Of(const QByteArray& table, const std::vector<QByteArray>& columns);
  int Number_Of(const QByteArray& names);  // that Names gave
  // As they stand in a list.
  static QByteArray Names(const QByteArray& table, const std::vector<QByteArray>& columns);
  // One change each, behind the others. A row that came or went, with all its values.
  void Row(ChangeKind kind, int table, qint64 key, const std::vector<RawValue>& values);
  // A row that has other values, or another key.
  void Update(int table, qint64 key, qint64 newKey, const std::vector<ChangedCell>& cells);
  // A table that came or went, and how it is made.
  void Table(ChangeKind kind, const QString& name, const QString& statement);
  // A column that came or went, at that place of its table.
  void Column(ChangeKind kind, const QString& table, const FieldInfo& column, int place);

  bool Is_Empty() const { return list.isEmpty(); }
  qsizetype Size() const { return list.size(); }
  // Back to a size it had: what was written since has not happened.
  void Cut(qsizetype size);
  const QByteArray& List() const { return list; }
  void Clear();  // the next list names its tables anew

 private:
  char* Room(qsizetype bytes);  // at the end of the list, which is so much longer then
  void Whole(quint64 number);
  void Bytes(const char* bytes, qsizetype size);
  void Put(const RawValue& value);

  struct Known {
    qsizetype at = 0;  // where they stand in the list
    QByteArray names;
  };
  QByteArray list;
  std::vector<Known> known;
};

// Takes one apart. Raises 3343 where it is damaged. The list has to live as long as the changes that are read.
class ChangeReader {
 public:
  explicit ChangeReader(const QByteArray& list);
  qsizetype Count() const { return static_cast<qsizetype>(places.size()); }
  void Read(qsizetype index, StoredChange& change) const;  // the names are no changes and are not counted
  const TableNames& Names(int table) const { return names.at(static_cast<size_t>(table)); }

 private:
  QByteArray list;
  std::vector<qsizetype> places;
  std::vector<TableNames> names;
};
