#include "store/version_differences.h"

#include <QDeadlineTimer>
#include <QMultiHash>
#include <QSet>
#include <algorithm>
#include <utility>

#include "state/events.h"
#include "state/global_state.h"
#include "state/step.h"
#include "store/entry.h"
#include "store/transaction.h"
#include "store/vertex_table.h"

namespace {

const QString mapData = QStringLiteral("MapData");

// What stands in a row, in a number: two rows with the same one are the same entry.
struct Print {
  size_t value = 0;
  qint64 key = 0;
  bool met = false;  // its partner was found
};

using Columns = std::vector<int>;

// The rows of one table, read piece by piece.
struct RowReader {
  Database* database = nullptr;
  std::unique_ptr<Recordset> rows;
  Columns columns;
  std::vector<Print> prints;

  void Begin(Database& from) {
    database = &from;
    rows = from.OpenRecordset(mapData);
    prints.clear();
    if (!rows->Eof()) rows->MoveNext();  // the header row is no entry
  }
  bool Go_On(const QDeadlineTimer& end) {
    constexpr int atOnce = 16;
    for (; !rows->Eof(); rows->MoveNext()) {
      prints.push_back({Print_Of_Row(), rows->Key(), false});
      if (prints.size() % atOnce == 0 && end.hasExpired()) return rows->MoveNext(), rows->Eof();
    }
    return true;
  }

 private:
  size_t Print_Of_Row() const {
    const EntryType type = EntryType::Parse(rows->Integer(column::Typ));
    size_t print = qHash(type.Marked(Mark::None).ToNumber());
    for (const int it : columns) {
      if (it == column::Typ) continue;
      if (rows->Fields()[static_cast<size_t>(it)].type != FieldType::Text)
        print = qHash(rows->Number(it), print);
      else if (it == column::ID && type.HasVertices())
        print = Print_Of_Shape(print);
      else
        print = qHash(rows->Text(it), print);
    }
    return print;
  }
  size_t Print_Of_Shape(size_t print) const {
    EntryId id = EntryId::Parse(rows->Text(column::ID));
    if (const auto* stored = database->Points(id.TableName()))
      for (const Database::PointRow& point : *stored) print = qHash(point.y, qHash(point.x, print));
    while (!id.name.isEmpty() && id.name.back().isDigit()) id.name.chop(1);
    id.asStored.clear();
    return qHash(id.ToText(), print);
  }
};

QString Kind_Of(const EntryType& type, const EntryId& id) {
  if (type.IsPolygon()) return id.IsLine() ? QStringLiteral("Linie") : QStringLiteral("Fläche");
  if (type.IsFigure()) return QStringLiteral("Figur");
  if (type.IsText()) return QStringLiteral("Text");
  return type.Kind() == EntryKind::Picture ? QStringLiteral("Bild") : id.name;
}

QString Name_Here(const Recordset& rows) {
  return Kind_Of(EntryType::Parse(rows.Integer(column::Typ)), EntryId::Parse(rows.Text(column::ID))) +
         QStringLiteral(": ") + rows.Text(column::Eintrag).section(u'\n', 0, 0).simplified();
}

// Rows of the same key first, then those that went to another place of the table.
void Meet_The_Same(std::vector<Print>& then, std::vector<Print>& now) {
  auto other = now.begin();
  for (Print& print : then) {
    while (other != now.end() && other->key < print.key) ++other;
    if (other == now.end()) break;
    if (other->key == print.key && other->value == print.value) print.met = other->met = true;
  }
  QMultiHash<size_t, Print*> moved;
  for (Print& print : now)
    if (!print.met) moved.insert(print.value, &print);
  for (Print& print : then) {
    if (print.met || moved.isEmpty()) continue;
    const auto found = moved.find(print.value);
    if (found == moved.end()) continue;
    print.met = found.value()->met = true;
    moved.erase(found);
  }
}

// One that was changed keeps its text, its place or its vertex table. Another one may have got the key of one that is
// gone.
bool Is_Like(const Recordset& then, const Recordset& now) {
  const EntryType type = EntryType::Parse(then.Integer(column::Typ)),
                  later = EntryType::Parse(now.Integer(column::Typ));
  const auto same = [&](int column) { return then.Text(column) == now.Text(column); };
  if (type.IsText() != later.IsText() || type.HasVertices() != later.HasVertices()) return false;
  if (type.HasVertices())
    return EntryId::Parse(then.Text(column::ID)).TableName() == EntryId::Parse(now.Text(column::ID)).TableName();
  return same(column::Eintrag) || (same(column::Xmap) && same(column::Ymap));
}

}  // namespace

int VersionDifferences::Count(VersionEntry how) const {
  return static_cast<int>(
      std::count_if(entries.begin(), entries.end(), [how](const VersionDifference& it) { return it.how == how; }));
}

struct VersionComparison::Inner {
  enum class Work { Nothing, Now, Then, Compare, Names } work = Work::Nothing;
  std::unique_ptr<Database> version;
  RowReader now, then;
  bool nowRead = false;
  VersionDifferences found;
  QSet<qint64> left;  // keys of now without a partner
  size_t at = 0;

  void Choose_Columns() {
    Columns columns;
    then.columns.clear();
    for (size_t i = 0; i < now.rows->Fields().size(); ++i) {
      const QString& name = now.rows->Fields()[i].name;
      if (!then.rows->HasField(name)) continue;
      columns.push_back(static_cast<int>(i));
      then.columns.push_back(then.rows->FieldIndex(name));
    }
    if (now.columns == columns) return;
    now.columns = columns;
    nowRead = false;
    now.Begin(*dbEntries);
  }
  void Compare() {
    std::vector<Print> other = now.prints;
    Meet_The_Same(then.prints, other);
    for (const Print& print : other)
      if (!print.met) left.insert(print.key);
    at = 0;
  }
  // What each entry without a partner has become.
  bool Name_Them(const QDeadlineTimer& end) {
    for (; at < then.prints.size(); ++at) {
      const Print& print = then.prints[at];
      if (print.met) continue;
      then.rows->MoveTo(then.rows->PositionOf(print.key));
      bool there = left.contains(print.key);
      if (there) {
        now.rows->MoveTo(now.rows->PositionOf(print.key));
        there = Is_Like(*then.rows, *now.rows);
      }
      if (there) left.remove(print.key);
      found.entries.push_back({there ? VersionEntry::Changed : VersionEntry::Gone, print.key, there ? print.key : 0,
                               Name_Here(*then.rows)});
      if (end.hasExpired()) return ++at, false;
    }
    found.added = static_cast<int>(left.size());
    return true;
  }
};

VersionComparison::VersionComparison() : inner(std::make_unique<Inner>()) {}
VersionComparison::~VersionComparison() = default;

void VersionComparison::Begin(const TableVersion& version) {
  Inner& self = *inner;
  self.work = Inner::Work::Nothing;
  self.found = {};
  self.left.clear();
  self.then.rows.reset();
  self.version = Workspace::OpenDatabase(version.file, {.readOnly = true});
  if (Holds_Same_As_Now(*self.version)) return;
  if (!self.now.rows) self.now.Begin(*dbEntries);
  self.then.Begin(*self.version);
  self.Choose_Columns();
  self.work = Inner::Work::Now;
}

bool VersionComparison::Go_On(int milliseconds) {
  Inner& self = *inner;
  const QDeadlineTimer end(milliseconds);
  using Work = Inner::Work;
  if (self.work == Work::Now) {
    if (!self.nowRead && !(self.nowRead = self.now.Go_On(end))) return false;
    self.work = Work::Then;
  }
  if (self.work == Work::Then) {
    if (!self.then.Go_On(end)) return false;
    self.work = Work::Compare;
  }
  if (self.work == Work::Compare) {
    self.Compare();
    self.work = Work::Names;
  }
  if (self.work == Work::Names && !self.Name_Them(end)) return false;
  self.work = Work::Nothing;
  return true;
}

VersionDifferences VersionComparison::Take() { return std::exchange(inner->found, {}); }

void VersionComparison::Forget() { inner = std::make_unique<Inner>(); }

VersionDifferences Differences_To(const TableVersion& version) {
  constexpr int atOnce = 1000;  // ms
  VersionComparison comparison;
  comparison.Begin(version);
  while (!comparison.Go_On(atOnce)) continue;
  return comparison.Take();
}

// Taking back --------------------------------------------------------------------------------------------------------

namespace {

// A version that is open, with its rows.
struct Opened {
  explicit Opened(const TableVersion& version)
      : database(Workspace::OpenDatabase(version.file, {.readOnly = true})),
        rows(database->OpenRecordset(QStringLiteral("MapData"))) {}
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

// A free one in place of that name where another entry bears it by now; "" if there is none.
QString Free_Table(const QString& former, const EntryType& type, const EntryId& id) {
  if (!dbEntries->HasTable(former)) return former;
  if (!type.IsPolygon()) return Next_Figure_ID();
  return New_Poly_Table(id.IsLine() ? QStringLiteral("Linie") : QStringLiteral("Flaeche"));
}

// The row under the version's cursor: in place of the row `now`, or as a new one.
bool Take_Entry_Here(const Opened& then, qint64 now) {
  const int position = now == 0 ? -1 : rsEntries->PositionOf(now);
  const bool there = position >= 1;
  EntryType type = EntryType::Parse(then.rows->Integer(column::Typ));
  EntryId id = EntryId::Parse(then.rows->Text(column::ID));
  if (type.HasVertices()) {
    std::vector<QPoint> points;
    if (const auto* stored = then.database->Points(id.TableName()))
      for (const Database::PointRow& point : *stored) points.emplace_back(point.x, point.y);
    if (!there) {
      id.name = Free_Table(id.TableName(), type, id);
      id.asStored.clear();
      if (id.name.isEmpty()) return false;
    }
    Write_Vertices(id.TableName(), points);
  }
  if (there) rsEntries->MoveTo(position);
  // Marks are a thing of now.
  type = type.Marked(there ? Type_Here().mark : Mark::None);
  there ? rsEntries->Edit() : rsEntries->AddNew();
  for (int i = 0; i < static_cast<int>(rsEntries->Fields().size()); ++i) {
    const QString& name = rsEntries->Fields()[static_cast<size_t>(i)].name;
    if (then.rows->HasField(name)) rsEntries->Set(i, then.rows->Raw(then.rows->FieldIndex(name)));
  }
  rsEntries->Set(column::Typ, qint64{type.ToNumber()});
  rsEntries->Set(column::ID, id.ToText());
  rsEntries->Update();
  return true;
}

}  // namespace

int Take_Entries(const TableVersion& version, const std::vector<VersionDifference>& entries) {
  const UndoStep step(QStringLiteral("Frühere Einträge übernehmen"));
  const Opened then(version);
  int taken = 0;
  In_Transaction([&] {
    for (const VersionDifference& entry : entries) {
      const int position = then.rows->PositionOf(entry.key);
      if (position < 1) continue;
      then.rows->MoveTo(position);
      taken += Take_Entry_Here(then, entry.now) ? 1 : 0;
    }
  });
  if (taken > 0) events.TableChanged.Emit();
  return taken;
}
