#pragma once
#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <array>
#include <span>

#include "objects/draw_context.h"
#include "store/entry_id.h"

// End marks of lines. Sizes are millimetres on the map at 100 %: pixels = mm * pixelsPerMm / Zoom, the length along
// the line (arrow) or along x (box, circle), the width across.
struct EndMark {
  LineEnds::Shape shape = LineEnds::Shape::Arrow;
  std::array<QPointF, 3> arrow;  // tip at the line's end, then the two base points
  QRectF box;                    // of a rectangle or circle, the line's end in its middle; else the arrow's bounds
};

// The mark at `end` of a piece that comes from `from`. Both in surface pixels.
EndMark End_Mark(const LineEnds& ends, QPointF end, QPointF from, double zoom);

// Draws the marks of a line: at its start and end as the flags say, or at both ends of every part (`partial`).
// Vertices are map pixels; coinciding ones at an end are passed over for the direction.
void Draw_Line_Ends(DrawContext& context, const LineEnds& ends, std::span<const QPoint> vertices, bool rounded,
                    QRgb color, double penWidth);
