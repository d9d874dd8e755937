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

// The lines of one direction: where they lie and how many pixels wide they are, along a row or, for level ones, a
// column. Lines wider than their spacing would meet twice.
struct Family {
  Direction direction;
  double spacing, phase, across, before;

  Family(const DrawContext& context, const Direction& lines, double width) : direction(lines) {
    spacing = context.surface.IsPaper() ? 2 * pixelsPerMm : 8;
    phase = lines.Value(context.view.Point({0, 0}));
    const bool slanted = lines.a != 0 && lines.b != 0;
    across = std::clamp(std::nearbyint(slanted && width > 1 ? width * std::sqrt(2.0) : width), 1.0, spacing);
    before = std::floor(across / 2);
  }
  bool Holds(double x, double y) const {
    const double offset = direction.Value({x, y}) - phase + before;
    return offset - std::floor(offset / spacing) * spacing < across;
  }
};

// A box of the hatch less the pixels another family has drawn.
void Fill_Besides(Surface& surface, const QRectF& box, const Family* other) {
  const QRgb color = surface.pen.ForeColor;
  if (!other) return surface.FilledBox(box, color);
  for (double y = box.top(); y < box.bottom(); ++y)
    for (double x = box.left(); x < box.right(); ++x)
      if (!other->Holds(x, y)) surface.FilledBox(QRectF(x, y, 1, 1), color);
}

// One line of the hatch. On images it is put together from small boxes: they serve every mode without a scratch image,
// and a slanted line ends on the outline's rows instead of at a right angle to itself.
void Draw_Stretch(Surface& surface, const Family& family, double value, double from, double to, const Family* other) {
  const Direction& direction = family.direction;
  if (surface.IsPaper()) return surface.Line(direction.Point(value, from), direction.Point(value, to));
  const double first = value - family.before;
  if (direction.vertical) {
    Fill_Besides(surface, QRectF(first, from, family.across, to - from), other);
  } else if (direction.a == 0) {
    Fill_Besides(surface, QRectF(from, first, to - from, family.across), other);
  } else {
    for (double x = from; x < to; ++x)
      Fill_Besides(surface, QRectF(x - family.before, direction.Point(value, x).y(), family.across, 1), other);
  }
}

void Draw_Family(DrawContext& context, std::span<const QPointF> outline, const Family& family, const Family* other) {
  const auto& [direction, spacing, phase, across, before] = family;
  const QRectF window = context.window.adjusted(-across, -across, across, across);
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
    if (from < to) Draw_Stretch(context.surface, family, phase + crossings[i].line * spacing, from, to, other);
  }
}

}  // namespace

void Draw_Hatch(DrawContext& context, std::span<const QPointF> outline, FillStyle pattern, double width) {
  if (outline.size() < 3) return;
  const KeepPen keep(context.surface);
  context.surface.pen.DrawWidth = width;
  context.surface.pen.pen = PenStyle::Solid;
  const auto Lines = [&](const Direction& direction) {
    Draw_Family(context, outline, Family(context, direction, width), nullptr);
  };
  // Where two lines cross, the NotXor mode would take the first one away again.
  const auto Crossed = [&](const Direction& direction, const Direction& second) {
    const Family first(context, direction, width);
    const bool once = context.surface.pen.mode == DrawMode::NotXor && !context.surface.IsPaper();
    Draw_Family(context, outline, first, nullptr);
    Draw_Family(context, outline, Family(context, second, width), once ? &first : nullptr);
  };
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
      Crossed(horizontal, vertical);
      break;
    case FillStyle::DiagonalCross:
      Crossed(upward, downward);
      break;
    case FillStyle::Solid:
    case FillStyle::None:
      break;
  }
}
