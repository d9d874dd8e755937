#include <algorithm>

#include "platform/journal_inner.h"

// What lies between two databases, as a list of changes: a table file that was replaced as a whole becomes a step.

using database_inner::Engine;
using database_inner::Quoted;

namespace journal_inner {

std::vector<QByteArray> Column_Names(const TableDef& table) {
  std::vector<QByteArray> names;
  names.reserve(table.fields.size());
  for (const FieldInfo& field : table.fields) names.push_back(field.name.toUtf8());
  return names;
}

QString Statement_Of_Table(Engine& engine, const QString& table) {
  const auto statement = engine.Prepare("SELECT sql FROM sqlite_master WHERE type='table' AND name=?1");
  const QByteArray name = table.toUtf8();
  sqlite3_bind_text(statement.get(), 1, name.constData(), static_cast<int>(name.size()), SQLITE_STATIC);
  if (sqlite3_step(statement.get()) != SQLITE_ROW) return {};
  return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
}

namespace {

// The rows of a table in the order of their keys.
class Rows {
 public:
  Rows(Engine& it, const TableDef& table) : engine(it), width(static_cast<int>(table.fields.size())) {
    QByteArray columns;
    for (const FieldInfo& field : table.fields) columns += ',' + Quoted(field.name);
    statement = engine.Prepare("SELECT rowid" + columns + " FROM " + Quoted(table.name) + " ORDER BY rowid");
    Next();
  }
  bool There() const { return there; }
  qint64 Key() const { return sqlite3_column_int64(statement.get(), 0); }
  std::vector<RawValue> Values() const {
    std::vector<RawValue> values;
    for (int column = 0; column < width; ++column) values.push_back(Raw_Of(statement.get(), column + 1));
    return values;
  }
  void Next() {
    const int rc = sqlite3_step(statement.get());
    there = rc == SQLITE_ROW;
    if (!there && rc != SQLITE_DONE) engine.Fail(rc);
  }

 private:
  Engine& engine;
  int width;
  database_inner::Statement statement;
  bool there = false;
};

// The row both stand on; true if it differs. Where the key was another row's before, with columns left out in one of
// the two alone, that one goes and this one comes: an update would ask for what stands there when it is taken back.
bool Write_Changed_Row(const Rows& left, const Rows& right, const TableDef& table, ChangeWriter& writer,
                       const LeftOut& leftOut) {
  const auto former = left.Values(), values = right.Values();
  const bool out = leftOut.has(table, former), another = out != leftOut.has(table, values);
  std::vector<ChangedCell> cells;
  for (size_t column = 0; column < values.size(); ++column)
    if (former[column] != values[column] && !(out && leftOut.columns.contains(table.fields[column].name)))
      cells.push_back({static_cast<int>(column), former[column], values[column]});
  if (!another && cells.empty()) return false;
  const int number = writer.Number_Of(ChangeWriter::Names(table.name.toUtf8(), Column_Names(table)));
  if (another) {
    writer.Row(ChangeKind::Delete, number, left.Key(), former);
    writer.Row(ChangeKind::Insert, number, left.Key(), values);
  } else {
    writer.Update(number, left.Key(), left.Key(), cells);
  }
  return true;
}

int Write_Row_Differences(Engine& before, Engine& now, const TableDef& table, ChangeWriter& writer,
                          const LeftOut& leftOut) {
  const QByteArray names = ChangeWriter::Names(table.name.toUtf8(), Column_Names(table));
  int changed = 0;
  Rows left(before, table), right(now, table);
  while (left.There() || right.There()) {
    const bool gone = left.There() && (!right.There() || left.Key() < right.Key());
    const bool came = right.There() && (!left.There() || right.Key() < left.Key());
    if (gone) {
      writer.Row(ChangeKind::Delete, writer.Number_Of(names), left.Key(), left.Values());
      ++changed;
    } else if (came) {
      writer.Row(ChangeKind::Insert, writer.Number_Of(names), right.Key(), right.Values());
      ++changed;
    } else {
      changed += Write_Changed_Row(left, right, table, writer, leftOut) ? 1 : 0;
    }
    if (!came) left.Next();
    if (!gone) right.Next();
  }
  return changed;
}

}  // namespace

int Write_All_Rows(Engine& engine, const TableDef& table, ChangeKind kind, ChangeWriter& writer) {
  const QByteArray names = ChangeWriter::Names(table.name.toUtf8(), Column_Names(table));
  int count = 0;
  for (Rows rows(engine, table); rows.There(); rows.Next(), ++count)
    writer.Row(kind, writer.Number_Of(names), rows.Key(), rows.Values());
  return count;
}

void Write_Difference(Engine& before, Engine& now, ChangeWriter& writer, int& rows, const LeftOut& leftOut) {
  // Copies: asking one database for its tables may read them anew.
  const std::vector<TableDef> former = before.Tables(), present = now.Tables();
  const auto same = [](const std::vector<TableDef>& tables, const TableDef& table) {
    return std::find(tables.begin(), tables.end(), table) != tables.end();
  };
  for (const TableDef& table : former)
    if (!same(present, table)) {
      rows += Write_All_Rows(before, table, ChangeKind::Delete, writer);
      writer.Table(ChangeKind::DropTable, table.name, Statement_Of_Table(before, table.name));
    }
  for (const TableDef& table : present) {
    if (same(former, table)) {
      rows += Write_Row_Differences(before, now, table, writer, leftOut);
    } else {
      writer.Table(ChangeKind::MakeTable, table.name, Statement_Of_Table(now, table.name));
      rows += Write_All_Rows(now, table, ChangeKind::Insert, writer);
    }
  }
}

}  // namespace journal_inner

void Journal::Add_Difference(Database& former, const QString& name, const QString& contextBefore,
                             const QString& contextAfter) {
  Inner& self = *inner;
  if (!Follows() || self.engine->depth > 0) Raise(5);
  Engine& before = *former.inner->engine;
  const auto state = State_Of(former);
  int found = static_cast<int>(self.file.Records().size());
  while (found >= 0 && self.State_After(found) != state) --found;
  if (found < 0 && self.file.Records().empty() && state == self.file.Found_State()) found = 0;
  if (found < 0) return Begin_Anew();
  self.records = found;
  self.Index_Steps();
  const Inner::OwnStep own(self, name);
  self.contextBefore = contextBefore;
  self.contextAfter = contextAfter;
  // What is no step does not change with one either: going back would ask for values that have gone on since.
  const journal_inner::LeftOut leftOut{[&self](const TableDef& table, const std::vector<RawValue>& row) {
                                         return table.name.compare(self.mainTable, Qt::CaseInsensitive) == 0 &&
                                                self.Has_Left_Out(row);
                                       },
                                       self.leftOut};
  self.engine->Begin();
  try {
    journal_inner::Write_Difference(before, *self.engine, self.writer, self.rows, leftOut);
    if (self.writer.Is_Empty()) self.Put_State(state);  // the same rows are the same state
    self.engine->Commit();
  } catch (...) {
    if (self.engine->depth > 0) self.engine->Roll_Back();
    throw;
  }
}
