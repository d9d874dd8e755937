#pragma once
#include <QStringView>

#include "import/gps_records.h"

// Text files of waypoints and tracks with the kind of record as first character of a line: the PCX5 family, and the
// dialect of our own with the columns Name, Zone, Rechtswert, Hochwert, Bemerkung.

// Reads all of it: waypoints and tracks, in one file or in two. Lines end by CR LF, LF or CR. Records that cannot be
// read become faults; `remark` says it where no line told of columns.
GpsFile Read_Pcx5(QStringView text);
// Does the text look like one? Judged by its first lines.
bool Is_Pcx5(QStringView text);

// How degrees are written.
enum class DegreeWriting {
  Unknown,  // by the number of digits
  Decimal,  // 49.7330353
  Minutes,  // 4943.98212, the last two whole digits are minutes
  Seconds,  // 494358.927, minutes and seconds
};
// "N4943.98212", "E 11 05 50.8", "-11,09", "49°43'58,9": degrees, north and east positive. Nothing for what is none.
std::optional<double> Read_Gps_Degrees(QStringView text, DegreeWriting writing);
