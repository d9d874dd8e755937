#pragma once
#include <QPoint>
#include <QString>
#include <optional>

#include "store/entry.h"
#include "store/entry_edit.h"

// The entry in hand. Positions are window pixels. There is one at most, and it is the current row (Map.CurBookmark);
// Map.InHand is its key. A new text that is still being typed is in hand without a row.

// A row that is in the table, or a new text that is being typed.
bool Entry_In_Hand();
// The row in hand; nothing without one and where it cannot be read. The cursor stays.
std::optional<EntryRow> Row_In_Hand();
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
// The status panel's text for the current row: its assignment, then "Karteneintrag verschieben: ...".
QString Entry_Status_Text();
// The text in the edit box was changed by the user: Text2.Tag becomes "Change". More than longestText characters are
// refused with a message; the box then keeps `former`.
void Text_Typed(const QString& text);
// Has the edit box a text that is not in the table yet?
bool Text_Pending();
// Stores it, at its exact map position. True if nothing is pending afterwards.
bool Store_Pending_Text();
// A text as the edit box stores it: in its font and the colours of the next entry.
TypedText Typed_Text(QPoint map, const QString& text);
// The typed text is forgotten; a new one goes altogether.
void Discard_Pending_Text();
// Opens the edit box for a new text with its upper left corner there, in Font_Of_New_Text and the current colours.
void New_Text(int x, int y);

// Frame of the active text, vertices of a line or area, frame of a group: painted on the canvas over the entries.
// A redraw paints them by itself.
void Paint_Hand();
// Gives the canvas back what they cover.
void Unpaint_Hand();
// Stores typed text before a redraw that leaves it behind, places the live controls anew after each.
void Connect_Hand();
