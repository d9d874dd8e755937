#include "edit/marks.h"

#include <QSet>
#include <algorithm>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "hand/tool_state.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "state/task_line.h"
#include "store/entry_edit.h"
#include "store/table_file.h"

namespace {

const QString markTitle = QStringLiteral("Markieren");

struct Marks {
  std::vector<qint64> order;   // as they were marked; the last one is the one marked last
  QHash<qint64, Mark> stored;  // what the rows say
};

// What the rows said when they were last asked: of a large table those that were written since are asked again.
struct KnownMarks {
  QHash<qint64, Mark> stored;
  WriteMoment moment;
};
KnownMarks known;
const OnReset fresh(known);

void Look_At_Marks() {
  const auto take = [] {
    if (const Mark mark = Type_Here().mark; mark != Mark::None) known.stored.insert(rsEntries->Key(), mark);
  };
  if (const auto writes = rsEntries->Writes_Since(known.moment)) {
    const KeepCurrentRow keep;
    for (const RowWrite& write : writes->rows) {
      known.stored.remove(write.key);
      const int position = rsEntries->PositionOf(write.key);
      if (position < 1) continue;
      rsEntries->MoveTo(position);
      take();
    }
  } else {
    known.stored.clear();
    For_Each_Entry(take);
  }
  known.moment = rsEntries->Write_Moment();
}

// The rows decide which are marked. Their order is kept in memory; of a table that was just loaded it is that of its
// rows, the one stored as last behind all others.
Marks Read_Marks() {
  Look_At_Marks();
  Marks marks;
  marks.stored = known.stored;
  std::vector<qint64> inTable;
  qint64 last = 0;
  for (auto it = marks.stored.cbegin(); it != marks.stored.cend(); ++it) {
    inTable.push_back(it.key());
    if (it.value() == Mark::Last) last = std::max(last, it.key());
  }
  std::sort(inTable.begin(), inTable.end());  // keys ascend with the rows
  QSet<qint64> remembered;
  for (const qint64 key : Map.MarkOrder)
    if (marks.stored.contains(key)) remembered.insert(key);
  for (const qint64 key : inTable)
    if (!remembered.contains(key)) marks.order.push_back(key);
  for (const qint64 key : Map.MarkOrder)
    if (remembered.remove(key)) marks.order.push_back(key);
  const auto found = std::find(marks.order.begin(), marks.order.end(), last);
  if (found != marks.order.end()) std::rotate(found, found + 1, marks.order.end());
  return marks;
}

void Write_Mark(qint64 key, Mark mark) {
  const int position = rsEntries->PositionOf(key);
  if (position < 1) return;
  rsEntries->MoveTo(position);
  const int typ = Type_Here().Marked(mark).ToNumber();
  rsEntries->Edit();
  rsEntries->Set(column::Typ, static_cast<qint64>(typ));
  rsEntries->Update();
}

// Brings the rows from what they say to the new order. Only rows that change are written.
void Write_Marks(const Marks& marks) {
  QHash<qint64, Mark> wanted;
  for (const qint64 key : marks.order) wanted.insert(key, Mark::Marked);
  if (!marks.order.empty()) wanted[marks.order.back()] = Mark::Last;
  std::vector<qint64> changed;
  for (auto it = marks.stored.cbegin(); it != marks.stored.cend(); ++it)
    if (!wanted.contains(it.key())) changed.push_back(it.key());
  for (const qint64 key : marks.order)
    if (marks.stored.value(key, Mark::None) != wanted[key]) changed.push_back(key);
  std::sort(changed.begin(), changed.end());  // as the rows stand in the file
  const bool written = In_Told_Transaction(markTitle, [&] {
    for (const qint64 key : changed) Write_Mark(key, wanted.value(key, Mark::None));
  });
  if (!written) return;
  Map.MarkOrder = marks.order;
  Show_Changed_Entries();
}

}  // namespace

void Mark_Obj() {
  if (!On_Current_Entry()) return;
  const qint64 key = rsEntries->Key();
  Marks marks = Read_Marks();
  if (std::erase(marks.order, key) == 0) marks.order.push_back(key);
  Write_Marks(marks);
}

void Mark_Rows(const QStringList& bookmarks) {
  if (!Table_Is_Open()) return;
  Marks marks = Read_Marks();
  QSet<qint64> added;
  std::vector<qint64> keys;
  for (const QString& bookmark : bookmarks) {
    const qint64 key = bookmark.toLongLong();
    if (rsEntries->PositionOf(key) < 1 || added.contains(key)) continue;
    added.insert(key);
    keys.push_back(key);
  }
  if (keys.empty()) return;
  std::erase_if(marks.order, [&added](qint64 key) { return added.contains(key); });
  marks.order.insert(marks.order.end(), keys.begin(), keys.end());
  Write_Marks(marks);
}

void Unmark_All() {
  if (!Table_Is_Open()) return;
  Marks marks = Read_Marks();
  marks.order.clear();
  if (!marks.stored.isEmpty()) Write_Marks(marks);
}

// Deleting -----------------------------------------------------------------------------------------------------------

namespace {

QSet<qint64> Marked_Keys() {
  QSet<qint64> keys;
  For_Each_Entry([&keys] {
    if (Type_Here().Chosen()) keys.insert(rsEntries->Key());
  });
  return keys;
}

}  // namespace

void Delete_Marked() {
  if (!Table_Is_Open()) return;
  const QSet<qint64> keys = Marked_Keys();
  if (keys.isEmpty()) return;
  QString question = keys.size() == 1
                         ? QStringLiteral("Soll der markierte Eintrag gelöscht werden?")
                         : QStringLiteral("Sollen die %1 markierten Einträge gelöscht werden?").arg(keys.size());
  if (const int hidden = Hidden_Marked(); hidden > 0) question += QStringLiteral("\n\n") + Hidden_Stay_Text(hidden);
  if (Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Markierte löschen"),
                  MsgDefault::Second) != MsgAnswer::Yes)
    return;
  const BusyPointer busy;
  const UndoPoint point(QStringLiteral("Rückgängig: Markierte löschen"));
  const auto work = [&keys] { Delete_Entries(keys + Extras_Of_All(keys)); };
  if (!In_Told_Transaction(QStringLiteral("Markierte löschen"), work)) return;
  std::erase_if(Map.MarkOrder, [&keys](qint64 key) { return keys.contains(key); });
  if (!rsEntries->HasRow(Map.CurBookmark)) {
    rsEntries->MoveLast();
    Map.CurBookmark = rsEntries->Bookmark();
    events.CurrentRowChanged.Emit();
  }
  Show_Changed_Entries();
}

// Groups -------------------------------------------------------------------------------------------------------------

namespace {

struct GroupState {
  int highest = 0;
  bool ungrouped = false;  // a marked row belongs to no group
  QSet<QString> groups;    // of the marked rows
};

GroupState Read_Groups() {
  GroupState state;
  For_Each_Entry([&] {
    const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
    if (id.hasGroup) state.highest = std::max(state.highest, static_cast<int>(std::min(Val(id.group), 1e9)));
    if (!Type_Here().Chosen()) return;
    if (id.hasGroup) {
      state.groups.insert(id.group);
    } else {
      state.ungrouped = true;
    }
  });
  return state;
}

}  // namespace

void Group_Marked() {
  if (!Table_Is_Open()) return;
  const GroupState state = Read_Groups();
  const bool dissolve = !state.ungrouped && state.groups.size() == 1;
  const QString number = QString::number(state.highest + 1);
  const auto changes = Collect_Changes([&](EntryRow& row, qint64) {
    EntryId id = EntryId::Parse(row.ID);
    const bool marked = EntryType::Parse(row.Typ).Chosen();
    if (dissolve ? !id.hasGroup || !state.groups.contains(id.group) : !marked) return;
    id.hasGroup = !dissolve;
    id.group = dissolve ? QString() : number;
    row.ID = id.ToText();
  });
  for (const RowChange& change : changes)
    if (!Id_Fits(change.after.ID)) return;
  if (Write_Changes(changes, QStringLiteral("Gruppe"), QStringLiteral("Rückgängig: Gruppieren")) == 0) return;
  Tell_Done_Of_Marked(dissolve ? QStringLiteral("Die Gruppe ist aufgelöst.")
                               : QStringLiteral("Gruppiert: ") + Entries_Text(std::ssize(changes)));
}
