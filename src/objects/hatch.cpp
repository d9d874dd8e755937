#include "objects/hatch.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Lines of one direction are the places where a x + b y has certain values; along them runs x (y for vertical ones).
struct Direction {
  double a, b;
  bool vertical = false;
  double Value(QPointF point) const { return a * point.x() + b * point.y(); }
  double Along(QPointF point) const { return vertical ? point.y() : point.x(); }
  QPointF Point(double value, double along) const {
    return vertical ? QPointF(value / a, along) : QPointF(along, (value - a * along) / b);
  }
};
constexpr Direction horizontal{0, 1}, vertical{1, 0, true}, upward{1, 1}, downward{-1, 1};

struct Crossing {
  int line;
  double along;
  bool operator<(const Crossing& other) const { return line != other.line ? line < other.line : along < other.along; }
};

struct Span {
  double low, high;
};

// Values of the direction over the window.
Span Values_Of(const Direction& direction, const QRectF& window) {
  const double corners[] = {direction.Value(window.topLeft()), direction.Value(window.topRight()),
                            direction.Value(window.bottomLeft()), direction.Value(window.bottomRight())};
  return {*std::min_element(std::begin(corners), std::end(corners)),
          *std::max_element(std::begin(corners), std::end(corners))};
}

// One line of the hatch. On images it is put together from small boxes: they serve every mode without a scratch image,
// and a slanted line ends on the outline's rows instead of at a right angle to itself.
void Draw_Stretch(Surface& surface, const Direction& direction, double value, double from, double to, double width) {
  const QRgb color = surface.pen.ForeColor;
  if (surface.IsPaper()) return surface.Line(direction.Point(value, from), direction.Point(value, to));
  const double across = std::max(1.0, std::nearbyint(width)), before = std::floor(across / 2);
  if (direction.vertical) return surface.FilledBox(QRectF(value - before, from, across, to - from), color);
  if (direction.a == 0) return surface.FilledBox(QRectF(from, value - before, to - from, across), color);
  const double run = across == 1 ? 1 : std::nearbyint(across * std::sqrt(2.0)), half = std::floor(run / 2);
  for (double x = from; x < to; ++x) surface.FilledBox(QRectF(x - half, direction.Point(value, x).y(), run, 1), color);
}

void Draw_Direction(DrawContext& context, std::span<const QPointF> outline, const Direction& direction, double width) {
  const double spacing = context.surface.IsPaper() ? 2 * pixelsPerMm : 8;
  const QPointF origin = context.view.Point({0, 0});
  const double phase = direction.Value(origin);
  const QRectF window = context.window.adjusted(-width, -width, width, width);
  const Span seen = Values_Of(direction, window);

  static thread_local std::vector<Crossing> crossings;
  crossings.clear();
  for (size_t i = 0; i < outline.size(); ++i) {
    QPointF from = outline[i], to = outline[i + 1 < outline.size() ? i + 1 : 0];
    if (direction.Value(from) > direction.Value(to)) std::swap(from, to);
    const double low = direction.Value(from), high = direction.Value(to);
    if (low == high) continue;
    // Lower end included, upper end not: a vertex between two edges counts once.
    const double first = std::ceil((std::max(low, seen.low) - phase) / spacing);
    for (int line = static_cast<int>(first); phase + line * spacing < high; ++line) {
      const double value = phase + line * spacing;
      if (value > seen.high) break;
      const double part = (value - low) / (high - low);
      crossings.push_back({line, direction.Along(from) + part * (direction.Along(to) - direction.Along(from))});
    }
  }
  std::sort(crossings.begin(), crossings.end());

  const double nearest = direction.vertical ? window.top() : window.left();
  const double farthest = direction.vertical ? window.bottom() : window.right();
  for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
    const double from = context.view.Round(std::max(crossings[i].along, nearest));
    const double to = context.view.Round(std::min(crossings[i + 1].along, farthest));
    if (from < to) Draw_Stretch(context.surface, direction, phase + crossings[i].line * spacing, from, to, width);
  }
}

}  // namespace

void Draw_Hatch(DrawContext& context, std::span<const QPointF> outline, FillStyle pattern, double width) {
  if (outline.size() < 3) return;
  const KeepPen keep(context.surface);
  context.surface.pen.DrawWidth = width;
  context.surface.pen.pen = PenStyle::Solid;
  const auto Lines = [&](const Direction& direction) { Draw_Direction(context, outline, direction, width); };
  switch (pattern) {
    case FillStyle::Horizontal:
      Lines(horizontal);
      break;
    case FillStyle::Vertical:
      Lines(vertical);
      break;
    case FillStyle::Upward:
      Lines(upward);
      break;
    case FillStyle::Downward:
      Lines(downward);
      break;
    case FillStyle::Cross:
      Lines(horizontal), Lines(vertical);
      break;
    case FillStyle::DiagonalCross:
      Lines(upward), Lines(downward);
      break;
    case FillStyle::Solid:
    case FillStyle::None:
      break;
  }
}
