#pragma once
#include <functional>
#include <optional>

#include "objects/draw_context.h"
#include "view/draw_counts.h"

// Paints the map window's picture, Map.canvas: ground and entries, and the hit list with them. A map is open.

// All of it. Of a large table only the rows that may be seen are looked at.
DrawCounts Paint_Map();
// Only what rows written since the last painting touched and touch. Nothing was painted where that is not known, or
// where anything else has changed.
std::optional<DrawCounts> Paint_Changes();
// Calls the work with a context on the view, over what was painted.
void Paint_Over(const std::function<void(DrawContext&)>& draw);
void Forget_Painted();  // another map will be painted
