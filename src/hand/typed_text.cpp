#include "hand/typed_text.h"

#include "hand/hand_controls.h"
#include "hand/hand_frame.h"
#include "hand/hand_texts.h"
#include "hand/in_hand.h"
#include "hand/text_look.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/entry.h"

void Text_Typed(const QString& typed) {
  const QString text = Stored_Lines(typed);
  if (!Map.Text2.Visible || text == Stored_Lines(Map.Text2.Text)) return;
  if (text.size() > longestText) {
    Message_Box(hand_texts::textTooLong, MsgButtons::Ok, MsgIcon::Warning, hand_texts::title);
    return events.HandChanged.Emit();
  }
  if (!Text_Is_New()) Map.Text2.Tag = EditTag::Change;
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
  const UndoStep typing({}, UndoStep::Joins::Nothing);  // whatever asks for the text comes after it
  if (!Text_Is_New()) {
    // A row that was hidden or deleted meanwhile takes no text.
    const bool there = rsEntries->HasRow(Map.InHand);
    if (there) rsEntries->SetBookmark(Map.InHand);
    if (!there || Type_Here().hidden) {
      Map.Text2.Tag = EditTag::Old;
      return true;
    }
    Map.CurBookmark = Map.InHand;
  }
  const TextRow row = Text_Is_New() ? TextRow::New : TextRow::Current;
  if (!Save_Text_Entry(Typed_Text(Map.TextAt, Map.Text2.Text), row)) return false;
  Map.Text2.Tag = EditTag::Old;
  Map.InHand = Map.CurBookmark;
  return true;
}

TypedText Typed_Text(QPoint map, const QString& text) {
  const FontChoice choice = Font_Of_Box();
  return {map, text, choice.font, choice.size, CurVG, CurHG, CurRA};
}

void Store_Text_Left_Behind() {
  if (!Text_Pending() || !View_Has_Moved() || Map.Text2.Text.size() > Tbl.EintragSize) return;
  try {
    Store_Pending_Text();
  } catch (const Error&) {
    // The text stays open; leaving the entry tells what is wrong.
  }
}
