#pragma once
#include <QString>

// The way from a picture's path to an open map: marker file, picture, table, check of the table, first layout.

// Faults are told here; a map that could not be opened leaves frmMDI.MapOpen false and MapHeightMm -1. No map is open
// before.
void Load_Map(const QString& path);
