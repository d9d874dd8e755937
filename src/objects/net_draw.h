#pragma once
#include "objects/draw_context.h"
#include "state/coordinate_state.h"

// Draws the net over the entries: lines and, at the left and upper edge of the visible part, labels. Walks the tables
// only. Faults are shown under "Fehler: Koordinatennetz zeichnen".
void Draw_Net(DrawContext& context, const CoordinateState& state);
// Font and line attributes of the net onto a surface: "Courier New" 8, colours, width, style.
void Net_Font(Surface& surface, const CoordinateState& state);
