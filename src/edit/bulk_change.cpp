#include "edit/bulk_change.h"

#include <algorithm>

#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "state/task_line.h"
#include "store/table_file.h"
#include "view/redraw.h"

bool Ready_For_Many() { return Table_Is_Open() && (!Entry_In_Hand() || End_Entry()); }

namespace {

void Collect_One(std::vector<RowChange>& changes, const std::function<void(EntryRow&, qint64)>& change) {
  const std::optional<EntryRow> row = Read_Sound_Entry();
  if (!row) return;
  RowChange it{rsEntries->Key(), *row, *row};
  change(it.after, it.key);
  if (it.after != it.before) changes.push_back(std::move(it));
}

}  // namespace

std::vector<RowChange> Collect_Changes(const std::function<void(EntryRow&, qint64)>& change) {
  std::vector<RowChange> changes;
  For_Each_Entry([&] { Collect_One(changes, change); });
  return changes;
}

std::vector<RowChange> Change_Of_Current(const std::function<void(EntryRow&, qint64)>& change) {
  std::vector<RowChange> changes;
  if (On_Current_Entry()) Collect_One(changes, change);
  return changes;
}

void Write_Change(const RowChange& change) {
  const EntryRow &is = change.before, &will = change.after;
  const int position = rsEntries->PositionOf(change.key);
  if (position < 0) Raise(errors::recordDeleted);
  rsEntries->MoveTo(position);
  rsEntries->Edit();
  try {
    const auto text = [](int where, const QString& from, const QString& to) {
      if (from != to) rsEntries->Set(where, to);
    };
    const auto number = [](int where, int from, int to) {
      if (from != to) rsEntries->Set(where, static_cast<qint64>(to));
    };
    text(column::ID, is.ID, will.ID);
    text(column::Eintrag, is.Eintrag, will.Eintrag);
    text(column::Schrift, is.Schrift, will.Schrift);
    if (is.Groesse != will.Groesse) rsEntries->Set(column::Groesse, will.Groesse);
    number(column::VG, is.VG, will.VG);
    number(column::HG, is.HG, will.HG);
    number(column::RA, is.RA, will.RA);
    number(column::Xmap, is.Xmap, will.Xmap);
    number(column::Ymap, is.Ymap, will.Ymap);
    number(column::Xline, is.Xline, will.Xline);
    number(column::Yline, is.Yline, will.Yline);
    number(column::Typ, is.Typ, will.Typ);
    rsEntries->Update();
  } catch (...) {
    if (rsEntries->Editing()) rsEntries->CancelUpdate();
    throw;
  }
}

int Write_Changes(const std::vector<RowChange>& changes, const QString& title, const QString& undoCaption) {
  if (changes.empty()) return 0;
  const BusyPointer busy;
  std::optional<UndoPoint> point;
  if (!undoCaption.isEmpty()) point.emplace(undoCaption);
  const bool written = In_Told_Transaction(title, [&changes] {
    for (const RowChange& change : changes) Write_Change(change);
  });
  if (!written) return 0;
  Show_Changed_Entries();
  return static_cast<int>(changes.size());
}

bool Append_In_Transaction(const QString& title, const std::function<void()>& work) {
  if (!rsEntries) return false;
  const int first = rsEntries->RecordCount();
  if (!In_Told_Transaction(title, work)) return false;
  rsEntries->MoveTo(std::min(first, rsEntries->RecordCount() - 1));
  Map.CurBookmark = rsEntries->Bookmark();
  events.CurrentRowChanged.Emit();
  return true;
}

int Hidden_Marked() {
  int count = 0;
  For_Each_Entry([&count] {
    const EntryType type = Type_Here();
    count += type.mark != Mark::None && !type.Chosen();
  });
  return count;
}

QString Hidden_Stay_Text(int count) {
  if (count == 0) return {};
  return count == 1 ? QStringLiteral("1 ausgeblendeter Eintrag bleibt, wie er ist.")
                    : QStringLiteral("%1 ausgeblendete Einträge bleiben, wie sie sind.").arg(count);
}

void Tell_Done_Of_Marked(const QString& done) {
  const QString stayed = Hidden_Stay_Text(Hidden_Marked());
  const QString text = done.isEmpty() || stayed.isEmpty() ? done + stayed : done + QStringLiteral(". ") + stayed;
  if (!text.isEmpty()) Tell_Done(text);
}

void Show_Changed_Entries() {
  events.TableChanged.Emit();
  Redraw_Changed_Entries();
  events.StateChanged.Emit();
}

bool Id_Fits(const QString& id) {
  if (id.size() <= textColumnWidth) return true;
  Message_Box(QStringLiteral("Die Kennung \"%1\" wäre %2 Zeichen lang.\nEs können höchstens %3 Zeichen gespeichert "
                             "werden.\n\nEs wurde nichts verändert.")
                  .arg(id)
                  .arg(id.size())
                  .arg(textColumnWidth),
              MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Karteneintrag"));
  return false;
}
