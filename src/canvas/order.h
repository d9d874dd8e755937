#pragma once
// Order of layers = table order. 1 and -1 exchange the current row with its neighbour, 10 and -10 bring it to the last
// or first place; all others keep their order. The current row goes along. Undo point "Rückgängig: Verschieben".
// Bookmarks of the rows that moved change: Map.CurBookmark follows.
void Order_Entry(int step);
