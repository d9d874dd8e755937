#pragma once
#include <QPoint>

#include "tools/map_tool.h"

// Mouse and keys of the map window as procedures on state: the window only translates its events into these calls, and
// they go to the tool that has the mouse. Positions are window pixels.

// A press is heard by events.MapClicked first, if the button is the left one.
void Map_Mouse_Down(QPoint window, MouseButton button, MouseKeys keys);
// Tells of changes by events.HandChanged and events.InfoBarChanged only.
void Map_Mouse_Move(QPoint window, bool leftDown);
// Only the left button means something.
void Map_Mouse_Up(QPoint window, MouseButton button);
// Comes between the second press and its release.
void Map_Double_Click(QPoint window);
// Key by its Qt number. True if it was used.
bool Map_Key(int key, MouseKeys keys);
// The pointer at the last position of the mouse.
MapPointer Map_Pointer();
// What the tools in use paint over the map.
OverPaint Map_Paint_Over();
