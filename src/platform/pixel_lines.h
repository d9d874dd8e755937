#pragma once
#include <QPoint>
#include <QRect>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <span>

#include "platform/surface.h"

// Pixels of a pen of width 1 with gaps: lengths of mark and gap in turn.
class PenRhythm {
 public:
  explicit PenRhythm(PenStyle style) {
    for (const int length : Lengths(style)) period += length;
    size_t at = 0;
    bool on = true;
    for (const int length : Lengths(style)) {
      for (int i = 0; i < length; ++i) marks[at++] = on;
      on = !on;
    }
  }
  // Is the pen down at that pixel of its way?
  bool Down(qint64 step) const { return period == 0 || marks[static_cast<size_t>(step % period)]; }

  // Pixels of mark and gap in turn; empty for pens without gaps.
  static std::span<const int> Lengths(PenStyle style) {
    static constexpr int dash[] = {12, 4}, dot[] = {3, 3}, dashDot[] = {9, 4, 3, 4}, dashDotDot[] = {9, 3, 3, 3, 3, 3};
    switch (style) {
      case PenStyle::Dash:
        return dash;
      case PenStyle::Dot:
        return dot;
      case PenStyle::DashDot:
        return dashDot;
      case PenStyle::DashDotDot:
        return dashDotDot;
      default:
        return {};
    }
  }

 private:
  int period = 0;
  std::array<bool, 32> marks{};
};

// Pixels of a line without its last one.
inline qint64 Line_Steps(QPoint from, QPoint to) {
  return std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
}

// Calls `plot(x, y, step)` for the pixels of a line that lie in `area`: from the first (step 0) up to, but without, the
// last. The painter's own lines leave out the right or lower end instead, whichever way the line runs.
template <class Plot>
void Walk_Line(QPoint from, QPoint to, const QRect& area, Plot plot) {
  const qint64 dx = to.x() - from.x(), dy = to.y() - from.y(), steps = Line_Steps(from, to);
  if (steps == 0 || area.isEmpty()) return;
  const bool flat = std::abs(dx) >= std::abs(dy);
  // Steps at which the longer direction is within the area.
  const int start = flat ? from.x() : from.y(), forward = (flat ? dx : dy) > 0 ? 1 : -1;
  const int low = flat ? area.left() : area.top(), high = flat ? area.right() : area.bottom();
  const qint64 first = std::max<qint64>(0, forward > 0 ? low - start : start - high);
  const qint64 end = std::min<qint64>(steps, (forward > 0 ? high - start : start - low) + 1);
  const qint64 across = std::abs(flat ? dy : dx);
  const int side = (flat ? dy : dx) > 0 ? 1 : -1, sideStart = flat ? from.y() : from.x();
  // Side steps are step * across / steps, halves up; the remainder is carried along.
  qint64 carried = (2 * first * across + steps) % (2 * steps), moved = (2 * first * across + steps) / (2 * steps);
  for (qint64 step = first; step < end; ++step) {
    const int along = start + forward * static_cast<int>(step), beside = sideStart + side * static_cast<int>(moved);
    const int x = flat ? along : beside, y = flat ? beside : along;
    if (flat ? y >= area.top() && y <= area.bottom() : x >= area.left() && x <= area.right()) plot(x, y, step);
    carried += 2 * across;
    if (carried >= 2 * steps) {
      carried -= 2 * steps;
      ++moved;
    }
  }
}
