#pragma once
#include <QStringList>

#include "analysis/map_input.h"
#include "platform/workbook_sheet.h"

// The listing "Kataster": areas, lines, texts and pictures of the map, each block in the order of the texts, with what
// is assigned to an area or line behind it.
struct KatasterInput {
  // The map's rows in the order of their texts, as the table's own sorting by Eintrag gives them.
  MapInput map;
  QStringList columns;              // titles of the user's columns
  std::vector<QStringList> values;  // of each row in turn, one for each of these columns
};
Sheet Kataster_Sheet_Of(const KatasterInput& input);
