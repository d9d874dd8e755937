#include "hand/typed_text.h"

#include "hand/hand_controls.h"
#include "hand/hand_frame.h"
#include "hand/hand_texts.h"
#include "hand/in_hand.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/entry_edit.h"
#include "store/transaction.h"

namespace {

// The row the saved text went to gets the exact position back: on the way through window pixels a zoomed map loses it.
void Write_Exact_Position(QPoint at) {
  EntryRow row = Read_Entry(*rsEntries);
  if (EntryType::Parse(row.Typ).Kind() == EntryKind::Scale || QPoint(row.Xmap, row.Ymap) == at) return;
  row.Xmap = at.x();
  row.Ymap = at.y();
  Update_Entry(row);
}

}  // namespace

void Text_Typed(const QString& typed) {
  const QString text = Stored_Lines(typed);
  if (!Map.Text2.Visible || text == Stored_Lines(Map.Text2.Text)) return;
  if (text.size() > longestText) {
    Message_Box(hand_texts::textTooLong, MsgButtons::Ok, MsgIcon::Warning, hand_texts::title);
    return events.HandChanged.Emit();
  }
  if (!Text_Is_New()) Map.Text2.Tag = QStringLiteral("Change");
  Map.Text2.Text = text;
  Unpaint_Hand();
  EntryRow row;
  row.RA = CurRA;
  if (!Map.InHand.isEmpty() && rsEntries->HasRow(Map.InHand)) {
    rsEntries->SetBookmark(Map.InHand);
    row = Read_Entry(*rsEntries);
  }
  Place_Text_Box(row);
  Show_Hand();
}

bool Store_Pending_Text() {
  if (!Text_Pending()) return true;
  if (!rsEntries || !dbEntries) return false;
  if (!Text_Is_New()) {
    // A row that was hidden or deleted meanwhile takes no text.
    const bool there = rsEntries->HasRow(Map.InHand);
    if (there) rsEntries->SetBookmark(Map.InHand);
    if (!there || rsEntries->Integer(column::Typ) < 0) {
      Map.Text2.Tag = QStringLiteral("Old");
      return true;
    }
    Map.CurBookmark = Map.InHand;
  }
  const QString former = Map.Text2.Tag;
  const QPoint at = Map.TextAt;
  try {
    const bool saved = In_Transaction([at] {
      if (!Save_Text_Entry(Window_X(at.x()), Window_Y(at.y()), Map.Text2.Text)) return false;
      Write_Exact_Position(at);
      return true;
    });
    if (saved) Map.InHand = Map.CurBookmark;
    return saved;
  } catch (...) {
    Map.Text2.Tag = former;
    throw;
  }
}

void Store_Text_Left_Behind() {
  if (!Text_Pending() || !View_Has_Moved() || Map.Text2.Text.size() > Tbl.EintragSize) return;
  try {
    Store_Pending_Text();
  } catch (const Error&) {
    // The text stays open; leaving the entry tells what is wrong.
  }
}
