#pragma once
#include <QPoint>

#include "hand/drag_state.h"

// Moving the entry in hand, by mouse or keys. The row is written once, at the end.

// What would be gripped there: a handle or the foot point of the entry in hand, the entry itself, or nothing.
Grip Grip_At(QPoint window, int* handle = nullptr);
// A pending text is stored first; if that fails nothing begins.
void Begin_Drag(Grip grip, int handle, QPoint window);
void Drag_To(QPoint window);  // moves outline and controls; no redraw
// Writes Xmap, Ymap (both corners of a plan square, the vertices of a line or area, all rows of a group), size or foot
// point, in one transaction; redraw. The foot point of a single text or picture stays where it is. A drag that ends
// outside the window asks whether to delete the entry; if not, it goes back. A position beyond 16 bits refuses the
// whole with a message. Less than 3 pixels are a click: nothing is written.
void End_Drag(QPoint window);
void Move_In_Hand(int dx, int dy);  // arrow keys: map pixels
