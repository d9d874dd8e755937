#include "tools/hand_tool.h"

#include <qnamespace.h>

#include "edit/figure_extras.h"
#include "edit/marks.h"
#include "edit/vertex_edit.h"
#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "hand/tool_state.h"
#include "objects/reference_line.h"
#include "plansquares/plan_map.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "store/entry.h"
#include "tools/drag.h"
#include "view/cursor_coordinates.h"
#include "view/hit_test.h"

namespace {

constexpr int farStep = 10;  // map pixels of an arrow key with Shift

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
  if (Type_Here().IsPolygon()) return;
  Begin_Drag(Grip::Entry, -1, window);
}

// "Text: Amsel": what the entry under the pointer is, and what it says.
QString Text_Of(const EntryRegion& region) {
  if (!rsEntries->HasRow(region.Bookmark())) return {};
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(region.Bookmark());
  QString name = Entry_Name();
  name.replace(u'\n', u' ');
  const QString text = rsEntries->Text(column::Eintrag);
  return text.isEmpty() || name.trimmed() == text ? name.trimmed() : name.trimmed() + QStringLiteral(": ") + text;
}

bool Delete_In_Hand() {
  if (!Entry_In_Hand() || dragState.Active()) return false;
  if (Map.InHand.isEmpty()) {
    Discard_Pending_Text();
  } else {
    Map.CurBookmark = Map.InHand;
    Delete_With_Extras();
  }
  return true;
}

bool Move_By_Key(QPoint by) {
  if (Map.InHand.isEmpty() || dragState.Active()) return false;
  Move_In_Hand(by.x(), by.y());
  return true;
}

class HandTool final : public MapTool {
 public:
  QString Name() const override { return {}; }

  MapPointer Cursor(QPoint window) const override {
    if (dragState.Active()) {
      const bool sized = dragState.grip == Grip::Handle || dragState.grip == Grip::Vertex;
      return sized ? MapPointer::Size : MapPointer::Move;
    }
    const Grip grip = Grip_At(window);
    if (grip == Grip::Handle || grip == Grip::Vertex) return MapPointer::Size;
    return grip != Grip::None || Hit_Entry(window) > 0 ? MapPointer::Move : MapPointer::Arrow;
  }

  QString Status() const override {
    if (under == 0) return Entry_Status_Text();
    const EntryRegion region = Map.EntryRegions.Row(under);
    if (region.kind == footRegion) return hand_texts::footPoint;
    return region.Bookmark() == Map.InHand ? Entry_Status_Text() : Text_Of(region);
  }
  QString Status_Key() const override { return statusKey; }

  void Press(QPoint window, MouseKeys keys) override {
    if (dragState.Active()) return;
    if (keys.control && !keys.shift && Insert_Vertex_At(window)) return;
    if (keys.control || keys.shift) {
      Mark_At(window);
      Show_Plan_Label(Hit_Entry(window));  // a marked square tells its text
      return;
    }
    int handle = -1;
    const Grip grip = Grip_At(window, &handle);
    takenNow = grip == Grip::None;
    if (!takenNow) return Begin_Drag(grip, handle, window);
    Press_Entry(window);
  }

  void Move(QPoint window, bool leftDown) override {
    if (dragState.Active()) {
      if (leftDown)
        Drag_To(window);
      else
        Cancel_Drag();  // the button was let go where nobody told it
    }
    under = dragState.Active() ? 0 : Hit_Entry(window);
    if (Show_Plan_Label(under)) events.HandChanged.Emit();
    if (!dragState.Active()) statusKey = Key_Under();
  }

  void Release(QPoint window) override {
    if (!dragState.Active()) return;
    const bool click = dragState.grip == Grip::Entry && !dragState.moved && dragState.start == window;
    End_Drag(window);
    if (!click || takenNow) return;
    // A click, and what was gripped lies under another entry: that one is meant.
    const int hit = Hit_Entry(window);
    if (hit > 0 && Map.EntryRegions.Row(hit).Bookmark() != Map.InHand) Take_Entry_At(window);
  }

  void Double_Click(QPoint window) override {
    if (!Entry_In_Hand()) Take_Entry_At(window);
  }

  bool Right_Click(QPoint window) override {
    if (dragState.Active()) return true;
    const int hit = Hit_Entry(window);
    if (hit > 0 && Map.EntryRegions.Row(hit).Bookmark() != Map.InHand) Take_Entry_At(window);
    Insert_Popup(window.x(), window.y());
    return true;
  }

  bool Key(int key, MouseKeys keys) override {
    const int step = keys.shift ? farStep : 1;
    switch (key) {
      case Qt::Key_Delete:
        return Delete_In_Hand();
      case Qt::Key_Return:
      case Qt::Key_Enter:
        return Entry_In_Hand() && (End_Entry(), true);
      case Qt::Key_Left:
        return Move_By_Key({-step, 0});
      case Qt::Key_Right:
        return Move_By_Key({step, 0});
      case Qt::Key_Up:
        return Move_By_Key({0, -step});
      case Qt::Key_Down:
        return Move_By_Key({0, step});
      default:
        return false;
    }
  }

  bool Escape() override {
    if (dragState.Active())
      Cancel_Drag();
    else if (Text_Pending())
      Discard_Pending_Text();
    else if (Entry_In_Hand())
      End_Entry();
    else
      return false;
    return true;
  }

  OverPaint Paint_Over() const override {
    QPainterPath path;
    if (!dragState.Active() || dragState.outline.size() < 2) return {};
    path.addPolygon(dragState.outline);
    if (dragState.closed) path.closeSubpath();
    return Dashed(path);
  }

 private:
  QString Key_Under() const {
    if (under == 0) return Cursor_Tag() + Coord.CalFile + Map.InHand;
    const EntryRegion& region = Map.EntryRegions.Row(under);
    return (region.kind == footRegion ? QStringLiteral("Rg") : QStringLiteral("Tx1")) + region.Bookmark() + u' ' +
           Map.InHand;
  }

  bool takenNow = false;  // the entry came into the hand by the press that was the last one
  int under = 0;          // hit region under the mouse at the last move
  QString statusKey;
};

std::shared_ptr<MapTool> hand;
const OnReset fresh(hand);

}  // namespace

const std::shared_ptr<MapTool>& Hand_Tool() {
  if (!hand) hand = std::make_shared<HandTool>();
  return hand;
}
