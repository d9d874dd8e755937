#include "calibration/crossing.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

// The part of the picture round the place. `Dark` is 0 (white) to 255.
class Patch {
 public:
  Patch(const QImage& picture, QPoint middle, int halfSide) : half(halfSide), side(2 * halfSide + 1) {
    values.reserve(static_cast<size_t>(side) * static_cast<size_t>(side));
    const QRect inside = picture.rect();
    for (int y = -half; y <= half; ++y)
      for (int x = -half; x <= half; ++x) {
        const QPoint at = middle + QPoint(x, y);
        values.push_back(inside.contains(at) ? 255.0 - qGray(picture.pixel(at)) : 0.0);
      }
  }
  double Dark(int x, int y) const {
    if (std::abs(x) > half || std::abs(y) > half) return 0;
    return values[static_cast<size_t>(y + half) * static_cast<size_t>(side) + static_cast<size_t>(x + half)];
  }
  int Half() const { return half; }

 private:
  int half, side;
  std::vector<double> values;
};

// A line at `offset` + slope * run, seen along its run: down the picture, or across it.
struct Stroke {
  bool down = true;
  double offset = 0, slope = 0;
};

double Dark_At(const Patch& patch, bool down, int run, double across) {
  const double floor = std::floor(across), part = across - floor;
  const int near = static_cast<int>(floor);
  const auto at = [&](int value) { return down ? patch.Dark(value, run) : patch.Dark(run, value); };
  return at(near) * (1 - part) + at(near + 1) * part;
}

// How much darker than both sides the line is, over those parts of the run where it can be seen as one. The middle of
// the values tells: letters and symbols on a line do not count, nor does what crosses it.
double Contrast(const Patch& patch, const Stroke& stroke) {
  constexpr double beside = 4;
  std::vector<double> darker;
  for (int run = -patch.Half(); run <= patch.Half(); ++run) {
    const double across = stroke.offset + stroke.slope * run;
    if (std::fabs(across) + beside > patch.Half()) continue;
    const double left = Dark_At(patch, stroke.down, run, across - beside),
                 right = Dark_At(patch, stroke.down, run, across + beside);
    darker.push_back(Dark_At(patch, stroke.down, run, across) - std::max(left, right));
  }
  if (darker.size() < static_cast<size_t>(patch.Half())) return 0;
  // A quarter of the run may be covered.
  const auto quarter = darker.begin() + static_cast<std::ptrdiff_t>(darker.size() / 4);
  std::nth_element(darker.begin(), quarter, darker.end());
  return *quarter;
}

// The middle of the dark where the line is seen, row by row, and the straight line through these.
Stroke Refined(const Patch& patch, Stroke stroke) {
  constexpr double window = 3;
  for (int round = 0; round < 3; ++round) {
    double n = 0, sumRun = 0, sumAcross = 0, sumRunRun = 0, sumRunAcross = 0;
    for (int run = -patch.Half(); run <= patch.Half(); ++run) {
      const double expected = stroke.offset + stroke.slope * run;
      const double ground = std::max(Dark_At(patch, stroke.down, run, expected - window - 1),
                                     Dark_At(patch, stroke.down, run, expected + window + 1));
      double weight = 0, sum = 0;
      for (double off = -window; off <= window; off += 0.5) {
        const double dark = std::max(0.0, Dark_At(patch, stroke.down, run, expected + off) - ground);
        weight += dark;
        sum += dark * off;
      }
      if (weight < 30) continue;  // covered by something as dark
      const double across = expected + sum / weight;
      n += weight;
      sumRun += weight * run;
      sumAcross += weight * across;
      sumRunRun += weight * run * run;
      sumRunAcross += weight * run * across;
    }
    const double divisor = n * sumRunRun - sumRun * sumRun;
    if (!(divisor > 0)) return stroke;
    stroke.slope = (n * sumRunAcross - sumRun * sumAcross) / divisor;
    stroke.offset = (sumAcross - stroke.slope * sumRun) / n;
  }
  return stroke;
}

struct Candidate {
  Stroke stroke;
  double score = 0;
};
Candidate Darkest_Stroke(const Patch& patch, bool down, double slope, int reach) {
  Candidate best;
  for (double offset = -reach; offset <= reach; offset += 0.5) {
    const Stroke stroke{down, offset, slope};
    // Of equals the nearer.
    const double score = Contrast(patch, stroke) - 0.2 * std::fabs(offset);
    if (score > best.score) best = {stroke, score};
  }
  return best;
}

}  // namespace

std::optional<QPointF> Find_Crossing(const QImage& picture, QPointF near, int reach) {
  constexpr int beyond = 10;  // pixels of the lines that are looked at beyond the reach
  constexpr double leastContrast = 24, farthestTurn = 12;
  if (picture.isNull() || reach < 1) return std::nullopt;
  const QPoint middle = near.toPoint();
  const Patch patch(picture, middle, reach + beyond);
  // The lines of a net cross at right angles: so an edge of something else is not taken for one of them.
  Candidate down, across;
  for (double turn = -farthestTurn; turn <= farthestTurn; turn += 1) {
    const double slope = std::tan(turn * std::numbers::pi / 180);
    const Candidate one = Darkest_Stroke(patch, true, -slope, reach);
    if (one.score < leastContrast || one.score <= std::min(down.score, across.score)) continue;
    const Candidate other = Darkest_Stroke(patch, false, slope, reach);
    if (std::min(one.score, other.score) <= std::max(leastContrast, std::min(down.score, across.score))) continue;
    down = one;
    across = other;
  }
  if (down.score == 0) return std::nullopt;
  const Stroke a = Refined(patch, down.stroke), b = Refined(patch, across.stroke);
  // x = a.offset + a.slope * y, y = b.offset + b.slope * x
  const double divisor = 1 - a.slope * b.slope;
  const QPointF found((a.offset + a.slope * b.offset) / divisor, (b.offset + b.slope * a.offset) / divisor);
  const QPointF off = found + QPointF(middle) - near;
  if (std::hypot(off.x(), off.y()) > reach) return std::nullopt;
  return found + QPointF(middle);
}
