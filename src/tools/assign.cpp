#include "tools/assign.h"

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/map_state.h"
#include "state/task_line.h"
#include "tools/map_tool.h"
#include "view/hit_test.h"

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

// Nothing of it is seen on the map: the status bar says it.
void Write_Assigned(const std::vector<RowChange>& changes, const QString& undo, const QString& done) {
  for (const RowChange& change : changes)
    if (!Id_Fits(change.after.ID)) return;
  if (Write_Changes(changes, title, undo) > 0) Tell_Done_Of_Marked(done + Entries_Text(std::ssize(changes)));
}

bool Is_Marked(const EntryRow& row) { return EntryType::Parse(row.Typ).Chosen(); }

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
  Write_Assigned(changes, undoCaption, QStringLiteral("Zugeordnet zu ") + target + QStringLiteral(": "));
}

// The assignments of the marked rows, or of the current one where none is marked.
void Clear_Assignments() {
  if (Entry_In_Hand() && Map.Text2.Tag == EditTag::Change && !End_Entry()) return;
  bool anyMarked = false;
  auto changes = Collect_Changes([&anyMarked](EntryRow& row, qint64) {
    if (!Is_Marked(row)) return;
    anyMarked = true;
    Set_Assignment(row, {});
  });
  if (!anyMarked) changes = Change_Of_Current([](EntryRow& row, qint64) { Set_Assignment(row, {}); });
  Write_Assigned(changes, anyMarked ? undoCaption : QString(), QStringLiteral("Zuordnung aufgehoben: "));
}

// The row to the area or line under the cursor of the table.
void Assign_To(const QString& source, const QString& target, bool area) {
  if (!Table_Is_Open() || !rsEntries->HasRow(source)) return;
  QString name;
  if (rsEntries->HasRow(target) && target != source) {
    const KeepCurrentRow keep;
    rsEntries->SetBookmark(target);
    name = Target_Name(area);
  }
  if (name.isEmpty())
    return Tell(area ? QStringLiteral("Das ist keine Fläche. Der Eintrag wurde nicht zugeordnet.")
                     : QStringLiteral("Das ist keine Linie. Der Eintrag wurde nicht zugeordnet."));
  if (!Store_Pending_Text()) return;
  const auto changes = Collect_Changes([&](EntryRow& row, qint64 key) {
    if (QString::number(key) == source) Set_Assignment(row, name);
  });
  Write_Assigned(changes, {}, {});
  Tell_Done(QStringLiteral("Zugeordnet: ") + name);
}

// Waits for the click on the area or line the entry is assigned to. A click on the empty map chooses nothing.
class AssignTool final : public MapTool {
 public:
  explicit AssignTool(bool toArea) : area(toArea) {}
  QString Name() const override { return area ? QStringLiteral("AdObj") : QStringLiteral("AdObjLin"); }
  QString Status() const override {
    return area ? QStringLiteral("Zuordnen: Bitte klicken Sie auf die Fläche.")
                : QStringLiteral("Zuordnen: Bitte klicken Sie auf die Linie.");
  }
  bool Keeps_Hand() const override { return true; }
  void Press(QPoint window, MouseKeys) override {
    const int hit = Hit_Entry(window);
    if (hit == 0) return;
    const QString source = Map.ToolRow;
    End_Map_Tool();
    Assign_To(source, Map.EntryRegions.Row(hit).Bookmark(), area);
  }

 private:
  bool area;
};

}  // namespace

void Assign_Entries(AssignKind kind) {
  if (!Table_Is_Open()) return;
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
  Use_Map_Tool(std::make_unique<AssignTool>(kind == AssignKind::ObjectToArea), rsEntries->Bookmark());
}
