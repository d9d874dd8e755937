#pragma once
#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QLockFile>
#include <QSet>
#include <QString>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/database.h"

#include <sqlite3.h>

// The inside of the database service, shared by its own files only.

namespace errors {
inline constexpr int deviceError = 57, tableExists = 3010, noTransaction = 3034, fieldExists = 3191,
                     objectClosed = 3420, noEdit = 3020;
}

namespace database_inner {

[[noreturn]] void Raise_Device();
// The error that a result of SQLite stands for, with a German text: what is wrong and what helps.
Error Error_Of_Result(sqlite3* db, int rc);
// What SQLite says about a statement that it does not take, in German.
QString German_Message(const QString& message);

// Where a database begins to count its changes: so far from where every other one began that no cache takes one for the
// other, even if it lies at the same address.
qint64 First_Count();

struct Finalizer {
  void operator()(sqlite3_stmt* it) const { sqlite3_finalize(it); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

// What is known of one table while the file is open. Never removed, so that pointers to it stay good.
struct TableState {
  quint64 version = 0;  // counts the writes
  quint64 when = 0;     // of the last one, by the clock of all tables
  qint64 nextKey = 0;   // 0: ask the table; keys are not used twice, so that an old bookmark never meets a new row
  quint64 nextKeyGeneration = 0;

  // Which rows the last versions wrote, in order. A version is one write of a recordset, or all rows of a step of the
  // journal; one that stands not in it changed anything at all (its columns, the whole table).
  struct Logged {
    quint64 version = 0;
    RowWrite write;
  };
  std::vector<Logged> writes;
  quint64 forgotten = 0;            // the last version of which rows have left it
  void Log(const RowWrite& write);  // of the version that is the last now
  // Everything that was written since a version; nothing where the log does not tell all of it.
  std::optional<std::span<const Logged>> Since(quint64 earlier) const;
};

struct PointsEntry {
  TableState* table = nullptr;
  quint64 version = 0, generation = 0;
  bool exists = false;
  std::vector<Database::PointRow> rows;
};

struct OpenWay {
  bool readOnly = false;
  bool create = false;
  bool lockFile = true;
};

// What bounds the statements that run now.
class Limit {
 public:
  Limit(const QString& path, int milliseconds, WorkBounds bounds);
  // Asked by SQLite while it works. Sets `fault` when it has to stop.
  bool Is_Reached();
  // Bytes of the rows taken so far. Raises when they are too many.
  void Charge(qint64 bytes);

  Error fault;
  bool asking = false;  // the one who wants the rows is being asked

 private:
  bool Is_Stopped(int milliseconds);
  qint64 File_Bytes() const;
  void Set_Too_Large();

  QElapsedTimer clock;
  QString path;
  int longest;
  WorkBounds bounds;
  qint64 memoryBefore, fileBefore, taken = 0, lastLook = 0;
};

// What the system calls an open file: that follows it wherever it goes.
struct OpenedAs {
  OpenedAs() = default;
  explicit OpenedAs(const QString& path);
  QString Place_Now(const QString& path) const;

  int descriptor = -1;
  QByteArray target;  // empty: the system does not tell
};

// The name of a file that is built beside its target; what is left of it goes in the end.
struct AsideDatabase {
  explicit AsideDatabase(const QString& target);
  ~AsideDatabase();
  AsideDatabase(const AsideDatabase&) = delete;
  AsideDatabase& operator=(const AsideDatabase&) = delete;
  const QString path;
};

// Hears of every change of a database before it is stored.
class Recorder {
 public:
  virtual ~Recorder() = default;
  virtual void Before_Statement() = 0;  // that may write
  virtual void Statement_Failed() = 0;  // and has changed nothing
  virtual void Before_Commit() = 0;
  virtual void Committed() = 0;
  virtual void Taken_Back() = 0;
  virtual void Dropping(const TableDef& table) = 0;  // its rows are still there
  virtual void Created(const TableDef& table) = 0;
  virtual void Column_Added(const TableDef& table, const FieldInfo& column) = 0;  // at its end
  virtual void Column_Goes(const TableDef& table, int place) = 0;                 // its values are still there
  virtual void Lost_Track() = 0;  // a change that none of the above tells of
};

// One open file. Recordsets share it with the Database and find `db` empty after Close.
class Engine {
 public:
  ~Engine();
  void Open(const QString& file, OpenWay way);
  void Close();
  void Need_Open() const;  // raises as well while a statement waits for an answer
  // Before more rows of a result are kept: their bytes so far.
  void Charge(qint64 bytes);

  // Turns a result of SQLite into an Error. A transaction SQLite has ended by itself is ended here as well.
  [[noreturn]] void Fail(int rc);
  Statement Prepare(const QByteArray& sql, bool lasting = false);
  // One that is kept from call to call; Finish ends it, Close ends what is left.
  sqlite3_stmt* Prepare_Lasting(const QByteArray& sql);
  void Finish(sqlite3_stmt*& statement);
  void Run(const char* sql);
  void Execute(const QByteArray& statements);  // of anybody, several separated by ";"
  qint64 Number_Of(const QByteArray& sql);     // first column of the first row
  void Put_Number(quint32 number);             // of the application, into the head of the file

  void Need_Write();  // before every write: switches the log on at the first one
  void Begin();
  void Commit();
  void Roll_Back();
  void Checkpoint();
  // A change that is to be stored at once. Where it is recorded, in a transaction of its own together with its record.
  template <typename Work>
  void Write(Work&& work) {
    if (!recorder || depth > 0) return work();
    Begin();
    try {
      work();
      Commit();
    } catch (...) {
      if (depth > 0) Roll_Back();
      throw;
    }
  }
  // Rows were changed by neither recordset nor statement: of these tables the given rows alone, or anything at all.
  void Walked(const QHash<QString, std::vector<qint64>>& rowsByTable);
  void Everything_Changed();
  const TableDef* Table_As_Known(const QString& name) const;  // without looking whether the list is up to date

  // Notices writes that came by other ways than a recordset.
  void Notice_Changes();
  void Wrote(TableState* table, const RowWrite& write);  // after a write of a recordset
  void Count_Write(TableState* table);                   // of whatever kind
  QStringList Tables_Written_Since(quint64 moment, const TableState* but) const;
  void Drop_Caches() { ++generation; }
  TableState* State_Of(const QString& table);
  qint64 Next_Key(TableState* state, const QString& table);

  const std::vector<TableDef>& Tables();
  const TableDef* Find_Table(const QString& name);
  void Create(const TableDef& table);
  void Drop(const QString& name);
  void Drop_All(const QStringList& names);
  void Alter(const QString& table, const QByteArray& change);

  const std::vector<Database::PointRow>* Points(const QString& table);

  QString Place_Now() const;
  void Write_Whole_To(const QString& file);  // every table as it stands; the file must not be there

  sqlite3* db = nullptr;
  QString path;
  bool readOnly = false;
  bool hasUtf8 = true;  // texts of a foreign file may stand there in UTF-16
  int depth = 0;
  // Moves when every cache has to be dropped; no two databases begin with the same.
  quint64 generation = static_cast<quint64>(First_Count()) + 1;
  quint64 rollbacks = 0;                // keysets are taken anew when it has moved
  qint64 otherChanges = First_Count();  // those that SQLite does not count
  qint64 accountedChanges = 0;          // SQLite's count when it was last looked at
  quint64 writeClock = 0;               // counts the writes of all tables
  Limit* limit = nullptr;
  Recorder* recorder = nullptr;

 private:
  void Run_Lasting(sqlite3_stmt*& statement, const char* sql);
  void Read_Tables();
  void Index_Tables();
  qint64 Schema_Version();
  void Take_Over_Log();

  bool logReady = false;
  QString openName;  // among the open files
  OpenedAs openedAs;
  std::unique_ptr<QLockFile> lock;
  std::vector<TableDef> tables;
  QHash<QString, int> tableIndex;
  qint64 knownSchema = -1;
  sqlite3_stmt *schemaStatement = nullptr, *beginStatement = nullptr, *commitStatement = nullptr;
  QSet<sqlite3_stmt*> lastingStatements;
  QHash<QString, std::shared_ptr<TableState>> states;
  QHash<QString, std::shared_ptr<PointsEntry>> points;
};

int Register_Collation(sqlite3* db);
int Register_Functions(sqlite3* db);  // those of the user's statements
QByteArray Quoted(const QString& name);
FieldInfo Field_Of_Declaration(const QString& name, const QString& declared);
QByteArray Declaration_Of(const FieldInfo& field);
QString Fold(const QString& name);
// The fields of a table as declared in an open file.
std::vector<FieldInfo> Read_Fields(sqlite3* db, const QString& table);
TableDef Parse_Table(sqlite3* db, const QString& name);
QByteArray Create_Statement(const TableDef& table);

QString Lock_File_Of(const QString& path);
bool Is_Open_Here(const QString& path);
void Remove_Sidecars(const QString& path);
bool Has_Sidecar(const QString& path);
// Flushes a finished file, puts it in the place of `target` and flushes the folder.
void Put_In_Place(const QString& aside, const QString& target);
bool Flush_File(const QString& path);

// Makes it a value as the column takes it; errors 6, 13, 3163.
void Fit_Value(const FieldInfo& field, Value& value);
qint64 Whole_Of(const Value& value);
double Number_Of(const Value& value);
QString Text_Of(const Value& value);

// One value of a cached row; texts lie in the block.
struct Cell {
  enum class Kind : quint8 { Null, Whole, Real, Text };
  Kind kind = Kind::Null;
  quint32 bytes = 0;
  union {
    qint64 whole = 0;
    double real;
    qint64 offset;
  };
};

// The columns that are read, and where each stands among them (-1: it is not read).
struct Layout {
  std::vector<int> columns, slots;
};

struct Block {
  int first = 0;             // position of its first row
  std::vector<qint32> rows;  // number of the row in `cells`, -1 for a vanished one
  std::shared_ptr<const Layout> layout;
  std::vector<Cell> cells;
  std::vector<char> texts;
  quint64 asked = 0;  // when it was asked for last
  int Count() const { return static_cast<int>(rows.size()); }
  qint64 Bytes() const {
    return static_cast<qint64>(sizeof(Block) + rows.size() * sizeof(qint32) + cells.size() * sizeof(Cell) +
                               texts.size());
  }
  Cell* Row_At(int position) {
    const qint32 row = rows[static_cast<size_t>(position - first)];
    return row < 0 ? nullptr : cells.data() + static_cast<size_t>(row) * layout->columns.size();
  }
};

}  // namespace database_inner

struct Database::Inner {
  std::shared_ptr<database_inner::Engine> engine = std::make_shared<database_inner::Engine>();
};

struct Recordset::Inner {
  ~Inner();
  enum class At { Row, Before, Behind };
  enum class Mode { None, Edit, New };

  void Open(const QString& source, bool asSnapshot = false);
  void Open_Table(const QString& name);
  void Open_Select(const QString& sql, bool asSnapshot);
  void Read_Keys();
  bool Take_Dense_Keys();
  void Read_Snapshot(sqlite3_stmt* statement);
  void Close_Statements();

  void Validate() {  // drops what has become stale
    if (!engine->db || sqlite3_total_changes64(engine->db) != engine->accountedChanges || !Is_Fresh()) Refresh();
  }
  bool Is_Fresh() const { return !state || (seenVersion == state->version && seenGeneration == engine->generation); }
  void Refresh();
  bool Forget_Rows_Alone();
  void Drop_Blocks();
  void Need_Row();
  void Need_Editable() const;
  void Go(int position);
  int Position_Of(qint64 key);
  const database_inner::Cell* Row_Of(int rowPosition);  // null for a vanished row; sets lastBlock
  const database_inner::Cell& Cell_At(int column);
  database_inner::Block* Block_Of(int rowPosition);
  database_inner::Block* Load(int from, int count);
  void Take_In_Fresh();  // before anybody looks at all blocks
  database_inner::Block* Keep(std::unique_ptr<database_inner::Block> block);
  void Forget_Older_Half();
  void Prepare_Read();
  bool Read_Exact(database_inner::Block& block, int count);
  void Read_Range(database_inner::Block& block, int index, int end);
  void Read_Cell(database_inner::Block& block, database_inner::Cell& cell, sqlite3_stmt* statement, int column);
  void Patch_Row();
  void Forget_Row(int rowPosition);

  void Index_Fields();
  int Find_Field(QStringView name) const;
  void Check_Column(int column) const;
  QString Cell_Text(const database_inner::Cell& cell) const;
  void Bind(sqlite3_stmt* statement, int parameter, const Value& value);
  void Insert();
  void Change();
  void End_Edit();

  std::shared_ptr<database_inner::Engine> engine;
  QString source;
  bool fixed = false;       // opened as a snapshot
  QString table;            // empty: a snapshot of a statement over several tables
  QByteArray keyStatement;  // the keys in the order of the rows
  std::vector<FieldInfo> fields;
  std::vector<quint32> fieldHints;  // length and first letter, to find a name quickly
  std::vector<qint64> keys;
  bool ascending = true, wholeTable = false;
  bool exact = false;            // the table holds just these keys in this order
  QHash<qint64, int> positions;  // only for keys that do not ascend
  bool positionsKnown = false;
  At at = At::Behind;
  int position = 0;

  database_inner::TableState* state = nullptr;
  quint64 seenVersion = 0, seenGeneration = 0, seenRollbacks = 0;
  // By position. Single rows that a walk forward reads here and there wait in a list of their own: to put each among
  // all others would cost more than to read it.
  std::vector<std::unique_ptr<database_inner::Block>> blocks, fresh;
  database_inner::Block* lastBlock = nullptr;
  const database_inner::Cell* current = nullptr;  // the current row in lastBlock, once it was asked for
  qint64 cachedBytes = 0;
  quint64 clock = 0;   // counts the blocks asked for
  int lastLoaded = 0;  // position behind the block read last, and where it begins
  int lastBegun = 0;
  int readAhead = 8;
  std::vector<char> used;                                // columns that were asked for
  std::shared_ptr<const database_inner::Layout> layout;  // of readStatement
  bool readExact = false;
  sqlite3_stmt* readStatement = nullptr;

  Mode mode = Mode::None;
  std::vector<Value> buffer;
  std::vector<char> dirty, changeDirty;
  sqlite3_stmt *insertStatement = nullptr, *changeStatement = nullptr, *deleteStatement = nullptr;
  std::vector<QByteArray> bound;  // texts of the running statement
  std::vector<Value> raw;
};
