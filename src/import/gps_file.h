#pragma once
#include <QString>

#include "import/gps_records.h"

// Waypoints and tracks out of a file of any format.

// By its content, and by its ending where that says nothing: the PCX5 family, GPX, what gpsbabel reads, and each of
// these in a ZIP archive. Nameless records have a name afterwards. Raises 53, 70, 7; 5000 with a German text for what
// is empty, binary or of no known format, and what Babel_File raises.
GpsFile Read_Gps_File(const QString& path);
// The same of what a device gave (GPX).
GpsFile Read_Gps_Text(const QString& gpx);
// Is that the ending of a file that can be imported? For files dropped on the map.
bool Is_Gps_File_Name(const QString& path);
