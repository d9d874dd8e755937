#pragma once
#include <QPoint>
#include <QString>
#include <span>
#include <vector>

#include "store/entry.h"

// Lengths and areas of lines, areas and figures. Positions are map pixels, y downward.

// What a map pixel measures.
struct MapMeasure {
  double pixelMm = 0;                    // millimetres on paper
  double perPixel = 0;                   // natural length; without a scale the same as pixelMm
  QString unit = QStringLiteral(" mm");  // " mm", " cm", " m", " km"
  bool hasScale = false;
  bool operator==(const MapMeasure&) const = default;
};

struct ShapeSize {
  int areaPx = 0, perimeterPx = 0;       // whole pixels, halves to even
  double areaNat = 0, perimeterNat = 0;  // in the natural unit, of the rounded pixels
  bool operator==(const ShapeSize&) const = default;
};

// The vertices up to the first one left of the map, where a shape ends.
std::span<const QPoint> Shape_Vertices(std::span<const QPoint> vertices);

// Area of a closed polygon by the trapezoid rule (the surveyor's formula, A. L. F. Meister 1769): half the absolute
// value of the sum of (x2 - x1)(y2 + y1) over all edges. Fewer than two vertices have no size. Error 6 beyond 32 bits.
ShapeSize Polygon_Size(std::span<const QPoint> vertices, double perPixel);

// Of base kinds 20 to 25; `vertices` are needed by the free ones (24, 25) only, which are polygons. All other rows have
// no size. Ellipse: area ab*pi, perimeter by S. Ramanujan, "Modular equations and approximations to pi" (1914), with
// halves of whole pixels. Error 6 beyond 32 bits.
ShapeSize Figure_Size(const EntryRow& row, std::span<const QPoint> vertices, double perPixel);
// The radius that a circle of this width is computed with: its width. So a circle counts four times the area of the
// disc that is drawn. Kept that way, since figures already published rest on it; the handbook tells of it.
double circle_radius(double width);

// One stretch of a line.
struct LineSegment {
  double px = 0, nat = 0;  // length
  double angle = 0;        // degrees clockwise from the upper vertical edge of the sheet, 0 up to below 360
};
// From vertex to vertex, in map pixels and in units of `perPixel`; none of fewer than two vertices.
std::vector<LineSegment> Line_Segments(std::span<const QPoint> vertices, double perPixel);
struct LineLength {
  double px = 0, nat = 0;
};
// The sums of both lengths.
LineLength Total_Length(std::span<const LineSegment> segments);
