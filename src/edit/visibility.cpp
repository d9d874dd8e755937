#include "edit/visibility.h"

#include "edit/bulk_change.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "state/task_line.h"

namespace {

const QString visibilityTitle = QStringLiteral("Sichtbarkeit");
const QString activityTitle = QStringLiteral("Aktivität");
const QString undoVisibility = QStringLiteral("Rückgängig: Sichtbarkeit ändern");
const QString undoActivity = QStringLiteral("Rückgängig: Aktivität ändern");

void Set_Hidden(EntryRow& row, bool hidden) {
  const EntryType type = EntryType::Parse(row.Typ);
  row.Typ = (hidden ? type.Hidden() : type.Shown()).ToNumber();
}

void Set_Inactive(EntryRow& row, bool inactive) {
  EntryId id = EntryId::Parse(row.ID);
  if (id.inactive == inactive) return;
  id.inactive = inactive;
  row.ID = id.ToText();
}

bool Is_Marked(const EntryRow& row) { return EntryType::Parse(row.Typ).Chosen(); }

bool All_Ids_Fit(const std::vector<RowChange>& changes) {
  for (const RowChange& change : changes)
    if (!Id_Fits(change.after.ID)) return false;
  return true;
}

}  // namespace

void Hide_Current() {
  const auto changes =
      Change_Of_Current([](EntryRow& row, qint64) { Set_Hidden(row, !EntryType::Parse(row.Typ).hidden); });
  Write_Changes(changes, visibilityTitle);
}

void Hide_Marked() {
  if (!Table_Is_Open()) return;
  const auto changes = Collect_Changes([](EntryRow& row, qint64) {
    if (Is_Marked(row)) Set_Hidden(row, true);
  });
  Write_Changes(changes, visibilityTitle, undoVisibility);
}

void Show_All_Hidden() {
  if (!Table_Is_Open()) return;
  const auto changes = Collect_Changes([](EntryRow& row, qint64) { Set_Hidden(row, false); });
  Write_Changes(changes, visibilityTitle, undoVisibility);
}

void Deactivate_Current() {
  const auto changes =
      Change_Of_Current([](EntryRow& row, qint64) { Set_Inactive(row, !EntryId::Parse(row.ID).inactive); });
  if (!All_Ids_Fit(changes) || Write_Changes(changes, activityTitle) == 0) return;
  InfoBar.Panel[0] = EntryId::Parse(changes[0].after.ID).inactive ? QStringLiteral("deaktiviert") : QString();
  events.StateChanged.Emit();
}

void Deactivate_Marked() {
  if (!Table_Is_Open()) return;
  const auto changes = Collect_Changes([](EntryRow& row, qint64) {
    if (Is_Marked(row)) Set_Inactive(row, true);
  });
  if (All_Ids_Fit(changes) && Write_Changes(changes, activityTitle, undoActivity) > 0)
    Tell_Done_Of_Marked(QStringLiteral("De-aktiviert: ") + Entries_Text(std::ssize(changes)));
}

void Activate_All_Inactive() {
  if (!Table_Is_Open()) return;
  const auto changes = Collect_Changes([](EntryRow& row, qint64) { Set_Inactive(row, false); });
  if (Write_Changes(changes, activityTitle, undoActivity) > 0)
    Tell_Done(QStringLiteral("Aktiviert: ") + Entries_Text(std::ssize(changes)));
}
