#pragma once
#include <QString>
#include <optional>

#include "platform/geodesy.h"

// Reference systems by what files of surveys call them. Nothing for those the program does not count in: other
// projections and datums, zones south of the equator.

// The text of a ".prj" file, in the dialect of any maker.
std::optional<ReferenceSystem> System_Of_Wkt(const QString& text);
std::optional<ReferenceSystem> System_Of_Epsg(int code);  // number in the EPSG register
// The number of the program's own systems; 0 for a zone that does not exist.
int Epsg_Of(const ReferenceSystem& system);
