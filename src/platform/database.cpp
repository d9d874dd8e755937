#include "platform/database.h"

#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "platform/database_inner.h"
#include "platform/files.h"

using database_inner::Engine;

Database::Database() : inner(std::make_unique<Inner>()) {}
Database::~Database() {
  try {
    Close();
  } catch (const Error&) {
    // The rows are in the log and come back at the next opening.
  }
}

void Database::Close() { inner->engine->Close(); }
bool Database::IsOpen() const { return inner->engine->db != nullptr; }
QString Database::Name() const { return inner->engine->path; }
sqlite3* Database::Handle() const { return inner->engine->db; }

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& tableOrSelect) {
  inner->engine->Need_Open();
  std::unique_ptr<Recordset> set(new Recordset);
  set->inner->engine = inner->engine;
  set->inner->Open(tableOrSelect);
  return set;
}

void Database::Check_Statement(const QString& sql) { inner->engine->Prepare(sql.toUtf8()); }

std::unique_ptr<Recordset> Database::OpenSnapshot(const QString& select) {
  inner->engine->Need_Open();
  std::unique_ptr<Recordset> set(new Recordset);
  set->inner->engine = inner->engine;
  set->inner->Open(select, true);
  return set;
}

const std::vector<TableDef>& Database::TableDefs() { return inner->engine->Tables(); }
bool Database::HasTable(const QString& name) { return inner->engine->Find_Table(name) != nullptr; }
void Database::CreateTable(const TableDef& table) { inner->engine->Create(table); }
void Database::DropTable(const QString& name) { inner->engine->Drop(name); }
void Database::DropTables(const QStringList& names) { inner->engine->Drop_All(names); }

void Database::AddColumn(const QString& table, const FieldInfo& field) {
  const TableDef* found = inner->engine->Find_Table(table);
  if (!found) Raise(errors::tableNotFound);
  for (const FieldInfo& other : found->fields)
    if (other.name.compare(field.name, Qt::CaseInsensitive) == 0)
      Raise(errors::fieldExists, QStringLiteral("Das Feld '%1' ist bereits vorhanden.").arg(field.name));
  const TableDef former = *found;
  Engine& engine = *inner->engine;
  engine.Write([&] {
    engine.Alter(former.name,
                 "ADD COLUMN " + database_inner::Quoted(field.name) + ' ' + database_inner::Declaration_Of(field));
    if (engine.recorder) engine.recorder->Column_Added(former, field);
  });
}

void Database::DropColumn(const QString& table, const QString& column) {
  const TableDef* found = inner->engine->Find_Table(table);
  if (!found) Raise(errors::tableNotFound);
  const TableDef former = *found;
  const auto field = std::find_if(former.fields.begin(), former.fields.end(), [&column](const FieldInfo& it) {
    return it.name.compare(column, Qt::CaseInsensitive) == 0;
  });
  if (field == former.fields.end()) Raise(errors::fieldNotFound);
  Engine& engine = *inner->engine;
  engine.Write([&] {
    if (engine.recorder) engine.recorder->Column_Goes(former, static_cast<int>(field - former.fields.begin()));
    engine.Alter(former.name, "DROP COLUMN " + database_inner::Quoted(field->name));
  });
}

int Database::RowCount(const QString& table) {
  const TableDef* found = inner->engine->Find_Table(table);
  if (!found) Raise(errors::tableNotFound);
  return static_cast<int>(inner->engine->Number_Of("SELECT count(*) FROM " + database_inner::Quoted(found->name)));
}

int Database::Execute(const QString& sql) {
  Engine& engine = *inner->engine;
  engine.Need_Write();
  const qint64 before = sqlite3_total_changes64(engine.db);
  engine.Write([&] { engine.Execute(sql.toUtf8()); });
  engine.Notice_Changes();
  ++engine.otherChanges;
  return static_cast<int>(sqlite3_total_changes64(engine.db) - before);
}

void Engine::Execute(const QByteArray& text) {
  const char* rest = text.constData();
  while (*rest != 0) {
    sqlite3_stmt* prepared = nullptr;
    int rc = sqlite3_prepare_v2(db, rest, -1, &prepared, &rest);
    if (rc != SQLITE_OK) Fail(rc);
    if (!prepared) continue;
    const database_inner::Statement statement(prepared);
    // Transactions are counted, so they begin and end by their own procedures alone.
    const QByteArray word = QByteArray(sqlite3_sql(prepared)).trimmed().left(8).toUpper();
    for (const char* refused : {"BEGIN", "COMMIT", "END", "ROLLBACK", "SAVEPOIN", "RELEASE", "ATTACH", "DETACH"})
      if (word.startsWith(refused)) Raise(errors::sqlSyntax);
    if (recorder) {
      recorder->Before_Statement();
      // Of these no hook tells; a temporary table is none of the file's.
      const QByteArray whole = QByteArray(sqlite3_sql(prepared)).simplified().toUpper();
      for (const char* silent : {"CREATE ", "DROP ", "ALTER ", "REINDEX", "PRAGMA"})
        if (whole.startsWith(silent) && !whole.startsWith("CREATE TEMP")) recorder->Lost_Track();
    }
    while ((rc = sqlite3_step(prepared)) == SQLITE_ROW) {
    }
    Drop_Caches();
    if (rc != SQLITE_DONE) Fail(rc);
  }
}

void Database::BeginTrans() { inner->engine->Begin(); }
void Database::CommitTrans() { inner->engine->Commit(); }
void Database::Rollback() { inner->engine->Roll_Back(); }
bool Database::InTrans() const { return inner->engine->depth > 0; }
void Database::Checkpoint() { inner->engine->Checkpoint(); }

qint64 Database::ChangeCount() const {
  const Engine& engine = *inner->engine;
  return (engine.db ? sqlite3_total_changes64(engine.db) : 0) + engine.otherChanges;
}

const std::vector<Database::PointRow>* Database::Points(const QString& table) { return inner->engine->Points(table); }

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& path, OpenMode mode) {
  const QString found = Find_File(path);
  if (found.isEmpty()) Raise(errors::databaseNotFound);
  std::unique_ptr<Database> database(new Database);
  database->inner->engine->Open(found, {.readOnly = mode.readOnly});
  return database;
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString& path) {
  if (File_Exists(path)) Raise(errors::databaseExists);
  database_inner::Remove_Sidecars(path);
  std::unique_ptr<Database> database(new Database);
  try {
    database->inner->engine->Open(path, {.create = true});
  } catch (const Error&) {
    QFile::remove(path);
    throw;
  }
  return database;
}
