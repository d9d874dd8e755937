#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

#include "platform/database_inner.h"
#include "platform/files.h"
#include "platform/page_scanner.h"

namespace {

using database_inner::Engine;
using database_inner::Quoted;
using database_inner::Statement;

std::vector<TableDef>& Known_Tables() {
  static std::vector<TableDef> tables;
  return tables;
}

int Rows_Of(Engine& engine) {
  qint64 rows = 0;
  for (const TableDef& table : engine.Tables()) rows += engine.Number_Of("SELECT count(*) FROM " + Quoted(table.name));
  return static_cast<int>(rows);
}

// Rows of a sound file, -1 for a damaged one.
int Rows_If_Sound(const QString& path) {
  try {
    Engine engine;
    engine.Open(path, {.lockFile = false});
    bool sound = false;
    {
      const Statement statement = engine.Prepare("PRAGMA integrity_check(1)");
      sound = sqlite3_step(statement.get()) == SQLITE_ROW &&
              qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)), "ok") == 0;
    }
    const int rows = sound ? Rows_Of(engine) : -1;
    engine.Close();
    return rows;
  } catch (const Error& error) {
    if (error.number == errors::fileInUse) Raise(errors::databaseInUse);
    if (error.number == errors::databaseDamaged || error.number == errors::sqlSyntax ||
        error.number == errors::tableNotFound)
      return -1;
    throw;
  }
}

// Writes what was found into a new file.
class Rebuilder {
 public:
  explicit Rebuilder(const QString& path) { engine.Open(path, {.create = true, .lockFile = false}); }

  void Write(std::vector<page_scanner::Table>& tables) {
    engine.Begin();
    for (page_scanner::Table& table : tables) {
      if (table.name.isEmpty()) table.name = Free_Name();
      if (!Create(table)) continue;
      Insert(table);
    }
    engine.Commit();
    engine.Close();
  }

  int rows = 0, droppedTexts = 0;

 private:
  QString Free_Name() {
    QString name;
    do name = QStringLiteral("Gerettet%1").arg(nextName++);
    while (engine.Find_Table(name));
    return name;
  }

  bool Create(const page_scanner::Table& table) {
    if (engine.Find_Table(table.name)) return false;
    if (!table.sql.isEmpty() && sqlite3_exec(engine.db, table.sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK)
      return true;
    engine.Create({table.name, table.fields});
    return true;
  }

  void Insert(const page_scanner::Table& table) {
    const int width = static_cast<int>(table.fields.size());
    QByteArray names = "rowid", marks = "?";
    for (const FieldInfo& field : table.fields) {
      names += ',' + Quoted(field.name);
      marks += ",?";
    }
    const Statement owner =
        engine.Prepare("INSERT INTO " + Quoted(table.name) + " (" + names + ") VALUES (" + marks + ')');
    sqlite3_stmt* insert = owner.get();
    for (const auto& [key, fields] : table.rows) {
      sqlite3_bind_int64(insert, 1, key);
      for (int i = 0; i < width; ++i) {
        const auto index = static_cast<size_t>(i);
        Bind(insert, i + 2, index < fields.size() ? fields[index] : page_scanner::Field());
      }
      sqlite3_step(insert);
      const int rc = sqlite3_reset(insert);
      if (rc == SQLITE_OK) {
        ++rows;
      } else if ((rc & 0xff) != SQLITE_CONSTRAINT && (rc & 0xff) != SQLITE_MISMATCH) {
        engine.Fail(rc);
      }
    }
  }

  void Bind(sqlite3_stmt* insert, int parameter, const page_scanner::Field& field) {
    if (const qint64* whole = std::get_if<qint64>(&field)) {
      sqlite3_bind_int64(insert, parameter, *whole);
    } else if (const double* real = std::get_if<double>(&field)) {
      sqlite3_bind_double(insert, parameter, *real);
    } else if (const QByteArray* text = std::get_if<QByteArray>(&field); text && Is_Text(*text)) {
      sqlite3_bind_text(insert, parameter, text->constData(), static_cast<int>(text->size()), SQLITE_STATIC);
    } else {
      sqlite3_bind_null(insert, parameter);
    }
  }

  bool Is_Text(const QByteArray& bytes) {
    const bool valid = QString::fromUtf8(bytes).toUtf8() == bytes;
    if (!valid) ++droppedTexts;
    return valid;
  }

  Engine engine;
  int nextName = 0;
};

QString Name_For_Damaged(const QString& path) {
  const QFileInfo info(path);
  const QString ending = info.suffix().isEmpty() ? QString() : '.' + info.suffix();
  for (int number = 1;; ++number) {
    const QString name =
        QStringLiteral("%1/%2_defekt_%3%4").arg(info.path(), info.completeBaseName()).arg(number).arg(ending);
    if (!File_Exists(name)) return name;
  }
}

// The damaged file gets a second name before the new one takes the first, so that at no moment none is there.
void Keep_Damaged(const QString& path, const QString& kept) {
  if (::link(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) != 0) File_Copy(path, kept);
  for (const char* ending : {"-wal", "-journal"})
    if (QFileInfo(path + QLatin1String(ending)).size() > 0)
      QFile::rename(path + QLatin1String(ending), kept + QLatin1String(ending));
}

}  // namespace

void Set_Known_Tables(std::vector<TableDef> tables) { Known_Tables() = std::move(tables); }

RepairReport RepairDatabase(const QString& path) {
  const QString file = Find_File(path);
  if (file.isEmpty()) Raise(errors::databaseNotFound);
  if (database_inner::Is_Open_Here(file)) Raise(errors::databaseInUse);
  RepairReport report;
  report.rows = Rows_If_Sound(file);
  report.wasSound = report.rows >= 0;
  if (report.wasSound) return report;

  std::vector<page_scanner::Table> tables = page_scanner::Scan(Read_Bytes(file), Known_Tables());
  if (tables.empty()) Raise(errors::databaseDamaged);
  const QString aside = Aside_Name(file);
  struct Remover {
    QString aside;
    ~Remover() {
      QFile::remove(aside);
      database_inner::Remove_Sidecars(aside);
    }
  } remover{aside};
  QFile::remove(aside);
  database_inner::Remove_Sidecars(aside);
  {
    Rebuilder rebuilder(aside);
    rebuilder.Write(tables);
    report.rows = rebuilder.rows;
    report.droppedTexts = rebuilder.droppedTexts;
  }
  report.damagedCopy = Name_For_Damaged(file);
  Keep_Damaged(file, report.damagedCopy);
  database_inner::Put_In_Place(aside, file);
  return report;
}
