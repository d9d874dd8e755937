#pragma once
#include <QPointF>
#include <span>

#include "objects/draw_context.h"

// Fills an outline (surface pixels, closed by itself, odd-even) with lines of that pen width in the surface's
// ForeColor and mode. The lines are 8 pixels apart, on paper 2 mm, and lie fast on the map: scrolling does not move
// them. Patterns are those of the fill styles (2 horizontal .. 7 diagonal cross); others draw nothing.
void Draw_Hatch(DrawContext& context, std::span<const QPointF> outline, FillStyle pattern, double width);
