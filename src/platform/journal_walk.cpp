#include <algorithm>
#include <optional>
#include <utility>

#include "platform/files.h"
#include "platform/journal_inner.h"

// Going back and forth in a journal.

using database_inner::Engine;
using database_inner::Quoted;

namespace journal_inner {

void Raise_Data_Changed() {
  Raise(errors::dataChanged,
        QStringLiteral("Die Tabelle wurde außerhalb des Verlaufs verändert: Dieser Schritt passt nicht mehr zu ihr."));
}

Player::Player(Engine& it, Way way, const QString& main, WalkResult& touched, ChangeWriter* inverse)
    : engine(it), back(way == Way::Back), mainTable(main), result(touched), echo(inverse) {}

Player::~Player() {
  for (sqlite3_stmt* statement : std::as_const(statements)) sqlite3_finalize(statement);
}

sqlite3_stmt* Player::Prepared(const QByteArray& sql) {
  sqlite3_stmt*& statement = statements[sql];
  if (!statement) {
    const int rc = sqlite3_prepare_v2(engine.db, sql.constData(), -1, &statement, nullptr);
    if (rc != SQLITE_OK) Raise_Data_Changed();  // a table or column is not there
  }
  return statement;
}

// One row, no more and no less.
void Player::Run(sqlite3_stmt* statement) {
  sqlite3_step(statement);
  const int rc = sqlite3_reset(statement);
  if ((rc & 0xff) == SQLITE_CONSTRAINT) Raise_Data_Changed();
  if (rc != SQLITE_OK) engine.Fail(rc);
  if (sqlite3_changes64(engine.db) != 1) Raise_Data_Changed();
}

void Player::Play(const QByteArray& list) {
  const ChangeReader reader(list);
  StoredChange change;
  const qsizetype count = reader.Count();
  for (qsizetype i = 0; i < count; ++i) {
    reader.Read(back ? count - 1 - i : i, change);
    Play_One(reader, change);
    if (echo) Echo(reader, change);
  }
}

namespace {
ChangeKind Inverse(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::Insert:
      return ChangeKind::Delete;
    case ChangeKind::Delete:
      return ChangeKind::Insert;
    case ChangeKind::MakeTable:
      return ChangeKind::DropTable;
    case ChangeKind::DropTable:
      return ChangeKind::MakeTable;
    case ChangeKind::AddColumn:
      return ChangeKind::RemoveColumn;
    case ChangeKind::RemoveColumn:
      return ChangeKind::AddColumn;
    case ChangeKind::Update:
    case ChangeKind::Names:
      break;
  }
  return kind;
}
}  // namespace

// What was taken back, written as something done.
void Player::Echo(const ChangeReader& list, const StoredChange& change) {
  const ChangeKind kind = Inverse(change.kind);
  const auto number = [&] {
    const TableNames& names = list.Names(change.table);
    std::vector<QByteArray> columns;
    for (const QString& column : names.columns) columns.push_back(column.toUtf8());
    return echo->Number_Of(names.table.toUtf8(), columns);
  };
  switch (kind) {
    case ChangeKind::Insert:
    case ChangeKind::Delete: {
      std::vector<RawValue> values;
      for (const ChangedCell& cell : change.cells) values.push_back(cell.before);
      return echo->Row(kind, number(), change.key, values);
    }
    case ChangeKind::Update: {
      std::vector<ChangedCell> cells = change.cells;
      for (ChangedCell& cell : cells) std::swap(cell.before, cell.after);
      return echo->Update(number(), change.newKey, change.key, cells);
    }
    case ChangeKind::MakeTable:
    case ChangeKind::DropTable:
      return echo->Table(kind, change.name, change.statement);
    case ChangeKind::AddColumn:
    case ChangeKind::RemoveColumn:
      return echo->Column(kind, change.name, change.column, change.place);
    case ChangeKind::Names:
      return;
  }
}

void Player::Play_One(const ChangeReader& list, const StoredChange& change) {
  switch (change.kind) {
    case ChangeKind::Insert:
      return back ? Delete(list.Names(change.table), change) : Insert(list.Names(change.table), change);
    case ChangeKind::Delete:
      return back ? Insert(list.Names(change.table), change) : Delete(list.Names(change.table), change);
    case ChangeKind::Update:
      return Update(list.Names(change.table), change);
    case ChangeKind::MakeTable:
      return back ? Drop(change) : Make(change);
    case ChangeKind::DropTable:
      return back ? Make(change) : Drop(change);
    case ChangeKind::AddColumn:
      return back ? Remove_Column(change) : Add_Column(change);
    case ChangeKind::RemoveColumn:
      return back ? Add_Column(change) : Remove_Column(change);
    case ChangeKind::Names:
      return;
  }
}

void Player::Touch(const TableNames& table, const StoredChange& change, bool there) {
  constexpr size_t few = 200;
  if (table.table.compare(mainTable, Qt::CaseInsensitive) != 0) {
    if (result.tables.size() < static_cast<qsizetype>(few) &&
        (result.tables.isEmpty() || result.tables.back() != table.table))
      result.tables += table.table;
    return;
  }
  if (result.rows.size() >= few) return;
  TouchedRow row{back ? change.key : change.newKey, there, {}};
  for (const ChangedCell& cell : change.cells)
    if (!there) row.lastSeen.emplace_back(table.columns[cell.column], cell.before.ToValue());
  if (!result.rows.empty() && result.rows.back().key == row.key)
    result.rows.back() = std::move(row);  // by another transaction of the step
  else
    result.rows.push_back(std::move(row));
}

void Player::Insert(const TableNames& table, const StoredChange& change) {
  QByteArray names, marks;
  for (const QString& column : table.columns) {
    names += Quoted(column) + ',';
    marks += "?,";
  }
  sqlite3_stmt* statement =
      Prepared("INSERT INTO " + Quoted(table.table) + " (" + names + "rowid) VALUES (" + marks + "?)");
  int parameter = 0;
  for (const ChangedCell& cell : change.cells) Bind_Raw(statement, ++parameter, cell.before);
  sqlite3_bind_int64(statement, ++parameter, change.key);
  Run(statement);
  keysChanged = true;
  Touch(table, change, true);
}

void Player::Delete(const TableNames& table, const StoredChange& change) {
  sqlite3_stmt* statement = Prepared("DELETE FROM " + Quoted(table.table) + " WHERE rowid=?");
  sqlite3_bind_int64(statement, 1, change.key);
  Run(statement);
  keysChanged = true;
  Touch(table, change, false);
}

// The former values are asked for: a row that somebody else has changed is not overwritten.
void Player::Update(const TableNames& table, const StoredChange& change) {
  QByteArray set, where;
  for (const ChangedCell& cell : change.cells) {
    const QByteArray column = Quoted(table.columns[cell.column]);
    set += column + "=?,";
    where += " AND " + column + " IS ? COLLATE BINARY";
  }
  sqlite3_stmt* statement = Prepared("UPDATE " + Quoted(table.table) + " SET " + set + "rowid=? WHERE rowid=?" + where);
  const int count = static_cast<int>(change.cells.size());
  for (int i = 0; i < count; ++i) {
    const ChangedCell& cell = change.cells[static_cast<size_t>(i)];
    Bind_Raw(statement, i + 1, back ? cell.before : cell.after);
    Bind_Raw(statement, count + 3 + i, back ? cell.after : cell.before);
  }
  const qint64 from = back ? change.newKey : change.key, to = back ? change.key : change.newKey;
  sqlite3_bind_int64(statement, count + 1, to);
  sqlite3_bind_int64(statement, count + 2, from);
  Run(statement);
  if (from != to)
    keysChanged = true;
  else
    updatedRows[table.table].push_back(to);
  Touch(table, change, true);
}

void Player::Make(const StoredChange& change) {
  keysChanged = true;
  engine.Run(change.statement.toUtf8().constData());
  result.columnsChanged |= change.name.compare(mainTable, Qt::CaseInsensitive) == 0;
}

void Player::Drop(const StoredChange& change) {
  keysChanged = true;
  engine.Run(("DROP TABLE " + Quoted(change.name)).constData());
  result.columnsChanged |= change.name.compare(mainTable, Qt::CaseInsensitive) == 0;
}

// SQLite adds at the end alone: for any other place the table is made anew.
void Player::Add_Column(const StoredChange& change) {
  result.columnsChanged = keysChanged = true;
  TableDef table{change.name, database_inner::Read_Fields(engine.db, change.name)};
  const auto place = static_cast<size_t>(change.place);
  if (place > table.fields.size()) Raise_Data_Changed();
  if (place == table.fields.size()) {
    engine.Run(("ALTER TABLE " + Quoted(change.name) + " ADD COLUMN " + Quoted(change.column.name) + ' ' +
                database_inner::Declaration_Of(change.column))
                   .constData());
    return;
  }
  QByteArray columns;
  for (const FieldInfo& field : table.fields) columns += Quoted(field.name) + ',';
  table.fields.insert(table.fields.begin() + change.place, change.column);
  table.name += QStringLiteral(" neu");
  const QByteArray aside = Quoted(table.name), name = Quoted(change.name);
  engine.Run(database_inner::Create_Statement(table).constData());
  engine.Run(("INSERT INTO " + aside + " (" + columns + "rowid) SELECT " + columns + "rowid FROM " + name +
              " ORDER BY rowid; DROP TABLE " + name + "; ALTER TABLE " + aside + " RENAME TO " + name)
                 .constData());
}

void Player::Remove_Column(const StoredChange& change) {
  result.columnsChanged = keysChanged = true;
  engine.Run(("ALTER TABLE " + Quoted(change.name) + " DROP COLUMN " + Quoted(change.column.name)).constData());
}

}  // namespace journal_inner

using journal_inner::Player;

namespace {

// What was touched counts for the last step alone: there is where the user looks.
void Cross(quint64 step, std::optional<quint64>& former, WalkResult& result) {
  if (former == step) return;
  former = step;
  ++result.steps;
  result.rows.clear();
  result.tables.clear();
}

}  // namespace

// The records between the two states are played in one transaction, which stores the state's number as well.
WalkResult Journal::Inner::Walk(int from, int to, quint32 state) {
  WalkResult result;
  std::optional<quint64> crossed;
  const bool isBack = to < from;
  bool keysChanged = false;
  QHash<QString, std::vector<qint64>> updated;
  struct Quiet {
    bool& it;
    ~Quiet() { it = false; }
  } const scope{quiet};
  quiet = true;
  engine->Begin();
  try {
    while (from != to) {
      const int record = isBack ? --from : from++;
      const JournalRecord& it = file.Records()[static_cast<size_t>(record)];
      Cross(it.step, crossed, result);
      std::vector<QByteArray> lists = file.Changes(static_cast<size_t>(record));
      if (isBack) std::reverse(lists.begin(), lists.end());
      Player player(*engine, isBack ? Player::Way::Back : Player::Way::Forwards, mainTable, result);
      for (const QByteArray& changes : lists) player.Play(changes);
      keysChanged |= player.keysChanged;
      for (auto table = player.updatedRows.begin(); table != player.updatedRows.end(); ++table) {
        auto& all = updated[table.key()];
        all.insert(all.end(), table->begin(), table->end());
      }
      if (const QString& context = isBack ? it.contextBefore : it.contextAfter; !context.isEmpty())
        result.context = context;
    }
    Put_State(state);
    engine->Commit();
  } catch (...) {
    if (engine->depth > 0) engine->Roll_Back();
    throw;
  }
  storedNumber = 0;
  tables.clear();
  constexpr size_t fewRows = 1000;
  size_t rowsUpdated = 0;
  for (const auto& table : std::as_const(updated)) rowsUpdated += table.size();
  if (keysChanged || result.columnsChanged || rowsUpdated > fewRows)
    engine->Everything_Changed();
  else
    engine->Walked(updated);
  return result;
}

WalkResult Journal::Walk_To(int position) {
  Inner& self = *inner;
  if (!Follows() || self.engine->depth > 0 || position < 0 || position > Count()) Raise(5);
  const int target = self.Records_Of(position);
  if (target == self.records) return {};
  WalkResult result = self.Walk(self.records, target, self.State_After(target));
  self.records = target;
  return result;
}

// The way back becomes a list of its own.
void Journal::Inner::Play_Back(size_t record, WalkResult& result) {
  struct Quiet {
    bool& it;
    ~Quiet() { it = false; }
  } const scope{quiet};
  quiet = true;
  std::vector<QByteArray> lists = file.Changes(record);
  std::reverse(lists.begin(), lists.end());
  Player player(*engine, Player::Way::Back, mainTable, result, &writer);
  for (const QByteArray& changes : lists) player.Play(changes);
  rows += file.Records()[record].rows;
}

WalkResult Journal::Step_Back_To(int position, const QString& name) {
  Inner& self = *inner;
  if (!Follows() || self.engine->depth > 0 || position < 0 || position > Position()) Raise(5);
  const int target = self.Records_Of(position);
  WalkResult result;
  std::optional<quint64> crossed;
  const Inner::OwnStep own(self, name);
  self.engine->Begin();
  try {
    for (int record = self.records; record-- > target;) {
      const JournalRecord& it = self.file.Records()[static_cast<size_t>(record)];
      Cross(it.step, crossed, result);
      if (!it.contextBefore.isEmpty()) {
        if (self.contextBefore.isEmpty()) self.contextBefore = it.contextAfter;
        self.contextAfter = it.contextBefore;
      }
      self.Play_Back(static_cast<size_t>(record), result);
    }
    result.context = self.contextAfter;
    self.engine->Commit();
  } catch (...) {
    if (self.engine->depth > 0) self.engine->Roll_Back();
    throw;
  }
  self.tables.clear();
  self.engine->Everything_Changed();
  return result;
}

int Journal::Inner::Record_Of(quint32 state) const {
  for (int record = records; record > 0; --record)
    if (State_After(record) == state) return record;
  return state == State_After(0) || state == file.Found_State() ? 0 : -1;
}

bool Journal::Reaches(quint32 state) const { return Follows() && inner->Record_Of(state) >= 0; }

bool Journal::Lies_Behind(quint32 state, int step) const { return inner->Record_Of(state) > inner->Records_Of(step); }

void Journal::Bring_Back(Database& copy, quint32 state) const {
  const Inner& self = *inner;
  Engine& engine = *copy.inner->engine;
  const int from = self.Record_Of(State_Of(copy)), to = self.Record_Of(state);
  if (to < 0 || from < to) journal_inner::Raise_Data_Changed();
  if (from == to) return;
  WalkResult touched;
  engine.Begin();
  try {
    for (int record = from; record-- > to;) {
      std::vector<QByteArray> lists = self.file.Changes(static_cast<size_t>(record));
      std::reverse(lists.begin(), lists.end());
      Player player(engine, Player::Way::Back, self.mainTable, touched);
      for (const QByteArray& changes : lists) player.Play(changes);
    }
    engine.Put_Number(state);
    engine.Commit();
  } catch (...) {
    if (engine.depth > 0) engine.Roll_Back();
    throw;
  }
}
