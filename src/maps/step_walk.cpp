#include "maps/step_walk.h"

#include <QRect>
#include <algorithm>
#include <optional>

#include "hand/leave_hand.h"
#include "maps/map_check.h"
#include "maps/menu_state.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/task_line.h"
#include "store/header_row.h"
#include "store/history.h"
#include "store/table_file.h"
#include "store/vertex_table.h"
#include "tools/map_tool.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

const QString title = QStringLiteral("Verlauf");

QRect View_On_Map() {
  return {QPoint(Map_X(0), Map_Y(0)), QPoint(Map_X(Map.ViewWidth - 1), Map_Y(Map.ViewHeight - 1))};
}

QRect Box_Of_Vertices(const QString& table) {
  QRect box;
  for (const QPoint& point : Load_Vertices(table)) box |= QRect(point, QSize(1, 1));
  return box;
}

// Where an entry stands, as far as its row tells.
QRect Box_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.IsPolygon() && dbEntries) {
    if (const QRect box = Box_Of_Vertices(EntryId::Parse(row.ID).TableName()); !box.isEmpty()) return box;
  }
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare) {
    const EntryBox box = entry_box(row);
    return {box.x, box.y, std::max(1, box.width), std::max(1, box.height)};
  }
  return {row.Xmap, row.Ymap, 1, 1};
}

EntryRow Row_Last_Seen(const StepFacts::Row& cells) {
  EntryRow row;
  for (const auto& [name, value] : cells) {
    const auto* number = std::get_if<qint64>(&value);
    const auto* text = std::get_if<QString>(&value);
    if (name == QLatin1String("ID") && text) row.ID = *text;
    if (!number) continue;
    const int stored = Stored_Number(*number);
    if (name == QLatin1String("Xmap")) row.Xmap = stored;
    if (name == QLatin1String("Ymap")) row.Ymap = stored;
    if (name == QLatin1String("Xline")) row.Xline = stored;
    if (name == QLatin1String("Yline")) row.Yline = stored;
    if (name == QLatin1String("Typ")) row.Typ = stored;
  }
  return row;
}

bool Is_Header(qint64 key) { return rsEntries->PositionOf(key) == 0; }

// The place of the first entry that was touched, if none of them is to be seen. Where vertices alone were changed no
// row tells of it.
void Show_Where(const WalkResult& result) {
  const QRect view = View_On_Map();
  std::optional<QPoint> first;
  for (const TouchedRow& touched : result.rows) {
    if (touched.there && Is_Header(touched.key)) continue;
    const auto row = touched.there ? Sound_Entry_At(QString::number(touched.key)) : Row_Last_Seen(touched.lastSeen);
    if (!row) continue;
    const QRect box = Box_Of(*row);
    if (view.intersects(box)) return;
    if (!first) first = box.center();
  }
  for (const QString& table : result.rows.empty() ? result.tables : QStringList()) {
    const QRect box = Box_Of_Vertices(table);
    if (view.intersects(box)) return;
    if (!first && !box.isEmpty()) first = box.center();
  }
  if (first) ScrollMap(first->x(), first->y());
}

bool Is_Plain(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  return !type.hidden && (type.IsText() || type.IsPolygon() || type.IsFigure() || type.Kind() == EntryKind::Picture);
}

// What is known of the whole table (scale, plan squares, hidden rows) stays known where one plain entry changed alone.
bool Leaves_Flags(const WalkResult& result) {
  if (result.columnsChanged || result.steps > 1) return false;
  if (result.rows.empty()) return true;  // vertices
  if (result.rows.size() != 1) return false;
  const TouchedRow& touched = result.rows.front();
  const auto row = touched.there ? Sound_Entry_At(QString::number(touched.key)) : Row_Last_Seen(touched.lastSeen);
  return row && Is_Plain(*row);
}

void Take_Header_Again(const WalkResult& result) {
  const auto is = [](const TouchedRow& touched) { return touched.there && Is_Header(touched.key); };
  // Of several steps the last alone tells its rows.
  if (result.steps < 2 && std::none_of(result.rows.begin(), result.rows.end(), is)) return;
  const HeaderRow header = Read_Header();
  PrintFactor = static_cast<float>(header.printFactor);
  GridVisible = header.netVisible;
}

void Follow_Walk(const WalkResult& result) {
  if (!result.context.isEmpty()) Name_User_Table(result.context);
  Take_Header_Again(result);
  if (!Leaves_Flags(result)) Scan_Table();
  Set_Buttons();
  Show_Where(result);
  Redraw_Changed_Entries();
  events.StateChanged.Emit();
}

bool Carry_Out(int position, const QString& told) {
  const StepsUnderTool tool;
  if (!Leave_Hand()) return false;
  const BusyPointer busy;
  WalkResult result;
  try {
    Before_Going_Back(position);
    result = Go_To_Step(position);
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + QStringLiteral("\n\nEs wurde nichts verändert."), MsgButtons::Ok, MsgIcon::Critical,
                title);
    return false;
  }
  Follow_Walk(result);
  Tell_Done(told);
  return true;
}

QString Named(const QString& verb, int step) { return verb + QStringLiteral(": ") + Step_At(step).name; }

const QString undone = QStringLiteral("Rückgängig"), redone = QStringLiteral("Wiederherstellen");

// What a tool is being given is no step yet: its last point is what goes back.
bool Point_Behind() { return Points_Being_Drawn() && Points_Being_Drawn()->Can_Take_Back(); }
bool Point_Ahead() { return Points_Being_Drawn() && Points_Being_Drawn()->Can_Bring_Again(); }

}  // namespace

bool Can_Step_Back() { return Point_Behind() || Step_Position() > 0; }
bool Can_Step_Forward() { return Point_Behind() || Point_Ahead() ? Point_Ahead() : Step_Position() < Step_Count(); }

QString Step_Back_Text() {
  if (Point_Behind()) return undone + QStringLiteral(": ") + Points_Being_Drawn()->Name();
  return Can_Step_Back() ? Named(undone, Step_Position() - 1) : QString();
}

QString Step_Forward_Text() {
  if (Point_Ahead()) return redone + QStringLiteral(": ") + Points_Being_Drawn()->Name();
  return Can_Step_Forward() ? Named(redone, Step_Position()) : QString();
}

void Step_Back() {
  if (Point_Behind()) return Points_Being_Drawn()->Take_Back();
  // Ending what is in the hand may be a step of its own: that is the one.
  const StepsUnderTool tool;
  if (!Leave_Hand() || !Can_Step_Back()) return;
  Carry_Out(Step_Position() - 1, Step_Back_Text());
}

void Step_Forward() {
  if (Point_Ahead()) return Points_Being_Drawn()->Bring_Again();
  if (Point_Behind()) return;  // what is being drawn would go
  const StepsUnderTool tool;
  if (!Leave_Hand() || !Can_Step_Forward()) return;
  Carry_Out(Step_Position() + 1, Step_Forward_Text());
}

void Walk_To_Step(int position) {
  const StepsUnderTool tool;
  if (!Leave_Hand()) return;
  if (position < 0 || position > Step_Count() || position == Step_Position()) return;
  const QString told =
      position == 0 ? QStringLiteral("Verlauf: Anfang") : QStringLiteral("Verlauf: ") + Step_At(position - 1).name;
  Carry_Out(position, told);
}

void Take_Back_Operation() {
  const int later = Steps_After_Undo_Point();
  if (later > 0) {
    const QString question = later == 1
                                 ? QStringLiteral("Auch der spätere Schritt wird zurückgenommen.")
                                 : QStringLiteral("Auch die %1 späteren Schritte werden zurückgenommen.").arg(later);
    if (Message_Box(Menu(QStringLiteral("mnuReset")).Caption + QStringLiteral("\n\n") + question +
                        QStringLiteral("\nMöchten Sie das?"),
                    MsgButtons::YesNo, MsgIcon::Question, title) != MsgAnswer::Yes)
      return;
  }
  Undo_Last();
}

void Tell_Of_Interrupted_Work() {
  if (!History_Was_Interrupted()) return;
  const int count = Step_Position();
  const QString steps =
      count == 0
          ? QStringLiteral("Was Sie zurückgenommen hatten, können Sie mit 'Einträge - Verlauf' wiederherstellen.")
      : count == 1 ? QStringLiteral(
                         "Der eine Schritt dieser Arbeit ist gesichert. Mit 'Einträge - Verlauf' oder "
                         "Strg+Z können Sie ihn ansehen und zurücknehmen.")
                   : QStringLiteral(
                         "Die %1 Schritte dieser Arbeit sind gesichert. Mit 'Einträge - Verlauf' oder "
                         "Strg+Z können Sie sie ansehen und zurücknehmen.")
                         .arg(count);
  Message_Box(
      QStringLiteral("Die Arbeit an dieser Karte wurde unterbrochen, bevor die Karte geschlossen war.\n\n") + steps,
      MsgButtons::Ok, MsgIcon::Information, title);
}

void Tell_Of_Lost_Steps() {
  const QString reason = Lost_History();
  if (reason.isEmpty()) return;
  const QString told = QStringLiteral(
      "Die bisherigen Schritte können nicht mehr zurückgenommen werden; die Einträge selbst sind gesichert.\n\n");
  Message_Box(told + reason, MsgButtons::Ok, MsgIcon::Warning, title);
}
