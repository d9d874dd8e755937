#pragma once
#include <QPoint>
#include <QString>

#include "hand/in_hand.h"
#include "hand/typed_text.h"

// Taking an entry in hand and letting it go. Positions are window pixels. There is one at most, and it is the current
// row (Map.CurBookmark); Map.InHand is its key. A new text that is still being typed is in hand without a row.

// Takes the entry under the position in hand: current row, grid, tool state, live controls. False on the empty map. If
// the text of the former entry cannot be stored, that one stays in hand.
bool Take_Entry_At(QPoint window);
// Takes the row with this key in hand (from the grid, from a search) and scrolls the map to it if it lies outside the
// view. A hidden row gets its tools but no controls. False for the header row, a row that is not there, and if the
// former entry stays in hand.
bool Take_Entry(const QString& bookmark);
// Shows the live controls for the current row: Text2, lblShape with handles, imgBild, imgRfLine; status text of its
// kind. The row is in hand then.
void Activate_Entry();
// "Ok" or a click on the empty map: stores a pending text, hides the controls, tool state "Norm", redraw. False if the
// text could not be stored (the editor stays open).
bool End_Entry();
// The hand lets go without storing: the table is replaced or closed. No redraw.
void Drop_Hand();
// The typed text is forgotten; a new one goes altogether.
void Discard_Pending_Text();
// Opens the edit box for a new text with its upper left corner there, in Font_Of_New_Text and the current colours.
void New_Text(int x, int y);

// Before a redraw typed text is stored that it would leave behind, and a drag put back; after it the live controls are
// placed anew.
void Connect_Hand();
