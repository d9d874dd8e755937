#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/error.h"

struct sqlite3;

// The database service: one file, several tables, ordered rows, recordsets with a cursor. Rows are on disk when
// Update, Delete or CommitTrans returns. All procedures raise Error with the numbers of platform/error.h.

// A value of a field. monostate is Null.
using Value = std::variant<std::monostate, qint64, double, QString>;

enum class FieldType { Integer, Long, Double, Text };  // Integer: 16 bit, error 6 beyond it
struct FieldInfo {
  QString name;
  FieldType type = FieldType::Text;
  int size = 0;  // characters of a Text column (error 3163 beyond it), 0 = no limit
  bool operator==(const FieldInfo&) const = default;
};

class Database;

// A row written through a recordset, and a moment in the history of a table's writes.
struct RowWrite {
  enum class Kind { Changed, Added, Gone };
  Kind kind = Kind::Changed;
  qint64 key = 0;
};
struct WriteMoment {
  quint64 version = 0, generation = 0, all = 0;
};
struct WritesSince {
  std::vector<RowWrite> rows;
  QStringList otherTables;  // that were written, made or dropped, in small letters
};

// A cursor over the rows of a table or of a Select. Row order is the table's order (order of appending) unless the
// statement says otherwise. A keyset is taken at opening; rows appended through this recordset join it.
class Recordset {
 public:
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  bool Eof() const;           // behind the last row; both are true without rows
  bool Bof() const;           // before the first row
  int RecordCount() const;    // of the keyset, vanished rows included
  void MoveFirst();           // on an empty recordset Eof and Bof become true
  void MoveLast();            // on an empty recordset as MoveFirst
  void MoveNext();            // at Eof: error 3021
  void MovePrevious();        // at Bof: error 3021
  int Position() const;       // 0-based, -1 without a current row
  void MoveTo(int position);  // by position; error 3021 where there is no row

  // The row's key as text. SetBookmark of a vanished row is error 3167.
  QString Bookmark() const;
  void SetBookmark(const QString& bookmark);
  bool HasRow(const QString& bookmark) const;
  qint64 Key() const;                // the same key as a number
  int PositionOf(qint64 key) const;  // -1 if there is none

  const std::vector<FieldInfo>& Fields() const;  // in the order of the columns
  int FieldIndex(QStringView name) const;        // ignoring case; error 3265 if there is none
  bool HasField(QStringView name) const;         // ignoring case

  // Values of the current row (of the edit buffer between Edit/AddNew and Update). The reference lasts until the next
  // move. Null reads as "" or 0, and so does a number without bounds. A text in a number column reads by Val; error 13
  // for Integer of a non-number is not raised: ask Raw for what is stored.
  const Value& Raw(int column) const;
  QString Text(int column) const;
  qint64 Integer(int column) const;  // halves to even
  double Number(int column) const;
  QString Text(QStringView name) const { return Text(FieldIndex(name)); }
  qint64 Integer(QStringView name) const { return Integer(FieldIndex(name)); }
  double Number(QStringView name) const { return Number(FieldIndex(name)); }

  void AddNew();  // numbers 0, texts empty until set
  void Edit();    // error 3021 without a current row
  // Errors 6 and 3163 where the value does not fit, 13 for a text that is no number ("." or "," as decimal sign) in a
  // number column, 3020 outside of an edit. Any move ends an edit without writing.
  void Set(int column, Value value);
  void Set(QStringView name, Value value) { Set(FieldIndex(name), std::move(value)); }
  bool Editing() const;  // between Edit or AddNew and its end
  // Writes only what was set. After AddNew the current row stays where it was; MoveLast goes to the new one. If the
  // write fails (61, 57, 70, 3167) the edit is over and the row is as before.
  void Update();
  void CancelUpdate();  // ends the edit; the row is as before
  void Delete();        // the cursor stands on the following row, or Eof

  WriteMoment Write_Moment() const;  // now
  // What was written since, by this recordset and others of the table, in that order. Nothing where it cannot be told:
  // by statements, taken back, too much.
  std::optional<WritesSince> Writes_Since(const WriteMoment& moment) const;

  void Requery();       // takes the keys anew; the cursor goes to the first row
  bool IsOpen() const;  // until its database is closed

 private:
  friend class Database;
  Recordset();
  struct Inner;
  std::unique_ptr<Inner> inner;
};

struct TableDef {
  QString name;
  std::vector<FieldInfo> fields;
  bool operator==(const TableDef&) const = default;
};

struct OpenMode {
  bool readOnly = false;
};

class Database {
 public:
  ~Database();  // closes; errors are swallowed
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Raises what goes wrong at closing (a full disk at the last checkpoint).
  void Close();
  bool IsOpen() const;
  QString Name() const;
  // Where the open file lies now: Name() while it is at its place, another path if it or its folder was moved or
  // renamed since, "" if it was deleted or another file took its place.
  QString Place_Now() const;
  // The tables as they stand, wherever the file is, into another: built aside, flushed, renamed. A target that exists
  // is replaced.
  void Copy_To(const QString& target);

  std::unique_ptr<Recordset> OpenRecordset(const QString& tableOrSelect);  // error 3078 for an unknown table
  const std::vector<TableDef>& TableDefs();   // in order of creation; reread when the schema changed
  bool HasTable(const QString& name);         // ignoring case
  void CreateTable(const TableDef& table);    // error 3010 if it is there
  void DropTable(const QString& name);        // error 3078 if it is not there
  void DropTables(const QStringList& names);  // all of them at once; 3078 if one is not there: then none is dropped
  // At the end, Null in every row; error 3191 if it is there.
  void AddColumn(const QString& table, const FieldInfo& field);
  void DropColumn(const QString& table, const QString& column);  // error 3265 if it is not there
  int RowCount(const QString& table);                            // error 3078 if it is not there
  int Execute(const QString& sql);                               // rows changed; error 3075 with a German reason

  // Raises what is wrong with a statement; runs nothing.
  void Check_Statement(const QString& sql);
  // The rows as they are now, whatever becomes of them later; for any Select.
  std::unique_ptr<Recordset> OpenSnapshot(const QString& select);

  // Transactions nest by counting; only the outermost writes. Rollback ends all levels.
  void BeginTrans();
  void CommitTrans();
  void Rollback();
  bool InTrans() const;

  // Writes what waits in the log back into the file, so that a copy of the file alone is whole. Called when idle.
  void Checkpoint();
  // Counts every change of any row or table; no two databases ever have the same count. Caches compare it.
  qint64 ChangeCount() const;

  // All rows of a two-column number table, from a cache that is dropped when the table is written. Null where the table
  // does not exist. Rows with a Null in either column are left out.
  struct PointRow {
    int x = 0, y = 0;
  };
  // Nullptr without such a table; valid until the next write.
  const std::vector<PointRow>* Points(const QString& table);

  sqlite3* Handle() const;  // for what has no procedure here

 private:
  friend class Workspace;
  friend class TimeLimit;
  friend class Journal;
  Database();
  struct Inner;
  std::unique_ptr<Inner> inner;
};

// What bounds a statement besides its time.
struct WorkBounds {
  // Of the rows it gives together with what the database needs to find them, and of what it adds to the file.
  qint64 bytes = qint64{256} << 20;
  // Asked some twenty times a second with the milliseconds since the limit began; true: the user wants no more. It may
  // serve events; a database that is asked for anything meanwhile refuses with error 3218.
  std::function<bool(int milliseconds)> stopped;
};

// While it lives, a statement that goes beyond its bounds is ended and nothing of it is done: error 3075 after the
// time, 7 beyond the bytes, 3059 if it was stopped.
class TimeLimit {
 public:
  TimeLimit(Database& database, int milliseconds, WorkBounds bounds = {});
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};

class Workspace {
 public:
  // Opens for exclusive use. 3024 not there, 3196 in use, 3051 no access, 3343 damaged or not a database of ours.
  static std::unique_ptr<Database> OpenDatabase(const QString& path, OpenMode mode = {});
  // A new, empty file; 3204 if the name is taken.
  static std::unique_ptr<Database> CreateDatabase(const QString& path);
};

// Copies a database into a new file with the same tables and rows: built aside, flushed, renamed. 3204 if the target
// exists, 3356 if the source is in use by another program.
void CompactDatabase(const QString& source, const QString& target);

struct RepairReport {
  struct TableRows {
    QString table;
    int rows = 0;
  };
  bool wasSound = false;
  std::vector<TableRows> tables;  // of the repaired file
  int rows = 0;                   // of all of them
  int droppedTexts = 0;           // texts that were no valid UTF-8
  QString damagedCopy;            // where the damaged file is kept; empty when it was sound

  int Rows_In(const QString& table) const;  // ignoring case; 0 if it is not there
};
// Makes a damaged file readable: a sound one stays as it is, else its pages are scanned into a new file that takes its
// place; the damaged one is kept beside it. 3343 if nothing at all can be read (the file then stays).
RepairReport RepairDatabase(const QString& path);

// Tables with their first columns that a repair shall recognise when a file has lost its own description of them, and
// whose description it shall not believe where it tells other columns. One without a name stands for all tables with
// such columns; they then get the names "Gerettet0", "Gerettet1", ...
void Set_Known_Tables(std::vector<TableDef> tables);

// Files of tables are copied, renamed and deleted through these: they fold a waiting log into the file first and take
// stale sidecars of the target away. Never for a file that is open here.
void Table_File_Copy(const QString& source, const QString& target);
void Table_File_Rename(const QString& source, const QString& target);
void Table_File_Delete(const QString& path);  // error 53 if it is not there
// Is there a lock of another living program on it (".ldb")? The text names it.
QString Lock_Holder(const QString& path);
