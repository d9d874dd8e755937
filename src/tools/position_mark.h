#pragma once
#include <QPoint>

// A ring and a cross round a place of the map that was found by its coordinates (Map.PositionMark). Map pixels.

// Shows it there and scrolls to it.
void Show_Place(QPoint map);
// Takes it away. Nothing happens without one.
void Hide_Place();
