#pragma once
#include <QPoint>

#include "store/entry.h"

// frmMoveObjects: all entries, or the marked ones, by a distance in map pixels. Kind 7 and every foot point go along,
// so do vertices, both corners of plan squares. One transaction, undo point "Rückgängig: Verschieben". A position
// beyond 16 bits refuses the whole with a message.
struct MoveRequest {
  double dx = 0, dy = 0;
  bool markedOnly = false;
};
int Move_Entries(const MoveRequest& request);  // rows moved
// Undo of the window's own back button: takes the last Move_Entries back while it is the operation to be undone.
void Move_Back();
// Adds dx, dy to every position of one row, vertices included. Shared by drag, keys, Move_Entries and copies. Error 6
// where a position would leave 16 bits; nothing is changed then. Shift_Vertices leaves stop marks alone.
void Shift_Row(EntryRow& row, int dx, int dy);
void Shift_Vertices(const EntryRow& row, int dx, int dy);  // of its vertex table, if it has one
