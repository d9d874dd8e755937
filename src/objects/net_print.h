#pragma once
#include <QMarginsF>
#include <QRectF>

#include "objects/draw_context.h"
#include "state/coordinate_state.h"

// Draws the net onto a sheet. The context's transform places the map; lines are cut to `printedArea` and labelled in
// the margins round it where they cross its edges, on the left and right running along the edge. Below it, else above
// it, stands what net it is. A margin that is narrower than the text stays empty. All in surface pixels.
void Print_Net(DrawContext& context, const CoordinateState& state, const QRectF& printedArea, const QMarginsF& margins);
