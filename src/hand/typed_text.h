#pragma once
#include <QPoint>
#include <QString>

#include "store/entry_edit.h"

// The text in the edit box (Map.Text2) of the entry in hand.

// The text in the edit box was changed by the user: Text2.Tag becomes "Change". More than longestText characters are
// refused with a message; the box then keeps its text.
void Text_Typed(const QString& typed);
// Stores what is not in the table yet, at its exact map position. True if nothing is pending afterwards.
bool Store_Pending_Text();
// A text as the edit box stores it: in its font and the colours of the next entry.
TypedText Typed_Text(QPoint map, const QString& text);
// Scrolling or zooming away from a changed text stores it; one that does not fit stays open and goes along.
void Store_Text_Left_Behind();
