#pragma once
#include <QPoint>
#include <QString>

// The entry in hand. Positions are window pixels.

bool Entry_In_Hand();
// Takes the entry under the position in hand: current row, grid, tool state, live controls. False on the empty map.
bool Take_Entry_At(QPoint window);
// Takes the row with this key in hand (from the grid, from a search) and scrolls the map to it.
bool Take_Entry(const QString& bookmark);
// Shows the live controls for the current row: Text2, lblShape with handles, imgBild, imgRfLine; status text of its
// kind.
void Activate_Entry();
// "Ok" or a click on the empty map: stores a pending text, hides the controls, tool state "Norm", redraw. False if the
// text could not be stored (the editor stays open).
bool End_Entry();
// The status panel's text for the current row: "Karteneintrag verschieben: ...".
QString Entry_Status_Text();
// The text in the edit box was changed by the user: Text2.Tag becomes "Change". More than longestText characters are
// refused with a message; the box then keeps `former`.
void Text_Typed(const QString& text);
