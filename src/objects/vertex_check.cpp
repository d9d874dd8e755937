#include "objects/vertex_check.h"

#include <algorithm>

#include "coordinates/geometry.h"

namespace {

constexpr int tooClose = 2;  // map pixels

bool Apart(int a1, int a2, int b1, int b2) {
  return std::max(a1, a2) < std::min(b1, b2) || std::max(b1, b2) < std::min(a1, a2);
}

// Most edges lie far from each other: their boxes tell it.
bool Cross(QPoint a, QPoint b, QPoint c, QPoint d) {
  if (Apart(a.x(), b.x(), c.x(), d.x()) || Apart(a.y(), b.y(), c.y(), d.y())) return false;
  return Seg_Cross(a, b, c, d);
}

}  // namespace

bool Vertex_Disturbs(std::span<const QPoint> points, bool closed, int number) {
  const int count = static_cast<int>(points.size());
  const int edges = closed ? count : count - 1;  // edge i leads to vertex i; that to vertex 0 only if closed
  if (number < 0 || number >= count || (number == 0 && !closed) || edges < 1) return false;
  const auto at = [&](int i) { return points[static_cast<size_t>((i + count) % count)]; };
  const QPoint from = at(number - 1), to = at(number), step = to - from;
  if (step.x() * step.x() + step.y() * step.y() <= tooClose * tooClose) return true;
  for (int other = closed ? 0 : 1; other < count; ++other) {
    const int apart = std::abs(other - number);
    if (apart < 2 || (closed && apart > count - 2)) continue;
    if (Cross(from, to, at(other - 1), at(other))) return true;
  }
  return false;
}
