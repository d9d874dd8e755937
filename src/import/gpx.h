#pragma once
#include <QString>

#include "import/gps_records.h"

// GPX, versions 1.0 and 1.1: waypoints, tracks with their segments, routes. Names in any namespace; symbols, times and
// extensions are passed over.

// Reads as far as the file is whole; `remark` says where it ends, and that it is none.
GpsFile Read_Gpx(const QString& text);
// Does the text hold the element that begins such a file?
bool Is_Gpx(QStringView text);
