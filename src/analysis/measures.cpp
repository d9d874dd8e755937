#include "analysis/measures.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"

namespace {
constexpr double pi = 3.14159265358979;

ShapeSize Size_Of(double areaPx, double perimeterPx, double perPixel) {
  ShapeSize size;
  size.areaPx = To_Int32(areaPx);
  size.perimeterPx = To_Int32(perimeterPx);
  size.areaNat = perPixel * perPixel * size.areaPx;
  size.perimeterNat = perPixel * size.perimeterPx;
  return size;
}

double Ellipse_Perimeter(double a, double b) {
  if (a + b == 0) return 0;
  const double lambda = std::abs(a - b) / (a + b);
  const double square = 3 * lambda * lambda;
  return pi * (a + b) * (1 + square / (10 + std::sqrt(4 - square)));
}

double Distance(QPoint a, QPoint b) {
  const double dx = b.x() - a.x(), dy = b.y() - a.y();
  return std::sqrt(dy * dy + dx * dx);
}
}  // namespace

std::span<const QPoint> Shape_Vertices(std::span<const QPoint> vertices) {
  const auto end = std::find_if(vertices.begin(), vertices.end(), [](QPoint point) { return point.x() < 0; });
  return vertices.first(static_cast<size_t>(end - vertices.begin()));
}

ShapeSize Polygon_Size(std::span<const QPoint> vertices, double perPixel) {
  const std::span<const QPoint> points = Shape_Vertices(vertices);
  if (points.size() < 2) return {};
  double perimeter = 0, twice = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    const QPoint from = points[i], to = points[(i + 1) % points.size()];
    perimeter += Distance(from, to);
    twice += static_cast<double>(to.x() - from.x()) * (to.y() + from.y());
  }
  return Size_Of(std::abs(To_Int32(twice) / 2.0), perimeter, perPixel);
}

double circle_radius(double width) { return width; }

ShapeSize Figure_Size(const EntryRow& row, std::span<const QPoint> vertices, double perPixel) {
  const EntryBox box = entry_box(row);
  const double w = box.width, h = box.height;
  switch (EntryType::Parse(row.Typ).Kind()) {
    case EntryKind::Rectangle:
    case EntryKind::Square:
      return Size_Of(w * h, 2 * w + 2 * h, perPixel);
    case EntryKind::Ellipse: {
      const int a = To_Int32(w / 2), b = To_Int32(h / 2);
      return Size_Of(static_cast<double>(a) * b * pi, Ellipse_Perimeter(a, b), perPixel);
    }
    case EntryKind::Circle: {
      const double r = circle_radius(w);
      return Size_Of(r * r * pi, 2 * r * pi, perPixel);
    }
    case EntryKind::FreeFigure:
    case EntryKind::FreeFigureRound:
      return Polygon_Size(vertices, perPixel);
    default:
      return {};
  }
}

std::vector<LineSegment> Line_Segments(std::span<const QPoint> vertices, double perPixel) {
  const std::span<const QPoint> points = Shape_Vertices(vertices);
  std::vector<LineSegment> segments;
  for (size_t i = 0; i + 1 < points.size(); ++i) {
    LineSegment segment;
    segment.px = Distance(points[i], points[i + 1]);
    segment.nat = perPixel * segment.px;
    const double right = points[i + 1].x() - points[i].x(), up = points[i].y() - points[i + 1].y();
    segment.angle = std::atan2(right, up) * 180 / pi;
    if (segment.angle < 0) segment.angle += 360;
    if (segment.angle >= 360) segment.angle = 0;
    segments.push_back(segment);
  }
  return segments;
}

LineLength Total_Length(std::span<const LineSegment> segments) {
  LineLength total;
  for (const LineSegment& segment : segments) {
    total.px += segment.px;
    total.nat += segment.nat;
  }
  return total;
}
