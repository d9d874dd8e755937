#include "objects/line_ends.h"

#include <cmath>
#include <vector>

#include "objects/bezier.h"

namespace {

QRectF Bounds(const std::array<QPointF, 3>& points) {
  QRectF bounds(points[0], points[0]);
  for (const QPointF& point : points) {
    bounds.setLeft(std::min(bounds.left(), point.x()));
    bounds.setRight(std::max(bounds.right(), point.x()));
    bounds.setTop(std::min(bounds.top(), point.y()));
    bounds.setBottom(std::max(bounds.bottom(), point.y()));
  }
  return bounds;
}

void Draw_Mark(DrawContext& context, const LineEnds& ends, QPointF end, QPointF from) {
  const EndMark mark = End_Mark(ends, end, from, context.view.Zoom);
  const double margin = context.surface.pen.DrawWidth * 2 + 1;
  if (!mark.box.adjusted(-margin, -margin, margin, margin).intersects(context.window)) return;
  if (ends.shape == LineEnds::Shape::Arrow) {
    std::array<QPointF, 3> points = mark.arrow;
    for (QPointF& point : points) point = {context.view.Round(point.x()), context.view.Round(point.y())};
    context.surface.Polygon(points);
    return;
  }
  const double x = context.view.Round(mark.box.left()), y = context.view.Round(mark.box.top());
  // A box counts the pixels of both its edges.
  const QRectF box(x, y, context.view.Round(mark.box.right()) - x + 1, context.view.Round(mark.box.bottom()) - y + 1);
  if (ends.shape == LineEnds::Shape::Rectangle)
    context.surface.Box(box);
  else
    context.surface.Ellipse(box);
}

// Points of the line where its parts meet, each with the point its part comes from and the one it goes to.
struct Joint {
  QPointF at, from, to;
};

std::vector<Joint> Joints_Of(const std::vector<QPointF>& points, bool rounded) {
  std::vector<Joint> joints;
  if (!rounded) {
    for (size_t i = 0; i < points.size(); ++i)
      joints.push_back(
          {points[i], i > 0 ? points[i - 1] : points[i], i + 1 < points.size() ? points[i + 1] : points[i]});
    return joints;
  }
  std::vector<QPointF> curve;
  Bezier_Points_Open(points, curve);
  for (size_t i = 0; i < curve.size(); i += 3)
    joints.push_back({curve[i], i > 0 ? curve[i - 1] : curve[i], i + 1 < curve.size() ? curve[i + 1] : curve[i]});
  if (points.size() == 2) joints[0].to = points[1];
  return joints;
}

}  // namespace

EndMark End_Mark(const LineEnds& ends, QPointF end, QPointF from, double zoom) {
  const double length = std::max(1.0, ends.lengthMm) * pixelsPerMm / zoom;
  const double half = std::max(1.0, ends.widthMm) * pixelsPerMm / (2 * zoom);
  EndMark mark;
  mark.shape = ends.shape;
  if (ends.shape != LineEnds::Shape::Arrow) {
    mark.box = QRectF(end.x() - length / 2, end.y() - half, length, 2 * half);
    return mark;
  }
  const double dx = end.x() - from.x(), dy = end.y() - from.y();
  const double distance = std::hypot(dx, dy);
  const QPointF along = distance > 0 ? QPointF(dx, dy) / distance : QPointF(1, 0);
  const QPointF across(-along.y(), along.x());
  const QPointF base = end - along * length;
  mark.arrow = {end, base + across * half, base - across * half};
  mark.box = Bounds(mark.arrow);
  return mark;
}

void Draw_Line_Ends(DrawContext& context, const LineEnds& ends, std::span<const QPoint> vertices, bool rounded,
                    QRgb color, double penWidth) {
  if (!ends.atStart && !ends.atEnd) return;
  std::vector<QPointF> points;  // without repetitions, which have no direction
  for (const QPoint& vertex : vertices) {
    const QPointF point((vertex.x() - context.view.Left) / context.view.Zoom + context.view.originX,
                        (vertex.y() - context.view.Top) / context.view.Zoom + context.view.originY);
    if (points.empty() || points.back() != point) points.push_back(point);
  }
  if (points.size() < 2) return;

  const KeepPen keep(context.surface);
  context.surface.pen = {.ForeColor = color,
                         .FillColor = color,
                         .mode = DrawMode::Copy,
                         .DrawWidth = penWidth,
                         .pen = PenStyle::Solid,
                         .fill = ends.filled ? FillStyle::Solid : FillStyle::None};
  const std::vector<Joint> joints = Joints_Of(points, rounded);
  for (size_t i = 0; i < joints.size(); ++i) {
    const bool first = i == 0, last = i + 1 == joints.size();
    if (ends.atStart && !last && (first || ends.partial)) Draw_Mark(context, ends, joints[i].at, joints[i].to);
    if (ends.atEnd && !first && (last || ends.partial)) Draw_Mark(context, ends, joints[i].at, joints[i].from);
  }
}
