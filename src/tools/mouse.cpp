#include "tools/mouse.h"

#include <qnamespace.h>
#include <optional>
#include <utility>

#include "hand/hand_texts.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/step.h"
#include "tools/hand_tool.h"
#include "view/cursor_coordinates.h"

namespace {

struct Seen {
  QPoint mouse{-1, -1};
  QString key;  // what the status panel tells of: it is written only when this changes
};
Seen seen;
const OnReset fresh(seen);

// Held for the whole call: a tool that ends in it is still there when it returns.
std::shared_ptr<MapTool> Tool_To_Ask() {
  const auto tool = Tool_With_The_Mouse();
  return tool ? tool : Hand_Tool();
}

bool Set_Panel(size_t number, const QString& text) {
  if (InfoBar.Panel[number] == text) return false;
  InfoBar.Panel[number] = text;
  return true;
}

bool Show_Position(const PanelTexts& texts) {
  const bool changed = Set_Panel(1, texts.position);
  // How many entries cannot be seen is worth more than datum and zone, not than the latitude.
  const bool counts = Map.HiddenCount + Map.InactiveCount > 0;
  const bool beside = !texts.beside.isEmpty() && !(Coord.Metric() && counts);
  return (beside && Set_Panel(2, texts.beside)) || changed;
}

void Hover(QPoint window, const MapTool& tool) {
  const PanelTexts texts = Cursor_Texts({Map_X(window.x()), Map_Y(window.y())});
  bool changed = Show_Position(texts);
  const QString key = tool.Name() + u' ' + tool.Status_Key();
  if (key != seen.key) {
    seen.key = key;
    const QString task = tool.Status();
    changed = Set_Panel(0, task.isEmpty() ? texts.kind : task) || changed;
    // How many entries cannot be seen or hit is worth more than what the numbers mean.
    if (Map.HiddenCount + Map.InactiveCount == 0)
      changed = Set_Panel(2, texts.beside.isEmpty() ? hand_texts::fromCorner : texts.beside) || changed;
    events.HandChanged.Emit();
  }
  if (changed) events.InfoBarChanged.Emit();
}

void Ask_For_The_End() {
  if (Message_Box(hand_texts::pause, MsgButtons::YesNo, MsgIcon::Question, {}, MsgDefault::Second) == MsgAnswer::Yes)
    events.EndWanted.Emit();
}

bool Escape(MapTool& tool) {
  if (tool.Escape()) return true;
  if (Tool_Laid_Over())
    Take_Tool_Off();
  else if (Map_Tool_In_Use())
    Drop_Map_Tool();
  else
    return false;
  return true;
}

}  // namespace

void Map_Mouse_Down(QPoint window, MouseButton button, MouseKeys keys) {
  if (!frmMDI.MapOpen || !rsEntries) return;
  seen.mouse = window;
  const auto tool = Tool_To_Ask();
  if (button == MouseButton::Right) {
    if (!tool->Right_Click(window)) Hand_Tool()->Right_Click(window);
    return;
  }
  // Whoever wants to know where the map is clicked, whatever the click means.
  if (!Tool_Laid_Over()) events.MapClicked.Emit({Map_X(window.x()), Map_Y(window.y())});
  tool->Press(window, keys);
}

void Map_Mouse_Move(QPoint window, bool leftDown) {
  if (!frmMDI.MapOpen || !rsEntries) return;
  seen.mouse = window;
  const auto tool = Tool_To_Ask();
  tool->Move(window, leftDown);
  Hover(window, *tool);
}

void Map_Mouse_Up(QPoint window, MouseButton button) {
  if (button != MouseButton::Left) return;
  seen.mouse = window;
  Tool_To_Ask()->Release(window);
}

void Map_Double_Click(QPoint window) {
  if (frmMDI.MapOpen) Tool_To_Ask()->Double_Click(window);
}

bool Map_Key(int key, MouseKeys keys) {
  if (!frmMDI.MapOpen) return false;
  // A key that is held comes again and again.
  std::optional<UndoStep> held;
  if (key >= Qt::Key_Left && key <= Qt::Key_Down)
    held.emplace(UndoStep::Gesture{QStringLiteral("Pfeil ") + Map.InHand});
  const auto tool = Tool_To_Ask();
  if (key == Qt::Key_Escape) return Escape(*tool);
  if (tool->Key(key, keys)) return true;
  if (key == Qt::Key_Pause) return Ask_For_The_End(), true;
  return Hand_Tool()->Key(key, keys);
}

MapPointer Map_Pointer() { return frmMDI.MapOpen ? Tool_To_Ask()->Cursor(seen.mouse) : MapPointer::Arrow; }

OverPaint Map_Paint_Over() {
  const MapTool* tool = Map_Tool_In_Use();
  OverPaint paint = tool ? tool->Paint_Over() : Hand_Tool()->Paint_Over();
  if (const MapTool* over = Tool_Laid_Over())
    for (OverLine& line : over->Paint_Over()) paint.push_back(std::move(line));
  return paint;
}
