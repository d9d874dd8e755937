#pragma once
#include <QString>

// The text in the edit box (Map.Text2) of the entry in hand.

// The text in the edit box was changed by the user: Text2.Tag becomes "Change". More than longestText characters are
// refused with a message; the box then keeps its text.
void Text_Typed(const QString& typed);
// Stores what is not in the table yet, at its exact map position. True if nothing is pending afterwards.
bool Store_Pending_Text();
// Scrolling or zooming away from a changed text stores it; one that does not fit stays open and goes along.
void Store_Text_Left_Behind();
