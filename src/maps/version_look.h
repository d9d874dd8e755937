#pragma once
#include "store/version_differences.h"

// An earlier state of the table on the map, to be looked at.

// Paints the map with the entries of the version; the table stays as it is, and every redraw shows it again. False if
// the version cannot be read: that was told.
bool Show_Version(const TableVersion& version);
// Takes the whole version and shows it. False if nothing was taken.
bool Take_Back_Version(const TableVersion& version);
// The same for these entries of it alone.
bool Take_Back_Entries(const TableVersion& version, const std::vector<VersionDifference>& entries);
