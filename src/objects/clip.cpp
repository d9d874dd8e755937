#include "objects/clip.h"

#include <cmath>

namespace {

constexpr unsigned left = 1, right = 2, above = 4, below = 8;

struct Limits {
  double x1, y1, x2, y2;
  explicit Limits(const QRectF& area) : x1(area.left()), y1(area.top()), x2(area.right()), y2(area.bottom()) {}
  template <typename Point>
  unsigned Code(const Point& point) const {
    const double x = point.x(), y = point.y();
    return static_cast<unsigned>(x < x1) * left | static_cast<unsigned>(x > x2) * right |
           static_cast<unsigned>(y < y1) * above | static_cast<unsigned>(y > y2) * below;
  }
};

// A run is a stretch of vertices that all lie beyond the same side. Within that half-plane any path from its first to
// its last vertex looks the same from the window: nothing. So the inner vertices can go; rounded edges hang on the
// neighbour as well, so there two vertices stay at each end.
template <typename Point>
void Shorten(std::span<const Point> points, const QRectF& area, bool rounded, std::vector<QPointF>& out) {
  out.clear();
  if (points.empty()) return;
  const Limits limits(area);
  const size_t ends = rounded ? 2 : 1;
  size_t next = 0;  // first vertex not yet decided
  const auto Keep = [&](size_t from, size_t to) {
    for (size_t i = std::max(from, next); i <= to; ++i) out.emplace_back(points[i].x(), points[i].y());
    next = std::max(next, to + 1);
  };
  size_t first = 0;
  const auto End_Run = [&](size_t last) {
    Keep(first, std::min(first + ends - 1, last));
    Keep(last + 1 > first + ends ? last + 1 - ends : first, last);
  };
  unsigned common = limits.Code(points[0]);
  unsigned previous = common;
  for (size_t i = 1; i < points.size(); ++i) {
    const unsigned code = limits.Code(points[i]);
    if (const unsigned shared = common & code) {
      common = shared;
    } else {
      End_Run(i - 1);
      common = previous & code;
      first = common ? i - 1 : i;
      if (!common) common = code;
    }
    previous = code;
  }
  if (common && first == 0) return;  // all of it beyond one side
  End_Run(points.size() - 1);
}

// One side of the far rectangle: what lies beyond it is cut off along it.
void Cut_Side(const std::vector<QPointF>& in, std::vector<QPointF>& out, QPointF corner1, QPointF corner2,
              bool closed) {
  constexpr double far = 1e9;
  const QPointF along = corner2 - corner1;
  const double length = std::hypot(along.x(), along.y());
  const QPointF edge1 = corner1 - along * (far / length), edge2 = corner2 + along * (far / length);
  const auto Inside = [&](QPointF point) {
    return along.x() * (point.y() - corner1.y()) - along.y() * (point.x() - corner1.x()) >= 0;
  };
  out.clear();
  for (size_t i = 0; i < in.size(); ++i) {
    const QPointF& point = in[i];
    const QPointF& former = in[i > 0 ? i - 1 : in.size() - 1];
    if ((i > 0 || closed) && Inside(point) != Inside(former)) {
      double x = 0, y = 0;
      if (Clip_Segment(former.x(), former.y(), point.x(), point.y(), edge1.x(), edge1.y(), edge2.x(), edge2.y(), x, y))
        out.emplace_back(x, y);
    }
    if (Inside(point)) out.push_back(point);
  }
}

}  // namespace

int Clip_Segment(double x1, double y1, double x2, double y2, double ex1, double ey1, double ex2, double ey2,
                 double& outX, double& outY) {
  const double dx = x2 - x1, dy = y2 - y1, ex = ex2 - ex1, ey = ey2 - ey1;
  const double cross = dx * ey - dy * ex;
  if (cross == 0) return 0;
  const double along = ((ex1 - x1) * ey - (ey1 - y1) * ex) / cross;
  const double edge = ((ex1 - x1) * dy - (ey1 - y1) * dx) / cross;
  if (along < 0 || along > 1 || edge < 0 || edge > 1) return 0;
  // An axis-parallel edge gives its own coordinate exactly.
  outX = ex == 0 ? ex1 : x1 + along * dx;
  outY = ey == 0 ? ey1 : y1 + along * dy;
  return -1;
}

void Clip_Outline(std::span<const QPoint> points, const QRectF& area, bool rounded, std::vector<QPointF>& out) {
  Shorten(points, area, rounded, out);
}

void Clip_Outline(std::span<const QPointF> points, const QRectF& area, bool rounded, std::vector<QPointF>& out) {
  Shorten(points, area, rounded, out);
}

bool Beyond(std::span<const QPointF> points, const QRectF& limit) {
  const Limits limits(limit);
  return std::any_of(points.begin(), points.end(), [&](const QPointF& point) { return limits.Code(point) != 0; });
}

void Cut_Far(std::vector<QPointF>& points, const QRectF& limit, bool closed) {
  if (!Beyond(points, limit)) return;
  std::vector<QPointF> other;
  Cut_Side(points, other, limit.topLeft(), limit.topRight(), closed);
  Cut_Side(other, points, limit.topRight(), limit.bottomRight(), closed);
  Cut_Side(points, other, limit.bottomRight(), limit.bottomLeft(), closed);
  Cut_Side(other, points, limit.bottomLeft(), limit.topLeft(), closed);
}

QRectF Map_Area(const DrawContext& context, double margin) {
  const ViewTransform& view = context.view;
  const QRectF seen = context.window.adjusted(-margin, -margin, margin, margin);
  return {(seen.left() - view.originX) * view.Zoom + view.Left, (seen.top() - view.originY) * view.Zoom + view.Top,
          seen.width() * view.Zoom, seen.height() * view.Zoom};
}

QRectF Far_Limit(const DrawContext& context) {
  constexpr double reach = 10000;  // well within what the painter's fixed-point numbers hold
  return context.window.adjusted(-reach, -reach, reach, reach);
}
