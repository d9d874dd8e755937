#include "hand/activation.h"

#include "hand/drag_state.h"
#include "hand/group.h"
#include "hand/hand_controls.h"
#include "hand/hand_frame.h"
#include "hand/hand_texts.h"
#include "hand/text_look.h"
#include "hand/tool_state.h"
#include "plansquares/plan_map.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "view/hit_test.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

bool Known_Kind(const EntryType& type) {
  switch (type.Kind()) {
    case EntryKind::Polygon:
    case EntryKind::PolygonRound:
    case EntryKind::Picture:
    case EntryKind::Scale:
    case EntryKind::NorthArrow:
    case EntryKind::Net:
    case EntryKind::PlanSquare:
    case EntryKind::PlanDesign:
      return true;
    default:
      return type.IsText() || type.IsFigure();
  }
}

bool Tell_Unknown(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (Known_Kind(type)) return false;
  Message_Box(hand_texts::unknownType + QString::number(row.Typ), MsgButtons::Ok, MsgIcon::Warning, hand_texts::title);
  return true;
}

// Only rows of a group are worth the walk through the table.
void Find_Group(const EntryRow& row) {
  Map.GroupInHand.clear();
  if (EntryId::Parse(row.ID).hasGroup) Map.GroupInHand = Group_Of(Map.InHand);
  if (Map.GroupInHand.size() < 2) Map.GroupInHand.clear();
}

// False if the row does not come into the hand.
bool Take_Row(const QString& bookmark) {
  if (!rsEntries || !rsEntries->HasRow(bookmark)) return false;
  if (Map.InHand == bookmark) {
    rsEntries->SetBookmark(bookmark);
    Map.CurBookmark = bookmark;
    if (Hand_Is_Hidden()) Activate_Entry();
    return true;
  }
  const bool redraw = Text_Pending();
  if (!Store_Pending_Text()) return false;
  Drop_Hand();
  rsEntries->SetBookmark(bookmark);
  Map.CurBookmark = bookmark;
  EntryRow row;
  try {
    row = Read_Entry(*rsEntries);
  } catch (const Error&) {
    Set_Toolbar(ToolMode::Norm);  // a damaged row: the table window repairs it
    throw;
  }
  const bool taken = rsEntries->Position() > 0 && !Tell_Unknown(row);
  if (taken) {
    Map.InHand = bookmark;
    Set_Toolbar(Tool_Mode_Of(row));
    Activate_Entry();
  } else {
    Set_Toolbar(ToolMode::Norm);
  }
  events.CurrentRowChanged.Emit();
  if (redraw) Redraw_Changed_Entries();
  return taken;
}

bool In_View(int mapX, int mapY) {
  const int x = Window_X(mapX), y = Window_Y(mapY);
  return x >= 0 && y >= 0 && x < Map.ViewWidth && y < Map.ViewHeight;
}

void Give_Up() {
  Drop_Hand();
  InfoBar.Panel[0].clear();
  Set_Toolbar(ToolMode::Norm);
}

}  // namespace

bool Take_Entry_At(QPoint window) {
  const int hit = Hit_Entry(window);
  if (hit == 0) return false;
  const EntryRegion region = Map.EntryRegions.Row(hit);
  try {
    Take_Row(region.Bookmark());
  } catch (const Error& error) {
    if (region.kind != planRegion) throw;
    Tell_Square_Fault(error.text);
  }
  return true;
}

bool Take_Entry(const QString& bookmark) {
  if (!Take_Row(bookmark)) return false;
  const EntryRow row = Read_Entry(*rsEntries);
  if (!In_View(row.Xmap, row.Ymap) && Region_Bounds(rsEntries->Key()).isEmpty()) ScrollMap(row.Xmap, row.Ymap);
  return true;
}

void Activate_Entry() {
  if (!rsEntries || rsEntries->Position() < 1) return;
  const EntryRow row = Read_Entry(*rsEntries);
  Map.InHand = Map.CurBookmark = rsEntries->Bookmark();
  Map.Text2.Tag = EditTag::Old;
  Load_Entry_Colors();
  Load_Text_Box(row);
  Remember_Text_Look(row.Typ, row.Schrift, row.Groesse, row.Eintrag);
  Place_Controls(row);
  Find_Group(row);
  InfoBar.Panel[0] = Entry_Status_Text();
  Show_Hand();
  events.InfoBarChanged.Emit();
}

bool End_Entry() {
  if (!Store_Pending_Text()) return false;
  Give_Up();
  Redraw_Changed_Entries();
  events.HandChanged.Emit();
  return true;
}

void Drop_Hand() {
  Cancel_Drag();
  Unpaint_Hand();
  Hide_Live_Controls();
  Map.EntryRegions.Widen();
  Map.Text2.Tag = EditTag::Old;
  Map.InHand.clear();
  Map.GroupInHand.clear();
  events.HandDropped.Emit();
}

void Discard_Pending_Text() {
  if (Text_Is_New()) {
    Give_Up();
    events.MapPainted.Emit();
  } else if (Text_Pending() && rsEntries && rsEntries->HasRow(Map.InHand)) {
    rsEntries->SetBookmark(Map.InHand);
    Activate_Entry();
  }
  events.HandChanged.Emit();
}

void New_Text(int x, int y) {
  if (!rsEntries || (Entry_In_Hand() && !End_Entry())) return;
  const FontChoice font = Font_Of_New_Text();
  Drop_Hand();
  Load_Font_Into_Box(font);
  EditBox& box = Map.Text2;
  box.Text.clear();
  box.Tag = EditTag::New;
  EntVGColor = Color_Of(CurVG);
  EntHGColor = Color_Of(CurHG);
  Map.TextAt = {Map_X(x), Map_Y(y)};
  EntryRow row;
  row.RA = CurRA;
  Place_Text_Box(row);
  Set_Toolbar(ToolMode::Text);
  InfoBar.Panel[0].clear();
  Show_Hand();
}

// Redraw -------------------------------------------------------------------------------------------------------------

namespace {

void Before_Redraw() {
  Map.HandUnder = {};  // the whole canvas is painted anew
  Drop_Drag_Of_Other_View();
  Store_Text_Left_Behind();
}

// A typed text is written to be seen on the map; one that cannot be stored stays open.
void Hand_Out_Of_Sight() {
  Cancel_Drag();
  if (!Entry_In_Hand()) return;
  const bool pending = Text_Pending();
  if (!Store_Pending_Text()) return;
  if (pending) Redraw_Changed_Entries();
  Hide_Hand();
}

void After_Redraw() {
  if (dragState.Active() || (Map.InHand.isEmpty() && !Text_Is_New())) return;
  Hand_Is_Shown();
  if (Text_Is_New()) {
    EntryRow row;
    row.RA = CurRA;
    Place_Text_Box(row);
    return;
  }
  if (!rsEntries->HasRow(Map.InHand)) return Give_Up();
  if (Map.CurBookmark != Map.InHand) {
    // Another row became the current one: it is the entry in hand now.
    const bool kept = Text_Pending();
    if (kept || !rsEntries->HasRow(Map.CurBookmark)) return Give_Up();
    const QString current = Map.CurBookmark;
    if (!Take_Row(current)) Give_Up();
    return;
  }
  rsEntries->SetBookmark(Map.InHand);
  const EntryRow row = Read_Entry(*rsEntries);
  const bool pending = Text_Pending();
  if (!pending) {
    Load_Entry_Colors();
    Load_Text_Box(row);
  }
  Place_Controls(row);
  Find_Group(row);
  if (Tool_Mode_Of(row) != ToolMode::Norm) Set_Toolbar(Tool_Mode_Of(row));
}

}  // namespace

void Connect_Hand() {
  static int before = 0, after = 0, hide = 0;
  Reconnect(events.HandHidden, hide, Hand_Out_Of_Sight);
  Reconnect(events.BeforeRedraw, before, Before_Redraw);
  Reconnect(events.AfterRedraw, after, After_Redraw);
}
