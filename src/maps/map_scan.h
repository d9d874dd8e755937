#pragma once
#include <QString>

// The scan of a map and its size.

// Reads the picture and makes it the open map's: its path, its size in pixels and, at 96 dpi, in millimetres, the view
// at 100 %. Raises what reading a picture raises.
void Take_Scan(const QString& path);
void Map_Geometry();  // millimetres on paper per map pixel at PrintFactor
