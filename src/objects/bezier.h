#pragma once
#include <QPointF>
#include <span>
#include <vector>

// Smooth curves through the middles of the sides of an outline: point 0, then three points a piece (two control points,
// both at the vertex, and the next middle). `out` is emptied first.

// Closed: starts and ends at the middle between the last and the first vertex. 3 * n + 1 points, none for n < 2.
void Bezier_Points(std::span<const QPointF> vertices, std::vector<QPointF>& out);
// Open: from the first vertex to the last one. Two vertices give a straight piece.
void Bezier_Points_Open(std::span<const QPointF> vertices, std::vector<QPointF>& out);
// The curve as a polyline, about `step` surface pixels a chord, at most 64 chords a piece.
void Flatten_Bezier(std::span<const QPointF> curve, std::vector<QPointF>& out, double step = 4);
