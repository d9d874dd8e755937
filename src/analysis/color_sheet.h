#pragma once
#include "analysis/color_assignment.h"
#include "analysis/map_input.h"
#include "workbook/workbook_sheet.h"

// The sheet "Zuordnung": every entry with its colour of the map, then the species with their numbers per colour.
Sheet Color_Sheet(const MapInput& input, const ColorAssignment& assignment, const ColorOptions& options);
