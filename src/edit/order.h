#pragma once
// Order of layers = table order. 1 and -1 exchange the current row with its neighbour, 10 and -10 bring it to the last
// or first place; all others keep their order. The current row goes along. Undo point "Rückgängig: Verschieben".
// Bookmarks of the rows that moved change: Map.CurBookmark follows.
void Order_Entry(int step);
// The bare change: no message at the ends, no undo point, no redraw. False if it failed; it was told then.
bool Move_In_Order(int step);
