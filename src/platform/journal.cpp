// SQLite tells of rows before they change only where it is asked for the declarations.
#define SQLITE_ENABLE_PREUPDATE_HOOK

#include "platform/journal.h"

#include <QDateTime>
#include <QRandomGenerator>
#include <algorithm>

#include "platform/journal_inner.h"

using namespace journal_inner;
using database_inner::Engine;

namespace {

// Stands in the head of the file, goes with every copy of it and is stored together with the rows.
quint32 State_In(Engine& engine) { return static_cast<quint32>(engine.Number_Of("PRAGMA application_id")); }

quint32 New_State() {
  for (;;)
    if (const quint32 state = QRandomGenerator::global()->generate(); state != 0) return state;
}

}  // namespace

Journal::Journal(const QString& file, const QString& mainTable) : inner(std::make_unique<Inner>(file, mainTable)) {}
Journal::~Journal() { Leave(); }

void Journal::Set_Namer(std::function<QString(const QString&, const StepFacts&)> namer) {
  inner->namer = std::move(namer);
}

void Journal::Set_Running(std::function<RunningStep()> running) { inner->asked = std::move(running); }

void Journal::Set_Gate(std::function<void(int ahead)> gate) { inner->gate = std::move(gate); }

void Journal::Leave_Out(char sign, const QStringList& columns) {
  inner->leftOutSign = sign;
  inner->leftOut = columns;
}

bool Journal::Inner::Has_Left_Out(const std::vector<RawValue>& row) const {
  const bool isText = !row.empty() && row.front().kind == RawValue::Kind::Text && row.front().size > 0;
  return isText && !leftOut.isEmpty() && *row.front().bytes == leftOutSign;
}

bool Journal::Read() {
  const bool read = inner->justRead = inner->file.Read();
  inner->Index_Steps();
  return read;
}

// Following ----------------------------------------------------------------------------------------------------------

quint32 Journal::Inner::State_After(int record) const {
  return record == 0 ? file.First_State() : file.Records()[static_cast<size_t>(record) - 1].state;
}

bool Journal::Follow(Database& database) {
  Inner& self = *inner;
  Leave();
  self.engine = database.inner->engine;
  Engine& engine = *self.engine;
  self.stateNow = State_In(engine);
  const auto& records = self.file.Records();
  int found = -1;
  if (!records.empty()) {
    for (int record = static_cast<int>(records.size()); record >= 0 && found < 0; --record)
      if (self.State_After(record) == self.stateNow) found = record;
    // The first transaction may not have reached the database.
    if (found < 0 && records.size() == 1 && self.file.Found_State() == self.stateNow) found = 0;
  } else if (self.stateNow == self.file.Found_State() && self.file.First_State() != 0) {
    found = 0;
  }
  sqlite3_preupdate_hook(engine.db, Inner::Hook, &self);
  engine.recorder = &self;
  self.tables.clear();
  self.Taken_Back();
  const bool justRead = std::exchange(self.justRead, false);
  if (found < 0) return false;
  // What a kill has left of a step is a step.
  const auto at = static_cast<size_t>(found);
  if (justRead && found > 0 && at < records.size() && records[at].step == records[at - 1].step) self.file.Cut(at);
  self.records = found;
  self.Index_Steps();
  return true;
}

void Journal::Begin_Anew() {
  Inner& self = *inner;
  if (self.engine && self.engine->db) self.stateNow = State_In(*self.engine);
  self.file.Remove();
  self.file.Begin(self.stateNow, New_State());
  self.records = 0;
  self.Index_Steps();
}

void Journal::Leave() {
  Inner& self = *inner;
  if (!self.engine) return;
  if (self.engine->db) sqlite3_preupdate_hook(self.engine->db, nullptr, nullptr);
  if (self.engine->recorder == &self) self.engine->recorder = nullptr;
  self.engine.reset();
}

void Journal::Remove() {
  Leave();
  inner->file.Remove();
  inner->records = 0;
  inner->Index_Steps();
}

bool Journal::Follows() const { return inner->engine && inner->engine->recorder == inner.get(); }
QString Journal::Fault() const { return inner->fault; }
qint64 Journal::Bytes() const { return inner->file.Bytes(); }
quint32 Journal::State() const { return inner->stateNow; }
quint32 Journal::State_Of(Database& database) { return State_In(*database.inner->engine); }

int Journal::Place_Of(quint32 state) const {
  if (inner->State_After(0) == state || inner->file.Found_State() == state) return 0;
  for (size_t step = inner->stepEnds.size(); step-- > 0;)
    if (inner->State_After(static_cast<int>(inner->stepEnds[step])) == state) return static_cast<int>(step) + 1;
  return -1;
}

void Journal::Drop_Ahead() {
  inner->file.Cut(static_cast<size_t>(inner->records));
  inner->Index_Steps();
}

// Steps --------------------------------------------------------------------------------------------------------------

void Journal::Inner::Index_Steps() {
  stepEnds.clear();
  const auto& all = file.Records();
  for (size_t record = 0; record < all.size(); ++record) {
    if (record == 0 || all[record].step != all[record - 1].step) stepEnds.push_back(0);
    stepEnds.back() = record + 1;
  }
}

int Journal::Inner::Position() const {
  return static_cast<int>(std::upper_bound(stepEnds.begin(), stepEnds.end(), static_cast<size_t>(records)) -
                          stepEnds.begin());
}

int Journal::Count() const { return static_cast<int>(inner->stepEnds.size()); }
int Journal::Position() const { return inner->Position(); }

JournalStep Journal::Step(int number) const {
  const auto& all = inner->file.Records();
  const size_t end = inner->stepEnds.at(static_cast<size_t>(number));
  JournalStep step{all[end - 1].name, all[end - 1].when, 0};
  for (size_t record = end; record-- > 0 && all[record].step == all[end - 1].step;) step.rows += all[record].rows;
  return step;
}

void Journal::Shrink(qint64 bytes, int leastSteps) {
  Inner& self = *inner;
  // Those ahead would be lost with a cut in front of them.
  while (self.file.Bytes() > bytes && Count() > leastSteps && self.Position() > leastSteps) {
    const size_t drop = self.stepEnds[static_cast<size_t>(std::min(Count() - leastSteps, self.Position()) / 2)];
    self.file.Drop_First(drop);
    self.records -= static_cast<int>(drop);
    self.Index_Steps();
  }
}

void Journal::Inner::Put_State(quint32 state) {
  stateBefore = std::exchange(stateNow, state);
  engine->Put_Number(state);
}

// Storing ------------------------------------------------------------------------------------------------------------

void Journal::Inner::Before_Commit() {
  if (quiet) return;
  if (writer.Is_Empty() && !hasParts && !lost) return;
  Put_State(New_State());
  if (lost)
    return Give_Up_Steps(
        QStringLiteral("Die Tabelle wurde auf einem Weg verändert, dem der Verlauf nicht folgen kann."));
  try {
    Store_Record();
  } catch (const Error& error) {
    // The user's rows come first: they are stored, and the steps before them can no longer be taken back.
    Give_Up_Steps(Error_Text(error));
  }
}

void Journal::Inner::Store_Record() {
  const auto& all = file.Records();
  if (static_cast<size_t>(records) < all.size() && !hasParts) {
    file.Cut(static_cast<size_t>(records));
    Index_Steps();
  }
  JournalRecord record;
  record.step = Step_Number();
  record.when = QDateTime::currentMSecsSinceEpoch();
  record.state = stateNow;
  record.rows = rows;
  const QString name = ownName.value_or(running.name);
  record.name = namer && !ownName ? namer(name, facts) : name;
  record.contextBefore = contextBefore;
  record.contextAfter = contextAfter;
  file.Add_End(record, writer.List());
  writer.Clear();
  ++list;
  stored = true;
}

quint64 Journal::Inner::Step_Number() {
  const auto& all = file.Records();
  const quint64 last = all.empty() ? 0 : all.back().step;
  const quint64 number = ownName ? 0 : running.number;
  const bool same = number != 0 && number == storedNumber;
  storedNumber = number;
  return same ? last : last + 1;
}

void Journal::Inner::Begin_Facts() {
  if (!std::exchange(factsDue, false)) return;
  const quint64 former = running.number;
  running = asked ? asked() : RunningStep();
  if (running.number != 0 && running.number == former) return;
  StepFacts fresh;
  fresh.before.swap(facts.before);  // their memory is kept
  fresh.after.swap(facts.after);
  fresh.before.clear();
  fresh.after.clear();
  facts = std::move(fresh);
}

// A database that is no longer followed by its steps has none.
void Journal::Inner::Give_Up_Steps(const QString& reason) {
  fault = reason;
  file.Remove();
  file.Begin(stateNow, stateNow);
  records = 0;
  Index_Steps();
  writer.Clear();
  ++list;
  stored = false;
  storedNumber = 0;
}

void Journal::Inner::Committed() {
  if (stored) {
    records = static_cast<int>(file.Records().size());
    const auto end = static_cast<size_t>(records);
    const auto& all = file.Records();
    const bool more = end > 1 && all[end - 2].step == all[end - 1].step && !stepEnds.empty();
    if (more)
      stepEnds.back() = end;
    else
      stepEnds.push_back(end);
  }
  stored = hasParts = lost = passed = false;
  stateBefore.reset();
  rows = 0;
  mark = 0;
  factsDue = true;
}

void Journal::Inner::Taken_Back() {
  if (stateBefore) stateNow = *stateBefore;
  stateBefore.reset();
  writer.Clear();
  ++list;
  mark = 0;
  rows = 0;
  tables.clear();
  factsDue = true;
  if (stored || hasParts) {
    file.Give_Up_Record();
    file.Cut(static_cast<size_t>(records));
    Index_Steps();
  }
  stored = hasParts = lost = passed = false;
}

void Journal::Inner::Before_Statement() {
  if (quiet) return;
  if (engine->depth == 0 && gate && static_cast<size_t>(records) < file.Records().size()) Ask_At_Gate();
  if (tables.isEmpty()) engine->Tables();
  Flush_If_Large();
  mark = writer.Size();
}

// Nothing has begun yet: whoever wants to write is refused as by a full disk.
void Journal::Inner::Ask_At_Gate() {
  if (atGate || passed) return;
  struct Passing {
    bool& it;
    ~Passing() { it = false; }
  } const scope{atGate};
  atGate = true;
  gate(static_cast<int>(stepEnds.size()) - Position());
  passed = true;
}

void Journal::Inner::Statement_Failed() {
  if (quiet || writer.Size() <= mark) return;
  writer.Cut(mark);
  tables.clear();  // names may have gone with it
}

// A large step is not kept in memory.
void Journal::Inner::Flush_If_Large() {
  constexpr qsizetype large = qsizetype{8} << 20;
  if (writer.Size() < large || lost) return;
  try {
    if (!hasParts && static_cast<size_t>(records) < file.Records().size()) {
      file.Cut(static_cast<size_t>(records));
      Index_Steps();
    }
    hasParts = true;
    file.Add_Part(writer.List());
  } catch (const Error&) {
    lost = true;
  }
  writer.Clear();
  ++list;
}

// Changes ------------------------------------------------------------------------------------------------------------

void Journal::Inner::Hook(void* self, sqlite3*, int operation, const char* schema, const char* table, sqlite3_int64 key,
                          sqlite3_int64 newKey) {
  auto& journal = *static_cast<Inner*>(self);
  if (journal.quiet || qstrcmp(schema, "main") != 0 || qstrncmp(table, "sqlite_", 7) == 0) return;
  try {
    journal.Row_Changed(operation, QByteArray::fromRawData(table, static_cast<qsizetype>(qstrlen(table))), key, newKey);
  } catch (...) {
    journal.lost = true;  // nothing may be thrown through SQLite
  }
}

Followed* Journal::Inner::Followed_Table(const QByteArray& name) {
  auto found = tables.find(name);
  if (found == tables.end()) {
    const TableDef* table = engine->Table_As_Known(QString::fromUtf8(name));
    if (!table) return nullptr;
    Followed followed;
    followed.names = ChangeWriter::Names(name, Column_Names(*table));
    for (const FieldInfo& field : table->fields) followed.columns += field.name;
    followed.main = table->name.compare(mainTable, Qt::CaseInsensitive) == 0;
    found = tables.insert(QByteArray(name.constData(), name.size()), followed);
  }
  if (found->list != list) {
    found->number = writer.Number_Of(found->names);
    found->list = list;
  }
  return &*found;
}

// Columns that SQLite does not tell of are Null.
void Journal::Inner::Read_Row(int operation, int width) {
  const int there = std::min(width, sqlite3_preupdate_count(engine->db));
  const auto read = [&](std::vector<RawValue>& row, int (*ask)(sqlite3*, int, sqlite3_value**)) {
    row.assign(static_cast<size_t>(width), {});
    sqlite3_value* value = nullptr;
    for (int column = 0; column < there; ++column)
      if (ask(engine->db, column, &value) == SQLITE_OK && value)
        row[static_cast<size_t>(column)] = Raw_Of(value, engine->hasUtf8);
  };
  if (operation != SQLITE_INSERT) read(before, sqlite3_preupdate_old);
  if (operation != SQLITE_DELETE) read(after, sqlite3_preupdate_new);
}

void Journal::Inner::Row_Changed(int operation, const QByteArray& name, qint64 key, qint64 newKey) {
  const qsizetype former = writer.Size();
  Followed* table = Followed_Table(name);
  if (!table) {
    lost = true;
    return;
  }
  const int width = static_cast<int>(table->columns.size());
  Read_Row(operation, width);
  if (operation == SQLITE_UPDATE) {
    const bool out = table->main && Has_Left_Out(before) && Has_Left_Out(after);
    cells.clear();
    for (int column = 0; column < width; ++column) {
      const auto index = static_cast<size_t>(column);
      if (before[index] == after[index]) continue;
      if (out && leftOut.contains(table->columns[column])) continue;
      cells.push_back({column, before[index], after[index]});
    }
    if (cells.empty() && key == newKey) {
      if (writer.Size() > former) table->list = 0;  // its names go again
      return writer.Cut(former);
    }
    writer.Update(table->number, key, newKey, cells);
  } else {
    const bool insert = operation == SQLITE_INSERT;
    if (insert) key = newKey;
    writer.Row(insert ? ChangeKind::Insert : ChangeKind::Delete, table->number, key, insert ? after : before);
  }
  ++rows;
  Note(operation, *table, key, newKey);
}

void Journal::Inner::Note(int operation, const Followed& table, qint64 key, qint64 newKey) {
  Begin_Facts();
  if (!table.main) {
    ++facts.otherRows;
    return;
  }
  const bool first = facts.inserted + facts.changed + facts.removed == 0;
  if (first) {
    facts.oneRow = true;
    facts.key = key;
  } else if (facts.oneRow && facts.key != key) {
    facts.oneRow = false;
    facts.before.clear();
    facts.after.clear();
  }
  ++(operation == SQLITE_INSERT ? facts.inserted : operation == SQLITE_DELETE ? facts.removed : facts.changed);
  if (!facts.oneRow) return;
  facts.key = operation == SQLITE_DELETE ? key : newKey;
  if (namer) Note_Row(operation, table.columns, first);
}

void Journal::Inner::Note_Row(int operation, const QStringList& columns, bool first) {
  facts.after.clear();
  for (qsizetype column = 0; column < columns.size(); ++column) {
    const auto index = static_cast<size_t>(column);
    const bool had = first && operation != SQLITE_INSERT, has = operation != SQLITE_DELETE;
    if (had) facts.before.emplace_back(columns[column], before[index].ToValue());
    if (!has) continue;
    // A text that stays is made once.
    if (had && before[index] == after[index])
      facts.after.push_back(facts.before.back());
    else
      facts.after.emplace_back(columns[column], after[index].ToValue());
  }
}

namespace {
void Note_Name(QStringList& names, const QString& name) {
  constexpr qsizetype few = 4;
  if (names.size() < few) names += name;
}
}  // namespace

void Journal::Inner::Dropping(const TableDef& table) {
  if (quiet) return;
  rows += Write_All_Rows(*engine, table, ChangeKind::Delete, writer);
  writer.Table(ChangeKind::DropTable, table.name, Statement_Of_Table(*engine, table.name));
  Begin_Facts();
  Note_Name(facts.tablesDropped, table.name);
  tables.clear();
}

void Journal::Inner::Created(const TableDef& table) {
  if (quiet) return;
  writer.Table(ChangeKind::MakeTable, table.name, Statement_Of_Table(*engine, table.name));
  Begin_Facts();
  Note_Name(facts.tablesMade, table.name);
  tables.clear();
}

void Journal::Inner::Column_Added(const TableDef& table, const FieldInfo& column) {
  if (quiet) return;
  writer.Column(ChangeKind::AddColumn, table.name, column, static_cast<int>(table.fields.size()));
  Begin_Facts();
  Note_Name(facts.columnsAdded, column.name);
  tables.clear();
}

void Journal::Inner::Column_Goes(const TableDef& table, int place) {
  if (quiet) return;
  const QByteArray column = database_inner::Quoted(table.fields[static_cast<size_t>(place)].name);
  const int number = writer.Number_Of(table.name.toUtf8(), Column_Names(table));
  const auto statement = engine->Prepare("SELECT rowid," + column + " FROM " + database_inner::Quoted(table.name) +
                                         " WHERE " + column + " IS NOT NULL ORDER BY rowid");
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    const qint64 key = sqlite3_column_int64(statement.get(), 0);
    writer.Update(number, key, key, {{place, Raw_Of(statement.get(), 1), {}}});
    ++rows;
  }
  writer.Column(ChangeKind::RemoveColumn, table.name, table.fields[static_cast<size_t>(place)], place);
  Begin_Facts();
  Note_Name(facts.columnsRemoved, table.fields[static_cast<size_t>(place)].name);
  tables.clear();
}
