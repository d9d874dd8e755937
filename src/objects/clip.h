#pragma once
#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <span>
#include <vector>

#include "objects/draw_context.h"

// Clipping of lines and areas. The rule: nothing that can be seen may change. So an edge that touches the window keeps
// its two vertices as they are (a cut edge would be rastered differently by a pixel here and there); only runs of
// vertices that lie wholly on one side of the window are shortened to their ends.

// Crossing of the segment 1-2 with the edge e1-e2: -1 and the cross point if they meet, 0 if not (or if parallel).
int Clip_Segment(double x1, double y1, double x2, double y2, double ex1, double ey1, double ex2, double ey2,
                 double& outX, double& outY);

// Vertices needed to draw the outline inside `area`, in order, into `out` (which is emptied first). One pass. Empty if
// nothing can be seen: all vertices lie on one side. An area that encloses the window keeps vertices round it. For
// `rounded` outlines (edges smoothed between their middles) the neighbours of each visible edge are kept too.
// Serves closed and open outlines. Points and area have the same unit.
void Clip_Outline(std::span<const QPoint> points, const QRectF& area, bool rounded, std::vector<QPointF>& out);
void Clip_Outline(std::span<const QPointF> points, const QRectF& area, bool rounded, std::vector<QPointF>& out);

// Cuts an outline at a far rectangle, adding its corners where an area goes round them, so that no coordinate lies
// beyond it. Does nothing if all points are within.
void Cut_Far(std::vector<QPointF>& points, const QRectF& limit, bool closed);

// Margin around the window within which everything is drawn, for a pen of that width (surface pixels).
inline double Clip_Margin(double penWidth) { return 5 + 2 * penWidth; }
// The window with a margin, in map pixels.
QRectF Map_Area(const DrawContext& context, double margin);
// The rectangle beyond which no coordinate is handed to the painter (surface pixels).
QRectF Far_Limit(const DrawContext& context);
// Does any point lie outside the rectangle?
bool Beyond(std::span<const QPointF> points, const QRectF& limit);
