#pragma once
#include <QPoint>
#include <QRectF>
#include <span>

#include "objects/draw_context.h"
#include "store/entry.h"

// Figures: rectangle, square, ellipse, circle (20..23), free figures (24 straight, 25 rounded) and the frame of a plan
// square (16).
struct FigureShown {
  bool drawn = false;  // false: outside the window, the row is done
  QRectF box;          // surface pixels; of a turned or free figure its bounds
  RegionShape region;  // for the region step: box, or the polygon of a turned or free figure
};

// Draws the figure of the row: its fill by Schrift ("F" + code), then the outline in RA if it is framed. A row without
// a fill in Schrift is an outline in VG. The angle behind "<" turns it counter-clockwise about the middle of its box.
// `vertices` (map pixels) are needed by free figures only. A shape that reaches beyond the window is drawn in its true
// form there. The hit region is left to the caller's region step.
FigureShown Draw_Figure(DrawContext& context, const EntryRow& row, EntryKind kind, std::span<const QPoint> vertices,
                        const EntryColors& colors);
