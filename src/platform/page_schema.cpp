#include "platform/page_schema.h"

#include <sqlite3.h>

#include <QtEndian>
#include <algorithm>
#include <map>

#include "platform/database_inner.h"

namespace page_scanner {
namespace {

const QByteArray createTable = "CREATE TABLE";

// The same but for one byte.
bool Is_Nearly(const QByteArray& bytes, const QByteArray& wanted) {
  if (bytes.size() < wanted.size()) return false;
  int wrong = 0;
  for (qsizetype i = 0; i < wanted.size(); ++i) wrong += bytes[i] != wanted[i] ? 1 : 0;
  return wrong <= 1;
}

bool Is_Name(const QByteArray& bytes) { return !bytes.isEmpty() && QString::fromUtf8(bytes).toUtf8() == bytes; }

// A name at the start of `text`, in quotes or bare; `text` goes on behind it.
QByteArray Take_Name(QByteArray& text) {
  qsizetype at = 0;
  while (at < text.size() && static_cast<uchar>(text[at]) <= ' ') ++at;
  text = text.mid(at);
  QByteArray name;
  at = 0;
  const char first = text.isEmpty() ? '\0' : text[0];
  const char close = first == '[' ? ']' : first;
  if (first == '"' || first == '\'' || first == '`' || first == '[') {
    for (at = 1; at < text.size(); ++at) {
      if (text[at] != close) {
        name += text[at];
      } else if (at + 1 < text.size() && text[at + 1] == close) {
        name += text[at++];
      } else {
        ++at;
        break;
      }
    }
  } else {
    while (at < text.size() && text[at] != ' ' && text[at] != '(' && text[at] != ',' && text[at] != ')') ++at;
    name = text.left(at);
  }
  text = text.mid(at);
  return name;
}

// The declarations between the outermost brackets, one a column.
std::vector<QByteArray> Declarations(const QByteArray& sql) {
  std::vector<QByteArray> pieces;
  const qsizetype open = sql.indexOf('(');
  if (open < 0) return pieces;
  QByteArray piece;
  int depth = 0;
  char quote = '\0';
  for (qsizetype at = open + 1; at < sql.size() && depth >= 0; ++at) {
    const char letter = sql[at];
    if (quote == '\0' && letter == ',' && depth == 0) {
      pieces.push_back(piece);
      piece.clear();
      continue;
    }
    if (quote != '\0') {
      if (letter == quote) quote = '\0';
    } else if (letter == '"' || letter == '\'') {
      quote = letter;
    } else {
      depth += letter == '(' ? 1 : letter == ')' ? -1 : 0;
    }
    if (depth >= 0) piece += letter;
  }
  pieces.push_back(piece);
  return pieces;
}

// Damage in one declaration leaves the others readable.
std::vector<FieldInfo> Rough_Fields(const QByteArray& sql) {
  std::vector<FieldInfo> fields;
  for (QByteArray piece : Declarations(sql)) {
    const QString name = QString::fromUtf8(Take_Name(piece));
    fields.push_back(database_inner::Field_Of_Declaration(name, QString::fromUtf8(piece)));
  }
  return fields;
}

// Lets SQLite read the statement. Nothing but the making of a table is allowed: it could hold an endless Select.
std::vector<FieldInfo> Exact_Fields(const QByteArray& sql, const QString& name) {
  std::vector<FieldInfo> fields;
  sqlite3* db = nullptr;
  const auto allow = [](void*, int action, const char*, const char*, const char*, const char*) {
    return action == SQLITE_SELECT || action == SQLITE_CREATE_VTABLE ? SQLITE_DENY : SQLITE_OK;
  };
  if (sqlite3_open(":memory:", &db) == SQLITE_OK && !sql.contains(';') &&
      sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr) == SQLITE_OK &&
      sqlite3_set_authorizer(db, allow, nullptr) == SQLITE_OK &&
      sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK) {
    sqlite3_set_authorizer(db, nullptr, nullptr);
    fields = database_inner::Read_Fields(db, name);
    // A name that is no valid text cannot be asked for.
    QByteArray names;
    for (const FieldInfo& field : fields) names += (names.isEmpty() ? "" : ",") + database_inner::Quoted(field.name);
    const QByteArray select = "SELECT " + names + " FROM " + database_inner::Quoted(name);
    if (sqlite3_exec(db, select.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) fields.clear();
  }
  sqlite3_close(db);
  return fields;
}

bool Same_Name(const FieldInfo& one, const FieldInfo& other) {
  return one.name.compare(other.name, Qt::CaseInsensitive) == 0;
}
bool Same_Column(const FieldInfo& one, const FieldInfo& other) {
  return Same_Name(one, other) && (one.type == FieldType::Text) == (other.type == FieldType::Text);
}
bool Begins_With(const std::vector<FieldInfo>& fields, const std::vector<FieldInfo>& wanted) {
  return fields.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), fields.begin(), Same_Column);
}

// The known columns, then those that were added: in the description they stand behind the last known one that can
// still be read there.
std::vector<FieldInfo> With_Added(const std::vector<FieldInfo>& known, const std::vector<FieldInfo>& rough) {
  std::vector<FieldInfo> fields = known;
  for (size_t last = known.size(); last > 0; --last) {
    const auto found =
        std::find_if(rough.begin(), rough.end(), [&](const FieldInfo& it) { return Same_Name(it, known[last - 1]); });
    if (found == rough.end()) continue;
    for (size_t i = static_cast<size_t>(found - rough.begin()) + 1 + known.size() - last; i < rough.size(); ++i)
      fields.push_back(rough[i]);
    break;
  }
  return fields;
}

// No name twice and none that is empty or unreadable.
void Put_Names_Right(std::vector<FieldInfo>& fields) {
  for (size_t i = 0; i < fields.size(); ++i) {
    const auto taken = [&](const FieldInfo& other) { return Same_Name(other, fields[i]); };
    const QString& name = fields[i].name;
    const bool readable = !name.isEmpty() && std::none_of(name.begin(), name.end(), [](QChar letter) {
      return letter < u' ' || letter == QChar::ReplacementCharacter;
    });
    if (!readable || std::any_of(fields.begin(), fields.begin() + static_cast<qsizetype>(i), taken))
      fields[i].name = QStringLiteral("Spalte%1").arg(i + 1);
  }
}

// The page number that stands before the statement, behind the table's name.
int Root_Before(const QByteArray& page, qsizetype statement, const QByteArray& name) {
  for (qsizetype bytes = 1; bytes <= 4 && bytes + name.size() <= statement; ++bytes) {
    if (page.mid(statement - bytes - name.size(), name.size()) != name) continue;
    quint32 root = 0;
    for (qsizetype i = statement - bytes; i < statement; ++i) root = root << 8 | static_cast<uchar>(page[i]);
    return static_cast<int>(std::min<quint32>(root, 1 << 30));
  }
  return 0;
}

}  // namespace

std::optional<Described> Read_Description(const Fields& row) {
  if (row.size() != 5) return {};
  const auto text = [&row](size_t i) {
    const auto* bytes = std::get_if<QByteArray>(&row[i]);
    return bytes ? *bytes : QByteArray();
  };
  const QByteArray kind = text(0), name = text(1), ofTable = text(2), sql = text(4);
  const int reasons = (kind.size() == 5 && Is_Nearly(kind, "table") ? 1 : 0) + (Is_Nearly(sql, createTable) ? 1 : 0) +
                      (!name.isEmpty() && name == ofTable ? 1 : 0);
  if (reasons < 2 || !sql.contains('(') || sql.startsWith("CREATE VIRTUAL")) return {};
  // The name stands there three times.
  QByteArray rest = sql.mid(createTable.size());
  const QByteArray inSql = Take_Name(rest);
  const QByteArray& chosen = name == ofTable || name == inSql ? name : ofTable == inSql ? ofTable : inSql;
  if (!Is_Name(chosen) || chosen.startsWith("sqlite_")) return {};
  const auto* root = std::get_if<qint64>(&row[3]);
  const bool sound = root && *root > 1 && *root < 1 << 30;
  return Described{QString::fromUtf8(chosen), sound ? static_cast<int>(*root) : 0, sql};
}

std::vector<Described> Find_Descriptions(const QByteArray& page) {
  std::vector<Described> found;
  for (qsizetype at = 0; (at = page.indexOf(createTable, at)) >= 0; at += createTable.size()) {
    QByteArray rest = page.mid(at + createTable.size());
    const QByteArray name = Take_Name(rest);
    if (!Is_Name(name) || name.startsWith("sqlite_")) continue;
    // The statement ends with its bracket; what follows are the bytes of another row.
    int depth = 0;
    qsizetype end = page.indexOf('(', at);
    while (end >= 0 && end < page.size()) {
      depth += page[end] == '(' ? 1 : page[end] == ')' ? -1 : 0;
      ++end;
      if (depth == 0) break;
    }
    if (end > at) found.push_back({QString::fromUtf8(name), Root_Before(page, at, name), page.mid(at, end - at)});
  }
  return found;
}

bool Is_Akin(const std::vector<FieldInfo>& fields, const std::vector<FieldInfo>& known) {
  const auto there = std::count_if(known.begin(), known.end(), [&](const FieldInfo& field) {
    return std::any_of(fields.begin(), fields.end(), [&](const FieldInfo& it) { return Same_Name(it, field); });
  });
  const size_t lost = known.size() - static_cast<size_t>(there);
  return lost <= std::max<size_t>(1, known.size() / 4);
}

Columns Columns_Of(const Described& table, size_t width, const TableDef* def, const std::vector<TableDef>& alike) {
  Columns columns;
  columns.fields = Exact_Fields(table.sql, table.name);
  columns.asDescribed = !columns.fields.empty() && columns.fields.size() >= width;
  const std::vector<FieldInfo> rough = Rough_Fields(table.sql);
  if (def) {
    const bool foreign = !Is_Akin(columns.fields, def->fields);
    if (columns.asDescribed && (foreign || Begins_With(columns.fields, def->fields))) return columns;
    columns = {With_Added(def->fields, rough), false};
  } else {
    // A name that one of its columns still bears tells that it is one of those without a name.
    for (const TableDef& other : alike) {
      if (!other.name.isEmpty() || other.fields.size() < width || Begins_With(columns.fields, other.fields)) continue;
      if (Is_Akin(rough, other.fields) && rough.size() <= other.fields.size()) columns = {other.fields, false};
    }
    if (!columns.asDescribed && columns.fields.size() < width && rough.size() >= width) columns.fields = rough;
  }
  if (!columns.asDescribed) Put_Names_Right(columns.fields);
  return columns;
}

}  // namespace page_scanner
