#include "coordinates/net_clip.h"

#include <algorithm>

namespace {

// Narrows the part [from, to] of the way to where start + part * step lies between low and high.
bool Narrow(double start, double step, double low, double high, double& from, double& to) {
  if (step == 0) return start >= low && start <= high;
  const double first = (low - start) / step, second = (high - start) / step;
  from = std::max(from, std::min(first, second));
  to = std::min(to, std::max(first, second));
  return from <= to;
}

}  // namespace

bool Clip_Segment(QPointF& a, QPointF& b, const QRectF& area) {
  const QPointF start = a, step = b - a;
  double from = 0, to = 1;
  if (!Narrow(start.x(), step.x(), area.left(), area.right(), from, to)) return false;
  if (!Narrow(start.y(), step.y(), area.top(), area.bottom(), from, to)) return false;
  if (from > 0) a = start + from * step;
  if (to < 1) b = start + to * step;
  return true;
}
