#include <sqlite3.h>

#include "platform/database_inner.h"

namespace database_inner {

QByteArray Quoted(const QString& name) {
  QByteArray text = name.toUtf8();
  text.replace("\"", "\"\"");
  return '"' + text + '"';
}

QByteArray Declaration_Of(const FieldInfo& field) {
  switch (field.type) {
    case FieldType::Integer:
      return "INTEGER";
    case FieldType::Long:
      return "LONGINT";
    case FieldType::Double:
      return "REAL";
    case FieldType::Text:
      break;
  }
  const QByteArray width = field.size > 0 ? "VARCHAR(" + QByteArray::number(field.size) + ')' : QByteArray("TEXT");
  return width + " COLLATE NOCASE";
}

FieldInfo Field_Of_Declaration(const QString& name, const QString& declared) {
  const QString type = declared.toUpper();
  const auto has = [&type](const char* part) { return type.contains(QLatin1String(part)); };
  FieldInfo field{name, FieldType::Text, 0};
  if (has("CHAR") || has("TEXT") || has("CLOB")) {
    const qsizetype open = type.indexOf(QLatin1Char('('));
    if (open >= 0) field.size = type.mid(open + 1, type.indexOf(QLatin1Char(')'), open) - open - 1).toInt();
  } else if (has("LONG") || has("BIG") || has("INT32") || has("INT64")) {
    field.type = FieldType::Long;
  } else if (has("INT") || has("BOOL")) {
    field.type = FieldType::Integer;
  } else if (has("REAL") || has("FLOA") || has("DOUB") || has("NUM") || has("DEC")) {
    field.type = FieldType::Double;
  }
  return field;
}

QByteArray Create_Statement(const TableDef& table) {
  QByteArray sql = "CREATE TABLE " + Quoted(table.name) + " (";
  for (size_t i = 0; i < table.fields.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += Quoted(table.fields[i].name) + ' ' + Declaration_Of(table.fields[i]);
  }
  return sql + ')';
}

std::vector<FieldInfo> Read_Fields(sqlite3* db, const QString& table) {
  std::vector<FieldInfo> fields;
  sqlite3_stmt* statement = nullptr;
  const QByteArray sql = "PRAGMA table_info(" + Quoted(table) + ')';
  if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) != SQLITE_OK) return fields;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    const auto text = [statement](int column) {
      return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
    };
    fields.push_back(Field_Of_Declaration(text(1), text(2)));
  }
  sqlite3_finalize(statement);
  return fields;
}

qint64 Engine::Schema_Version() {
  if (!schemaStatement) schemaStatement = Prepare_Lasting("PRAGMA schema_version");
  const int rc = sqlite3_step(schemaStatement);
  const qint64 version = rc == SQLITE_ROW ? sqlite3_column_int64(schemaStatement, 0) : -1;
  sqlite3_reset(schemaStatement);
  return version;
}

const std::vector<TableDef>& Engine::Tables() {
  Need_Open();
  const qint64 version = Schema_Version();
  if (version != knownSchema) {
    Read_Tables();
    knownSchema = version;
  }
  return tables;
}

void Engine::Read_Tables() {
  std::vector<TableDef> found;
  // A table without pages of its own is a virtual one of another program.
  const Statement statement = Prepare(
      "SELECT name FROM sqlite_master WHERE type='table' AND rootpage>0 AND substr(name, 1, 7) <> 'sqlite_' "
      "ORDER BY rowid");
  int rc;
  while ((rc = sqlite3_step(statement.get())) == SQLITE_ROW)
    found.push_back({QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))), {}});
  if (rc != SQLITE_DONE) Fail(rc);
  for (TableDef& table : found) table.fields = Read_Fields(db, table.name);
  tables = std::move(found);
  Index_Tables();
}

void Engine::Index_Tables() {
  tableIndex.clear();
  for (size_t i = 0; i < tables.size(); ++i) tableIndex.insert(Fold(tables[i].name), static_cast<int>(i));
}

const TableDef* Engine::Find_Table(const QString& name) {
  Tables();
  const auto found = tableIndex.constFind(Fold(name));
  return found == tableIndex.constEnd() ? nullptr : &tables[static_cast<size_t>(*found)];
}

void Engine::Create(const TableDef& table) {
  if (Find_Table(table.name))
    Raise(errors::tableExists, QStringLiteral("Die Tabelle '%1' ist bereits vorhanden.").arg(table.name));
  if (table.fields.empty())
    Raise(errors::sqlSyntax, QStringLiteral("Die Tabelle '%1' hat keine Felder.").arg(table.name));
  Need_Write();
  Count_Write(State_Of(table.name));
  ++otherChanges;
  Write([&] {
    Run(Create_Statement(table).constData());
    if (recorder) recorder->Created(table);
  });
  // A thousand small tables come one after the other: the list is carried on, not read anew.
  tables.push_back({table.name, Read_Fields(db, table.name)});
  tableIndex.insert(Fold(table.name), static_cast<int>(tables.size()) - 1);
  knownSchema = Schema_Version();
}

const TableDef* Engine::Table_As_Known(const QString& name) const {
  const auto found = tableIndex.constFind(Fold(name));
  return found == tableIndex.constEnd() ? nullptr : &tables[static_cast<size_t>(*found)];
}

void Engine::Drop(const QString& name) { Drop_All({name}); }

// The list of tables is put right once, not after each of them.
void Engine::Drop_All(const QStringList& names) {
  Tables();
  QByteArray sql;
  QSet<QString> gone;
  for (const QString& name : names) {
    const TableDef* table = Table_As_Known(name);
    if (!table) Raise(errors::tableNotFound);
    sql += "DROP TABLE " + Quoted(table->name) + ';';
    gone.insert(Fold(name));
  }
  if (gone.isEmpty()) return;
  Need_Write();
  for (const QString& name : names) Count_Write(State_Of(name));
  ++otherChanges;
  Write([&] {
    for (const QString& name : names)
      if (recorder) recorder->Dropping(*Table_As_Known(name));
    Run(sql.constData());
  });
  accountedChanges = sqlite3_total_changes64(db);
  std::erase_if(tables, [&gone](const TableDef& table) { return gone.contains(Fold(table.name)); });
  Index_Tables();
  knownSchema = Schema_Version();
}

void Engine::Alter(const QString& table, const QByteArray& change) {
  Need_Write();
  Count_Write(State_Of(table));
  ++otherChanges;
  knownSchema = -1;
  Run(QByteArray("ALTER TABLE " + Quoted(table) + ' ' + change).constData());
  accountedChanges = sqlite3_total_changes64(db);
}

}  // namespace database_inner
