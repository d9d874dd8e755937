#include "tools/assign.h"

#include <utility>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

namespace {

const QString title = QStringLiteral("Zuordnen");
const QString undoCaption = QStringLiteral("Rückgängig: Zuordnen");

void Tell(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title); }

// The name by which rows are assigned to the row under the cursor; "" if it is no area (line).
QString Target_Name(bool area) {
  if (rsEntries->Position() < 1) return {};
  const EntryType type = Type_Here();
  const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
  if (!type.IsPolygon() || !(area ? id.IsArea() : id.IsLine())) return {};
  return id.name;
}

void Set_Assignment(EntryRow& row, const QString& target) {
  EntryId id = EntryId::Parse(row.ID);
  if (id.assignment == target) return;
  id.assignment = target;
  row.ID = id.ToText();
}

int Write_Assigned(const std::vector<RowChange>& changes, const QString& undo) {
  for (const RowChange& change : changes)
    if (!Id_Fits(change.after.ID)) return 0;
  return Write_Changes(changes, title, undo);
}

bool Is_Marked(const EntryRow& row) { return EntryType::Parse(row.Typ).mark != Mark::None; }

// The marked rows to the area or line in hand; it is not assigned to itself.
void Assign_Marked(bool area) {
  const QString target = On_Current_Entry() ? Target_Name(area) : QString();
  if (target.isEmpty()) return Tell(QStringLiteral("Bitte wählen Sie zuerst eine Fläche oder Linie aus."));
  const qint64 targetKey = rsEntries->Key();
  int marked = 0;
  const auto changes = Collect_Changes([&](EntryRow& row, qint64 key) {
    if (!Is_Marked(row) || key == targetKey) return;
    ++marked;
    Set_Assignment(row, target);
  });
  if (marked == 0) return Tell(QStringLiteral("Es ist kein Eintrag markiert."));
  if (Entry_In_Hand() && !End_Entry()) return;
  Write_Assigned(changes, undoCaption);
}

// The assignments of the marked rows, or of the current one where none is marked.
void Clear_Assignments() {
  if (Entry_In_Hand() && Map.Text2.Tag == QLatin1String("Change") && !End_Entry()) return;
  bool anyMarked = false;
  auto changes = Collect_Changes([&anyMarked](EntryRow& row, qint64) {
    if (!Is_Marked(row)) return;
    anyMarked = true;
    Set_Assignment(row, {});
  });
  if (!anyMarked) changes = Change_Of_Current([](EntryRow& row, qint64) { Set_Assignment(row, {}); });
  Write_Assigned(changes, anyMarked ? undoCaption : QString());
}

}  // namespace

void Assign_Entries(AssignKind kind) {
  if (!Table_Is_Open()) return;
  Map.WaitingAssignment.clear();
  switch (kind) {
    case AssignKind::None:
      return Clear_Assignments();
    case AssignKind::MarkedToArea:
    case AssignKind::MarkedToLine:
      return Assign_Marked(kind == AssignKind::MarkedToArea);
    case AssignKind::ObjectToArea:
    case AssignKind::ObjectToLine:
      break;
  }
  if (!On_Current_Entry()) return Tell(QStringLiteral("Bitte wählen Sie zuerst den Eintrag aus, der zugeordnet wird."));
  Map.WaitingAssignment = rsEntries->Bookmark();
  Map.AssignToArea = kind == AssignKind::ObjectToArea;
  InfoBar.Panel[0] = Map.AssignToArea ? QStringLiteral("Zuordnen: Bitte klicken Sie auf die Fläche.")
                                      : QStringLiteral("Zuordnen: Bitte klicken Sie auf die Linie.");
  events.StateChanged.Emit();
}

bool Assign_Waiting() { return !Map.WaitingAssignment.isEmpty(); }

bool Assign_Clicked(const QString& targetBookmark) {
  const QString waiting = std::exchange(Map.WaitingAssignment, QString());
  if (waiting.isEmpty() || !Table_Is_Open() || !rsEntries->HasRow(waiting)) return false;
  QString target;
  if (rsEntries->HasRow(targetBookmark) && targetBookmark != waiting) {
    const KeepCurrentRow keep;
    rsEntries->SetBookmark(targetBookmark);
    target = Target_Name(Map.AssignToArea);
  }
  if (target.isEmpty()) {
    Tell(Map.AssignToArea ? QStringLiteral("Das ist keine Fläche. Der Eintrag wurde nicht zugeordnet.")
                          : QStringLiteral("Das ist keine Linie. Der Eintrag wurde nicht zugeordnet."));
    return false;
  }
  if (Entry_In_Hand() && Map.Text2.Tag == QLatin1String("Change") && !End_Entry()) return false;
  const QString current = std::exchange(Map.CurBookmark, waiting);
  const auto changes = Change_Of_Current([&target](EntryRow& row, qint64) { Set_Assignment(row, target); });
  if (rsEntries->HasRow(current)) rsEntries->SetBookmark(Map.CurBookmark = current);
  Write_Assigned(changes, {});
  InfoBar.Panel[0] = QStringLiteral("Zugeordnet: ") + target;
  events.StateChanged.Emit();
  return true;
}
