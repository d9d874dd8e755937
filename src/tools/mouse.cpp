#include "tools/mouse.h"

#include <qnamespace.h>
#include <QStringList>
#include <algorithm>

#include "edit/copy.h"
#include "edit/figure_extras.h"
#include "edit/marks.h"
#include "edit/symbols.h"
#include "edit/vertex_edit.h"
#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "hand/tool_state.h"
#include "objects/reference_line.h"
#include "plansquares/plan_map.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry_edit.h"
#include "tools/assign.h"
#include "tools/drag.h"
#include "tools/map_tool.h"
#include "view/cursor_coordinates.h"
#include "view/hit_test.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

constexpr int farStep = 10;  // map pixels of an arrow key with Shift

QPoint lastMouse(-1, -1);
QString shownKey;  // what the status panel tells of: it is written only when this changes

// The position under the mouse comes into the middle, at twice the size.
void Zoom_In_At(QPoint window) {
  const auto zoom = static_cast<double>(Map.Zoom);
  const double wanted = std::max(0.125, zoom / 2), ratio = wanted / zoom;
  if (ratio >= 1) return;
  // The view keeps what is under a given position: this is the one that brings the click into the middle.
  const auto fixed = [ratio](int at, int size) { return qRound((at - size / 2.0 * ratio) / (1 - ratio)); };
  Zoom_At(wanted, fixed(window.x(), Map.ViewWidth), fixed(window.y(), Map.ViewHeight));
}

void Lupe_Click(QPoint window, MouseButton button) {
  if (button == MouseButton::Left) return Zoom_In_At(window);
  if (dialogHooks.ZoomWindow) dialogHooks.ZoomWindow();
}

// True if the click belonged to something that waited for it.
bool Tool_Click(QPoint window) {
  if (Map.Tool == QLatin1String("Text")) {
    New_Text(window.x(), window.y());
    return true;
  }
  if (Map.Tool == QLatin1String("Symb")) {
    Place_Symbol(window);
    return true;
  }
  if (Map.Tool == QLatin1String("Bild")) {
    Choose_Tool({});
    if (Add_Picture(window, QString()) && rsEntries->Position() > 0) Take_Entry(rsEntries->Bookmark());
    return true;
  }
  if (Duplicate_Waiting()) {
    Place_Duplicate(window);
    return true;
  }
  if (!Assign_Waiting()) return false;
  const int hit = Hit_Entry(window);
  return hit > 0 && Assign_Clicked(Map.EntryRegions.Row(hit).Bookmark());
}

void Mark_At(QPoint window) {
  const int hit = Hit_Entry(window);
  if (hit == 0) return;
  const QString bookmark = Map.EntryRegions.Row(hit).Bookmark();
  if (Entry_In_Hand() && !End_Entry()) return;
  if (!rsEntries->HasRow(bookmark)) return;
  rsEntries->SetBookmark(bookmark);
  Map.CurBookmark = bookmark;
  events.CurrentRowChanged.Emit();
  Mark_Obj();
}

bool Is_Outline(const EntryType& type) { return type.IsPolygon(); }

// Pressing on another entry takes it; it can be dragged in the same move, unless it is a large thing that is easily
// hit by accident.
void Press_Entry(QPoint window) {
  const int hit = Hit_Entry(window);
  if (hit == 0) {
    if (Entry_In_Hand()) End_Entry();
    return;
  }
  const EntryRegion region = Map.EntryRegions.Row(hit);
  Take_Entry_At(window);
  if (Map.InHand != region.Bookmark()) return;
  if (region.kind == footRegion && Map.imgRfLine.Visible) return Begin_Drag(Grip::FootPoint, -1, window);
  if (Is_Raster_Square(hit)) return;
  if (Is_Outline(Type_Here())) return;
  Begin_Drag(Grip::Entry, -1, window);
}

void Right_Click(QPoint window) {
  const int hit = Hit_Entry(window);
  if (hit > 0 && Map.EntryRegions.Row(hit).Bookmark() != Map.InHand) Take_Entry_At(window);
  Insert_Popup(window.x(), window.y());
}

QString Hover_Key(int hit) {
  if (Map.LupeOn) return QStringLiteral("Lp");
  if (!Map.Tool.isEmpty()) return QStringLiteral("Tx2") + Map.Tool;
  if (Duplicate_Waiting()) return QStringLiteral("Dc");
  if (Assign_Waiting()) return QStringLiteral("PA");
  if (hit > 0) {
    const EntryRegion& region = Map.EntryRegions.Row(hit);
    return (region.kind == footRegion ? QStringLiteral("Rg") : QStringLiteral("Tx1")) + region.Bookmark() + u' ' +
           Map.InHand;
  }
  return Cursor_Tag() + Coord.CalFile + Map.InHand;
}

QString Hover_Text(int hit) {
  if (Map.LupeOn) return hand_texts::lupe;
  if (const MapTool* tool = Map_Tool_In_Use()) return tool->Status();
  if (Map.Tool == QLatin1String("Text")) return hand_texts::placeText;
  if (Map.Tool == QLatin1String("Symb")) return hand_texts::placeSymbol;
  if (Map.Tool == QLatin1String("Bild")) return hand_texts::placePicture;
  if (Duplicate_Waiting()) return hand_texts::placeDuplicate;
  if (Assign_Waiting()) return hand_texts::chooseTarget;
  if (hit == 0) return Entry_Status_Text();
  const EntryRegion region = Map.EntryRegions.Row(hit);
  if (region.kind == footRegion) return hand_texts::footPoint;
  if (region.Bookmark() == Map.InHand) return Entry_Status_Text();
  if (!rsEntries->HasRow(region.Bookmark())) return {};
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(region.Bookmark());
  QString name = Entry_Name();
  name.replace(u'\n', u' ');
  const QString text = rsEntries->Text(column::Eintrag);
  return text.isEmpty() || name.trimmed() == text ? name.trimmed() : name.trimmed() + QStringLiteral(": ") + text;
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

void Hover(QPoint window) {
  const PanelTexts texts = Cursor_Texts({Map_X(window.x()), Map_Y(window.y())});
  bool changed = Show_Position(texts);
  const int hit = dragState.Active() || Map_Tool_In_Use() ? 0 : Hit_Entry(window);
  if (Show_Plan_Label(dragState.Active() ? 0 : hit)) events.HandChanged.Emit();
  const QString key = Hover_Key(hit);
  if (!dragState.Active() && key != shownKey) {
    shownKey = key;
    const QString task = Hover_Text(hit);
    changed = Set_Panel(0, task.isEmpty() ? texts.kind : task) || changed;
    // How many entries cannot be seen or hit is worth more than what the numbers mean.
    if (Map.HiddenCount + Map.InactiveCount == 0)
      changed = Set_Panel(2, texts.beside.isEmpty() ? hand_texts::fromCorner : texts.beside) || changed;
    events.HandChanged.Emit();
  }
  if (changed) events.InfoBarChanged.Emit();
}

bool Escape() {
  if (dragState.Active()) {
    Cancel_Drag();
  } else if (Map.LupeOn) {
    Toggle_Lupe();
  } else if (Map_Tool_In_Use()) {
    Drop_Map_Tool();
  } else if (!Map.Tool.isEmpty()) {
    Choose_Tool({});
  } else if (Duplicate_Waiting() || Assign_Waiting()) {
    Map.WaitingDuplicate.clear();
    Map.WaitingAssignment.clear();
    InfoBar.Panel[0] = Entry_Status_Text();
    events.StateChanged.Emit();
  } else if (Text_Pending()) {
    Discard_Pending_Text();
  } else if (Entry_In_Hand()) {
    End_Entry();
  } else {
    return false;
  }
  return true;
}

bool Delete_Key() {
  if (!Entry_In_Hand() || dragState.Active()) return false;
  if (Map.InHand.isEmpty()) {
    Discard_Pending_Text();
  } else {
    Map.CurBookmark = Map.InHand;
    Delete_With_Extras();
  }
  return true;
}

bool Arrow_Key(int key, int step) {
  if (Map.InHand.isEmpty() || dragState.Active()) return false;
  switch (key) {
    case Qt::Key_Left:
      Move_In_Hand(-step, 0);
      return true;
    case Qt::Key_Right:
      Move_In_Hand(step, 0);
      return true;
    case Qt::Key_Up:
      Move_In_Hand(0, -step);
      return true;
    case Qt::Key_Down:
      Move_In_Hand(0, step);
      return true;
    default:
      return false;
  }
}

}  // namespace

void Map_Mouse_Down(QPoint window, MouseButton button, MouseKeys keys) {
  if (!frmMDI.MapOpen || !rsEntries || dragState.Active()) return;
  lastMouse = window;
  if (Map.LupeOn) return Lupe_Click(window, button);
  if (button == MouseButton::Left) events.MapClicked.Emit({Map_X(window.x()), Map_Y(window.y())});
  MapTool* tool = Map_Tool_In_Use();
  if (button == MouseButton::Right) {
    if (!tool || !tool->Right_Click(window)) Right_Click(window);
    return;
  }
  if (tool) return tool->Down(window, keys);
  if (Tool_Click(window)) return;
  if (keys.control && !keys.shift && Insert_Vertex_At(window)) return;
  if (keys.control || keys.shift) {
    Mark_At(window);
    Show_Plan_Label(Hit_Entry(window));  // a marked square tells its text
    return;
  }
  int handle = -1;
  const Grip grip = Grip_At(window, &handle);
  if (grip != Grip::None) return Begin_Drag(grip, handle, window);
  Press_Entry(window);
}

void Map_Mouse_Move(QPoint window, bool leftDown) {
  if (!frmMDI.MapOpen || !rsEntries) return;
  lastMouse = window;
  if (MapTool* tool = Map_Tool_In_Use(); tool && !Map.LupeOn) {
    tool->Move(window, leftDown);
  } else if (dragState.Active()) {
    if (leftDown) {
      Drag_To(window);
    } else {
      Cancel_Drag();  // the button was let go where nobody told it
    }
  }
  Hover(window);
}

void Map_Mouse_Up(QPoint window, MouseButton button) {
  if (MapTool* tool = Map_Tool_In_Use(); tool && button == MouseButton::Left && !Map.LupeOn) return tool->Up(window);
  if (button != MouseButton::Left || !dragState.Active()) return;
  lastMouse = window;
  const bool click = dragState.grip == Grip::Entry && !dragState.moved && dragState.start == window;
  End_Drag(window);
  if (!click) return;
  // A click, and what was gripped lies under another entry: that one is meant.
  const int hit = Hit_Entry(window);
  if (hit > 0 && Map.EntryRegions.Row(hit).Bookmark() != Map.InHand) Take_Entry_At(window);
}

void Map_Double_Click(QPoint window) {
  if (!frmMDI.MapOpen || Map.LupeOn) return;
  if (MapTool* tool = Map_Tool_In_Use()) return tool->Double_Click(window);
  if (Entry_In_Hand()) return;
  Take_Entry_At(window);
}

bool Map_Key(int key, MouseKeys keys) {
  if (!frmMDI.MapOpen) return false;
  if (MapTool* tool = Map_Tool_In_Use(); tool && !Map.LupeOn && tool->Key(key, keys)) return true;
  switch (key) {
    case Qt::Key_Escape:
      return Escape();
    case Qt::Key_Delete:
      return Delete_Key();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (Entry_In_Hand()) return End_Entry(), true;
      return false;
    case Qt::Key_Pause:
      if (Message_Box(hand_texts::pause, MsgButtons::YesNo, MsgIcon::Question, {}, MsgDefault::Second) ==
          MsgAnswer::Yes)
        events.EndWanted.Emit();
      return true;
    default:
      return Arrow_Key(key, keys.shift ? farStep : 1);
  }
}

MapPointer Map_Pointer() {
  if (!frmMDI.MapOpen) return MapPointer::Arrow;
  if (Map.LupeOn || !Map.Tool.isEmpty() || Duplicate_Waiting() || Assign_Waiting()) return MapPointer::Cross;
  if (dragState.Active()) {
    const bool sized = dragState.grip == Grip::Handle || dragState.grip == Grip::Vertex;
    return sized ? MapPointer::Size : MapPointer::Move;
  }
  const Grip grip = Grip_At(lastMouse);
  if (grip == Grip::Handle || grip == Grip::Vertex) return MapPointer::Size;
  return grip != Grip::None || Hit_Entry(lastMouse) > 0 ? MapPointer::Move : MapPointer::Arrow;
}
