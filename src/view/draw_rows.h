#pragma once
#include <vector>

#include "objects/draw_context.h"
#include "view/draw_counts.h"

// The one drawing path: rows of rsEntries onto a surface by a transform. Fills the hit list of the context if it has
// one. An entry that cannot be drawn is asked for: deleted, or left out.
DrawCounts Draw_Entries(DrawContext& context);  // every row
// Those at the given positions, which ascend.
DrawCounts Draw_Rows(DrawContext& context, const std::vector<int>& rows);
