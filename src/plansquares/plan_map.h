#pragma once
#include <QString>

// Plan squares on the map: do they take clicks, and which of them lies under the mouse.

inline constexpr int planRegion = 16;  // kind of a hit region

// Only while the raster is active do its squares take clicks.
bool Raster_Active();
void Set_Raster_Active(bool active);

// Shows lblPLQ over the square of that hit region, 0 for none. True if it changed.
bool Show_Plan_Label(int hit);
// Tells what is wrong with a square that cannot be taken.
void Tell_Square_Fault(const QString& text);
// The row in that hit region is a square of a raster: it is not dragged by a click.
bool Is_Raster_Square(int hit);
