#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <numeric>
#include <optional>

#include "platform/database_inner.h"
#include "platform/files.h"
#include "platform/page_log.h"
#include "platform/page_scanner.h"
#include "platform/page_schema.h"

namespace {

using database_inner::Engine;
using database_inner::Quoted;
using database_inner::Statement;

std::vector<TableDef>& Known_Tables() {
  static std::vector<TableDef> tables;
  return tables;
}

std::vector<RepairReport::TableRows> Count_Rows(Engine& engine) {
  std::vector<RepairReport::TableRows> counts;
  for (const TableDef& table : engine.Tables())
    counts.push_back({table.name, static_cast<int>(engine.Number_Of("SELECT count(*) FROM " + Quoted(table.name)))});
  return counts;
}

bool Is_Whole(Engine& engine) {
  const Statement statement = engine.Prepare("PRAGMA integrity_check(1)");
  return sqlite3_step(statement.get()) == SQLITE_ROW &&
         qstrcmp(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)), "ok") == 0;
}

bool Same_Column(const FieldInfo& one, const FieldInfo& other) {
  return one.name.compare(other.name, Qt::CaseInsensitive) == 0 &&
         (one.type == FieldType::Text) == (other.type == FieldType::Text);
}

// Does a known table still have its columns? A damaged description can be one that SQLite takes: a comma that has
// become a blank makes one column of two.
bool Has_Its_Columns(Engine& engine, const TableDef& table) {
  for (const TableDef& known : Known_Tables()) {
    const bool named = !known.name.isEmpty();
    if (named && known.name.compare(table.name, Qt::CaseInsensitive) != 0) continue;
    const bool fewer = table.fields.size() < known.fields.size();
    const bool same = !fewer && std::equal(known.fields.begin(), known.fields.end(), table.fields.begin(), Same_Column);
    if (named && !same && page_scanner::Is_Akin(table.fields, known.fields)) return false;
    if (!named && fewer && !table.fields.empty() && Same_Column(table.fields[0], known.fields[0])) return false;
  }
  // Raises if a name cannot be read, or a column is to be sorted in a way that is not known.
  QByteArray sorted;
  for (const FieldInfo& field : table.fields) sorted += (sorted.isEmpty() ? "" : ",") + Quoted(field.name);
  if (!sorted.isEmpty()) engine.Prepare("SELECT 1 FROM " + Quoted(table.name) + " ORDER BY " + sorted);
  return true;
}

bool Has_Its_Tables(Engine& engine) {
  const std::vector<TableDef>& tables = engine.Tables();
  return std::all_of(tables.begin(), tables.end(), [&](const TableDef& it) { return Has_Its_Columns(engine, it); }) &&
         engine.Number_Of(
             "SELECT count(*) FROM sqlite_master WHERE substr(sql, 1, 12)='CREATE TABLE' AND (type<>'table' OR "
             "name<>tbl_name)") == 0;
}

struct Sound {
  std::vector<TableDef> tables;
  std::vector<RepairReport::TableRows> rows;
};
// What a file holds that SQLite takes for sound; none of a damaged one.
std::optional<Sound> Read_If_Sound(const QString& path) {
  try {
    Engine engine;
    engine.Open(path, {.lockFile = false});
    std::optional<Sound> sound;
    if (Is_Whole(engine) && Has_Its_Tables(engine)) sound = {engine.Tables(), Count_Rows(engine)};
    engine.Close();
    return sound;
  } catch (const Error& error) {
    if (error.number == errors::fileInUse) Raise(errors::databaseInUse);
    if (error.number == errors::databaseDamaged || error.number == errors::sqlSyntax ||
        error.number == errors::tableNotFound)
      return {};
    throw;
  }
}

// Rows that are wider than their table is told to be: a comma of its description has gone.
bool Has_Wider_Rows(const std::vector<TableDef>& tables, const std::vector<page_scanner::Table>& scanned) {
  return std::any_of(scanned.begin(), scanned.end(), [&](const page_scanner::Table& it) {
    const auto def =
        std::find_if(tables.begin(), tables.end(), [&](const TableDef& table) { return table.name == it.name; });
    return def != tables.end() && std::any_of(it.rows.begin(), it.rows.end(),
                                              [&](const auto& row) { return row.second.size() > def->fields.size(); });
  });
}

int Sum_Of(const std::vector<RepairReport::TableRows>& tables) {
  return std::accumulate(tables.begin(), tables.end(), 0,
                         [](int sum, const RepairReport::TableRows& it) { return sum + it.rows; });
}

// Writes what was found into a new file.
class Rebuilder {
 public:
  explicit Rebuilder(const QString& path) { engine.Open(path, {.create = true, .lockFile = false}); }

  void Write(std::vector<page_scanner::Table>& tables) {
    engine.Begin();
    for (page_scanner::Table& table : tables) {
      if (table.name.isEmpty()) table.name = Free_Name();
      if (engine.Find_Table(table.name)) continue;
      Fill(table);
    }
    engine.Commit();
    report.tables = Count_Rows(engine);
    report.rows = Sum_Of(report.tables);
    engine.Close();
  }

  RepairReport report;

 private:
  QString Free_Name() {
    QString name;
    do name = QStringLiteral("Gerettet%1").arg(nextName++);
    while (engine.Find_Table(name));
    return name;
  }

  // As it was described if it takes all its rows so, else as a plain table: no rule of it may cost a row.
  void Fill(const page_scanner::Table& table) {
    const int before = report.droppedTexts;
    if (!table.sql.isEmpty() &&
        sqlite3_exec(engine.db, table.sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK) {
      if (Insert(table)) return;
      report.droppedTexts = before;
      engine.Drop(table.name);
    }
    engine.Create({table.name, table.fields});
    Insert(table);
  }

  // False if a row was refused.
  bool Insert(const page_scanner::Table& table) {
    const int width = static_cast<int>(table.fields.size());
    QByteArray names, marks;
    for (const FieldInfo& field : table.fields) {
      names += Quoted(field.name) + ',';
      marks += "?,";
    }
    // The key comes last: it counts more than a column that is declared as one and holds nothing itself.
    const Statement owner =
        engine.Prepare("INSERT INTO " + Quoted(table.name) + " (" + names + "rowid) VALUES (" + marks + "?)");
    sqlite3_stmt* insert = owner.get();
    bool allTaken = true;
    for (const auto& [key, fields] : table.rows) {
      sqlite3_bind_int64(insert, width + 1, key);
      for (int i = 0; i < width; ++i) {
        const auto index = static_cast<size_t>(i);
        Bind(insert, i + 1, index < fields.size() ? fields[index] : page_scanner::Field());
      }
      sqlite3_step(insert);
      const int rc = sqlite3_reset(insert);
      const bool refused = (rc & 0xff) == SQLITE_CONSTRAINT || (rc & 0xff) == SQLITE_MISMATCH;
      if (rc != SQLITE_OK && !refused) engine.Fail(rc);
      allTaken = allTaken && !refused;
    }
    return allTaken;
  }

  void Bind(sqlite3_stmt* insert, int parameter, const page_scanner::Field& field) {
    if (const qint64* whole = std::get_if<qint64>(&field)) {
      sqlite3_bind_int64(insert, parameter, *whole);
    } else if (const double* real = std::get_if<double>(&field)) {
      sqlite3_bind_double(insert, parameter, *real);
    } else if (const QByteArray* text = std::get_if<QByteArray>(&field); text && Is_Text(*text)) {
      sqlite3_bind_text64(insert, parameter, text->constData(), static_cast<sqlite3_uint64>(text->size()),
                          SQLITE_STATIC, SQLITE_UTF8);
    } else {
      sqlite3_bind_null(insert, parameter);
    }
  }

  bool Is_Text(const QByteArray& bytes) {
    const bool valid = bytes.size() <= sqlite3_limit(engine.db, SQLITE_LIMIT_LENGTH, -1) / 2 &&
                       QString::fromUtf8(bytes).toUtf8() == bytes;
    if (!valid) ++report.droppedTexts;
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

int RepairReport::Rows_In(const QString& table) const {
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const TableRows& it) {
    return it.table.compare(table, Qt::CaseInsensitive) == 0;
  });
  return found == tables.end() ? 0 : found->rows;
}

void Set_Known_Tables(std::vector<TableDef> tables) { Known_Tables() = std::move(tables); }

RepairReport RepairDatabase(const QString& path) {
  const QString file = Find_File(path);
  if (file.isEmpty()) Raise(errors::databaseNotFound);
  if (database_inner::Is_Open_Here(file)) Raise(errors::databaseInUse);
  std::optional<Sound> sound = Read_If_Sound(file);
  std::vector<page_scanner::Table> tables = page_scanner::Scan(Read_With_Log(file), Known_Tables());
  if (sound && !Has_Wider_Rows(sound->tables, tables)) {
    const int rows = Sum_Of(sound->rows);
    return {.wasSound = true, .tables = std::move(sound->rows), .rows = rows, .droppedTexts = 0, .damagedCopy = {}};
  }
  if (tables.empty()) Raise(errors::databaseDamaged);
  RepairReport report;
  const database_inner::AsideDatabase aside(file);
  {
    Rebuilder rebuilder(aside.path);
    rebuilder.Write(tables);
    report = std::move(rebuilder.report);
  }
  report.damagedCopy = Name_For_Damaged(file);
  Keep_Damaged(file, report.damagedCopy);
  database_inner::Put_In_Place(aside.path, file);
  return report;
}
