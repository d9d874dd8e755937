#pragma once
#include <QString>
#include <optional>

#include "store/entry.h"

// What the user has in hand. Nothing of this changes anything; the cursor of the table stays where it is.

// A row that is in the table, or a new text that is being typed.
bool Entry_In_Hand();
// The row in hand; nothing without one and where it cannot be read.
std::optional<EntryRow> Row_In_Hand();
// Is a new text being typed, which has no row yet?
bool Text_Is_New();
// Has the edit box a text that is not in the table yet?
bool Text_Pending();
// The status panel's text for the row in hand: its assignment, then "Karteneintrag verschieben: ...".
QString Entry_Status_Text();
