#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <atomic>
#include <utility>

#include "platform/database_inner.h"
#include "platform/files.h"
#include "platform/page_log.h"

namespace database_inner {
namespace {

constexpr const char* keepLogSmall = "PRAGMA wal_autocheckpoint=4000";
constexpr int longestText = 100'000'000;  // bytes; an expression of a statement could ask for ten times as much

QSet<QString>& Open_Files() {
  static QSet<QString> files;
  return files;
}

// At opening a description that cannot be read means a damaged file, and of a file that cannot be opened the number
// says enough.
[[noreturn]] void Fail_Opening(sqlite3* db, int rc) {
  const Error error = Error_Of_Result(db, rc);
  switch (error.number) {
    case errors::deviceError:
    case errors::outOfMemory:
    case errors::diskFull:
      throw error;
    case errors::fileInUse:
      Raise(errors::fileInUse);
    case errors::databaseDamaged:
      Raise(errors::databaseDamaged);
    default:
      const int kind = rc & 0xff;
      const bool unreadable = kind == SQLITE_FORMAT || kind == SQLITE_SCHEMA || kind == SQLITE_ERROR;
      Raise(unreadable ? errors::databaseDamaged : errors::databaseAccess);
  }
}

// A table may come from anybody: nothing that stands in its description is run. Triggers and views are none of ours.
int Distrust(sqlite3* db) {
  constexpr std::pair<int, int> settings[] = {{SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                              {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
                                              {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                              {SQLITE_DBCONFIG_DEFENSIVE, 1},
                                              // A name in quotes that nobody has is an error, never a text.
                                              {SQLITE_DBCONFIG_DQS_DML, 0}};
  for (const auto& [setting, value] : settings)
    if (const int rc = sqlite3_db_config(db, setting, value, nullptr); rc != SQLITE_OK) return rc;
  sqlite3_limit(db, SQLITE_LIMIT_LENGTH, longestText);
  return SQLITE_OK;
}

// The first hundred bytes of the open file, empty if there are not so many. They are read through the file's own
// handle: closing another one would drop the lock.
QByteArray Head_Of(sqlite3* db, qint64& size) {
  sqlite3_file* handle = nullptr;
  sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &handle);
  sqlite3_int64 bytes = 0;
  QByteArray head(100, '\0');
  if (!handle || !handle->pMethods || handle->pMethods->xFileSize(handle, &bytes) != SQLITE_OK || bytes < head.size() ||
      handle->pMethods->xRead(handle, head.data(), static_cast<int>(head.size()), 0) != SQLITE_OK)
    return {};
  size = bytes;
  return head;
}

constexpr qsizetype writeVersion = 18;  // and read version behind it: 1, or 2 while there is a log

// Does the file say of itself that it can only be read? None of ours does.
bool Is_Head_Damaged(sqlite3* db) {
  qint64 size = 0;
  const QByteArray head = Head_Of(db, size);
  return !head.isEmpty() && static_cast<uchar>(head[writeVersion]) > 2;
}

// SQLite takes a last page that is there in part for a whole one and fills it up with zeros.
bool Is_Cut(sqlite3* db, const QString& file) {
  qint64 size = 0;
  const QByteArray head = Head_Of(db, size);
  return Lacks_Pages(head, size, Read_Log(file + QStringLiteral("-wal")));
}

// SQLite plays whatever log lies beside a file into it. A file that was closed in order has none: this is the log of a
// table that lay here before and was replaced while a program had it. It is kept aside.
void Leave_Strange_Log(sqlite3* db, const QString& file) {
  const QString log = file + QStringLiteral("-wal"), aside = log + QStringLiteral("_alt");
  if (QFileInfo(log).size() == 0) return;  // looked at first: a writer marks the head before it begins a log
  qint64 size = 0;
  if (Head_Of(db, size).mid(writeVersion, 2) != "\1\1") return;
  QFile::remove(aside);
  QFile::rename(log, aside);
}

// The first column of the first row; empty without one.
QByteArray Text_Of_First(const Statement& statement) {
  if (sqlite3_step(statement.get()) != SQLITE_ROW) return {};
  return reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
}

// Only tells others who has the file; SQLite's lock decides. What lies there is read as a whole: a device, or what is
// larger than such a file can be, is left alone.
std::unique_ptr<QLockFile> Lock_Beside(const QString& table) {
  constexpr qint64 largest = 4096;
  const QString name = Lock_File_Of(table);
  if (!Strange_File(name).isEmpty() || QFileInfo(name).size() > largest) return nullptr;
  auto lock = std::make_unique<QLockFile>(name);
  lock->setStaleLockTime(0);
  lock->tryLock(0);
  return lock;
}

void Need_Database(const QFileInfo& info, bool readOnly) {
  if (!info.exists() || info.isDir()) Raise(errors::databaseNotFound);
  // SQLite would take so short a file for a new one and fill it.
  if (info.size() < 512) Raise(errors::databaseDamaged);
  if (!readOnly && !QFileInfo(info.path()).isWritable()) Raise(errors::databaseAccess);
}

}  // namespace

void Raise_Device() {
  Raise(
      errors::deviceError,
      QStringLiteral("Fehler beim Lesen oder Schreiben des Datenträgers. Prüfen Sie den Datenträger und die Verbindung "
                     "zu ihm."));
}

QString Fold(const QString& name) { return name.toCaseFolded(); }

QString Lock_File_Of(const QString& path) {
  const QFileInfo info(path);
  return info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".ldb");
}

bool Is_Open_Here(const QString& path) { return Open_Files().contains(QFileInfo(path).canonicalFilePath()); }

qint64 First_Count() {
  static std::atomic<qint64> made = 0;
  return ++made << 40;
}

Engine::~Engine() {
  try {
    Close();
  } catch (const Error&) {
    // What the log holds is read back at the next opening.
  }
}

void Engine::Open(const QString& file, OpenWay way) {
  readOnly = way.readOnly;
  const QFileInfo info(file);
  if (!way.create) Need_Database(info, readOnly);
  if (way.create && !QFileInfo(info.absolutePath()).isDir()) Raise(errors::pathNotFound);
  int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  flags |= readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (way.create) flags |= SQLITE_OPEN_CREATE;
  QByteArray name = file.toUtf8();
  // Nobody can be writing on a read-only medium, and no log can be made there.
  const bool still = readOnly && !QFileInfo(info.path()).isWritable() && !Has_Sidecar(file);
  if (still) {
    name = "file:" + name.toPercentEncoding("/") + "?immutable=1";
    flags |= SQLITE_OPEN_URI;
  }
  int rc = sqlite3_open_v2(name.constData(), &db, flags, nullptr);
  const auto step = [&](const char* sql) {
    if (rc == SQLITE_OK) rc = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
  };
  if (rc == SQLITE_OK && !readOnly) Leave_Strange_Log(db, file);
  if (rc == SQLITE_OK) rc = Register_Collation(db);
  if (rc == SQLITE_OK) rc = Register_Functions(db);
  if (rc == SQLITE_OK) rc = Distrust(db);
  // What cannot be opened stays as it is, its log too.
  if (rc == SQLITE_OK) rc = sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  const bool refused = rc == SQLITE_OK && !readOnly && sqlite3_db_readonly(db, "main") == 1;
  if (refused) rc = SQLITE_CANTOPEN;
  if (way.create) step("PRAGMA page_size=1024");
  if (!readOnly) step("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT");
  if ((rc & 0xff) == SQLITE_READONLY && Is_Head_Damaged(db)) rc = SQLITE_CORRUPT;
  // Erased rows leave nothing behind that a repair could take for rows.
  step(
      "PRAGMA synchronous=FULL; PRAGMA secure_delete=ON; PRAGMA cell_size_check=ON; PRAGMA temp_store=MEMORY;"
      "PRAGMA cache_size=-8000; SELECT count(*) FROM sqlite_master");
  if (way.create) step("PRAGMA user_version=1");
  if (rc == SQLITE_OK && !way.create && Is_Cut(db, file)) rc = SQLITE_CORRUPT;
  if (rc != SQLITE_OK) {
    sqlite3* broken = std::exchange(db, nullptr);
    struct Closer {
      sqlite3* it;
      ~Closer() { sqlite3_close_v2(it); }
    } closer{broken};
    Fail_Opening(broken, rc);
  }
  sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
  path = file;
  hasUtf8 = Text_Of_First(Prepare("PRAGMA encoding")) == "UTF-8";
  // A writer that was killed leaves the log switched on; Close then has to switch it off.
  if (!readOnly) Take_Over_Log();
  accountedChanges = sqlite3_total_changes64(db);
  openName = QFileInfo(path).canonicalFilePath();  // it may be another one when it is closed
  openedAs = OpenedAs(path);
  Open_Files().insert(openName);
  if (way.lockFile && !readOnly) lock = Lock_Beside(path);
}

void Engine::Close() {
  if (!db) return;
  Need_Open();
  sqlite3* closing = std::exchange(db, nullptr);
  ++generation;
  // Our own alone: virtual tables of a foreign file finalize theirs.
  for (sqlite3_stmt* statement : std::exchange(lastingStatements, {})) sqlite3_finalize(statement);
  schemaStatement = beginStatement = commitStatement = nullptr;
  recorder = nullptr;
  if (depth > 0) sqlite3_exec(closing, "ROLLBACK", nullptr, nullptr, nullptr);
  depth = 0;
  int rc = SQLITE_OK;
  if (logReady) rc = sqlite3_exec(closing, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
  const Error fault = rc == SQLITE_OK ? Error() : Error_Of_Result(closing, rc);
  const int closed = sqlite3_close(closing);
  if (closed != SQLITE_OK) sqlite3_close_v2(closing);
  Open_Files().remove(openName);
  lock.reset();
  if (rc == SQLITE_OK && closed == SQLITE_OK) return;
  if (fault.number == errors::diskFull) throw fault;
  Raise_Device();
}

void Engine::Need_Open() const {
  if (!db) Raise(errors::objectClosed, QStringLiteral("Die Datenbank ist geschlossen."));
  if (limit && limit->asking) Raise(errors::databaseBusy);
}

void Engine::Fail(int rc) {
  Error error = Error_Of_Result(db, rc);
  if ((rc & 0xff) == SQLITE_INTERRUPT && limit && limit->fault.number != 0) error = std::exchange(limit->fault, {});
  if (recorder) recorder->Statement_Failed();
  if (depth > 0 && sqlite3_get_autocommit(db)) {
    depth = 0;
    Everything_Changed();
    if (recorder) recorder->Taken_Back();
  }
  throw error;
}

Statement Engine::Prepare(const QByteArray& sql, bool lasting) {
  Need_Open();
  sqlite3_stmt* statement = nullptr;
  const int rc = sqlite3_prepare_v3(db, sql.constData(), static_cast<int>(sql.size()) + 1,
                                    lasting ? SQLITE_PREPARE_PERSISTENT : 0u, &statement, nullptr);
  if (rc != SQLITE_OK) Fail(rc);
  return Statement(statement);
}

sqlite3_stmt* Engine::Prepare_Lasting(const QByteArray& sql) {
  sqlite3_stmt* statement = Prepare(sql, true).release();
  lastingStatements.insert(statement);
  return statement;
}

void Engine::Finish(sqlite3_stmt*& statement) {
  if (lastingStatements.remove(statement)) sqlite3_finalize(statement);
  statement = nullptr;
}

void Engine::Run(const char* sql) {
  Need_Open();
  const int rc = sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
  if (rc != SQLITE_OK) Fail(rc);
}

void Engine::Take_Over_Log() {
  logReady = Text_Of_First(Prepare("PRAGMA journal_mode")) == "wal";
  if (logReady) Run(keepLogSmall);
}

qint64 Engine::Number_Of(const QByteArray& sql) {
  const Statement statement = Prepare(sql);
  const int rc = sqlite3_step(statement.get());
  if (rc != SQLITE_ROW && rc != SQLITE_DONE) Fail(rc);
  return rc == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Engine::Put_Number(quint32 number) {
  Run(("PRAGMA application_id=" + QByteArray::number(static_cast<qint32>(number))).constData());
}

void Engine::Need_Write() {
  Need_Open();
  if (readOnly) Raise(errors::noPermission);
  if (recorder) recorder->Before_Statement();
  if (logReady || depth > 0) return;
  bool hasLog = false;
  {
    const Statement statement = Prepare("PRAGMA journal_mode=WAL");
    const int rc = sqlite3_step(statement.get());
    hasLog =
        rc == SQLITE_ROW && qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)), "wal") == 0;
    const bool cannot = (rc & 0xff) == SQLITE_PROTOCOL || (rc & 0xff) == SQLITE_CANTOPEN;
    if (rc != SQLITE_ROW && rc != SQLITE_DONE && !cannot) Fail(rc);
  }
  Run(hasLog ? keepLogSmall : "PRAGMA journal_mode=TRUNCATE");
  logReady = true;
}

void Engine::Begin() {
  Need_Open();
  if (depth == 0) {
    Need_Write();
    Run_Lasting(beginStatement, "BEGIN IMMEDIATE");
  }
  ++depth;
}

void Engine::Run_Lasting(sqlite3_stmt*& statement, const char* sql) {
  if (!statement) statement = Prepare_Lasting(sql);
  sqlite3_step(statement);
  const int rc = sqlite3_reset(statement);
  if (rc != SQLITE_OK) Fail(rc);
}

void Engine::Commit() {
  Need_Open();
  if (depth == 0) Raise(errors::noTransaction, QStringLiteral("Es ist keine Transaktion offen."));
  if (depth > 1) {
    --depth;
    return;
  }
  // All or nothing: what could not be written is taken back before anybody hears of it.
  try {
    if (recorder) recorder->Before_Commit();
    Run_Lasting(commitStatement, "COMMIT");
    depth = 0;
    if (recorder) recorder->Committed();
  } catch (const Error&) {
    Roll_Back();
    throw;
  }
}

void Engine::Roll_Back() {
  Need_Open();
  if (depth == 0) return;
  depth = 0;
  Everything_Changed();
  if (recorder) recorder->Taken_Back();
  if (!sqlite3_get_autocommit(db)) Run("ROLLBACK");
}

void Engine::Everything_Changed() {
  ++rollbacks;
  ++generation;
  ++otherChanges;
  knownSchema = -1;
}

void Engine::Walked(const QHash<QString, std::vector<qint64>>& rowsByTable) {
  accountedChanges = sqlite3_total_changes64(db);
  for (auto table = rowsByTable.begin(); table != rowsByTable.end(); ++table) {
    TableState* state = State_Of(table.key());
    Count_Write(state);
    for (const qint64 key : table.value()) state->Log({RowWrite::Kind::Changed, key});
  }
}

void Engine::Checkpoint() {
  Need_Open();
  if (!logReady || depth > 0) return;
  const int rc = sqlite3_wal_checkpoint_v2(db, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  if (rc != SQLITE_OK) Fail(rc);
}

void Engine::Notice_Changes() {
  const qint64 changes = sqlite3_total_changes64(db);
  if (changes == accountedChanges) return;
  accountedChanges = changes;
  ++generation;
}

void Engine::Wrote(TableState* table, const RowWrite& write) {
  accountedChanges = sqlite3_total_changes64(db);
  Count_Write(table);
  table->Log(write);
}

void Engine::Count_Write(TableState* table) {
  ++table->version;
  table->when = ++writeClock;
}

QStringList Engine::Tables_Written_Since(quint64 moment, const TableState* but) const {
  QStringList names;
  if (writeClock == moment) return names;
  for (auto table = states.begin(); table != states.end(); ++table)
    if (table.value()->when > moment && table.value().get() != but) names += table.key();
  return names;
}

void TableState::Log(const RowWrite& write) {
  constexpr std::ptrdiff_t most = 1024;
  if (std::ssize(writes) >= 2 * most) {
    forgotten = writes[most - 1].version;
    writes.erase(writes.begin(), writes.begin() + most);
  }
  writes.push_back({version, write});
}

std::optional<std::span<const TableState::Logged>> TableState::Since(quint64 earlier) const {
  if (earlier < forgotten) return std::nullopt;
  quint64 found = version + 1;
  auto first = writes.end();
  for (; first != writes.begin() && (first - 1)->version > earlier; --first) {
    const quint64 one = (first - 1)->version;
    if (one != found && one + 1 != found) return std::nullopt;
    found = one;
  }
  if (found != earlier + 1) return std::nullopt;
  return std::span(first, writes.end());
}

TableState* Engine::State_Of(const QString& table) {
  std::shared_ptr<TableState>& state = states[Fold(table)];
  if (!state) state = std::make_shared<TableState>();
  return state.get();
}

qint64 Engine::Next_Key(TableState* state, const QString& table) {
  if (state->nextKey == 0 || state->nextKeyGeneration != generation) {
    const qint64 last = Number_Of("SELECT max(rowid) FROM " + Quoted(table));
    if (last == std::numeric_limits<qint64>::max()) Raise(errors::overflow);
    state->nextKey = std::max(state->nextKey, last + 1);
    state->nextKeyGeneration = generation;
  }
  return state->nextKey;
}

namespace {
// What is beyond the range stands at its end.
int Int_At(sqlite3_stmt* statement, int column) {
  return static_cast<int>(std::clamp<qint64>(sqlite3_column_int64(statement, column), std::numeric_limits<int>::min(),
                                             std::numeric_limits<int>::max()));
}
}  // namespace

const std::vector<Database::PointRow>* Engine::Points(const QString& table) {
  Need_Open();
  Notice_Changes();
  std::shared_ptr<PointsEntry>& entry = points[table];
  if (entry && entry->generation == generation && entry->version == entry->table->version)
    return entry->exists ? &entry->rows : nullptr;
  if (!entry) entry = std::make_shared<PointsEntry>();
  entry->rows.clear();
  entry->exists = false;
  entry->table = State_Of(table);
  const TableDef* def = Find_Table(table);
  if (def && def->fields.size() >= 2) {
    const Statement owner = Prepare("SELECT " + Quoted(def->fields[0].name) + ',' + Quoted(def->fields[1].name) +
                                    " FROM " + Quoted(def->name) + " ORDER BY rowid");
    sqlite3_stmt* statement = owner.get();
    int rc;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW)
      if (sqlite3_column_type(statement, 0) != SQLITE_NULL && sqlite3_column_type(statement, 1) != SQLITE_NULL)
        entry->rows.push_back({Int_At(statement, 0), Int_At(statement, 1)});
    if (rc != SQLITE_DONE) Fail(rc);
    entry->exists = true;
  }
  entry->version = entry->table->version;
  entry->generation = generation;
  return entry->exists ? &entry->rows : nullptr;
}

}  // namespace database_inner
