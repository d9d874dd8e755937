#pragma once
#include "analysis/map_input.h"
#include "workbook/workbook_sheet.h"

// The listing "Kataster": areas, lines, texts and pictures of the map, each block in the order of the texts, with what
// is assigned to an area or line behind it.
Sheet Kataster_Sheet_Of(const SortedMapInput& input);
