#pragma once
#include <QPoint>

// Mouse and keys of the map window as procedures on state: the window only translates its events into these calls.
enum class MouseButton { Left, Right };
struct MouseKeys {
  bool control = false, shift = false;
};
enum class MapPointer { Arrow, Cross, Move, Busy, Size };

void Map_Mouse_Down(QPoint window, MouseButton button, MouseKeys keys);
// Tells of changes by events.HandChanged and events.InfoBarChanged only.
void Map_Mouse_Move(QPoint window, bool leftDown);
void Map_Mouse_Up(QPoint window, MouseButton button);
void Map_Double_Click(QPoint window);
// Key by its Qt number. True if it was used.
bool Map_Key(int key, MouseKeys keys);
MapPointer Map_Pointer();
