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

std::optional<Stroke> Darkest_Stroke(const Patch& patch, bool down, int reach) {
  constexpr double leastContrast = 24, farthestTurn = 12;
  Stroke best;
  double most = 0;
  for (double turn = -farthestTurn; turn <= farthestTurn; turn += 1) {
    const double slope = std::tan(turn * std::numbers::pi / 180);
    for (double offset = -reach; offset <= reach; offset += 0.5) {
      const Stroke stroke{down, offset, slope};
      // Of equals the nearer.
      const double score = Contrast(patch, stroke) - 0.2 * std::fabs(offset);
      if (score > most) {
        most = score;
        best = stroke;
      }
    }
  }
  if (most < leastContrast) return std::nullopt;
  return Refined(patch, best);
}

}  // namespace

std::optional<QPointF> Find_Crossing(const QImage& picture, QPointF near, int reach) {
  constexpr int beyond = 10;  // pixels of the lines that are looked at beyond the reach
  if (picture.isNull() || reach < 1) return std::nullopt;
  const QPoint middle = near.toPoint();
  const Patch patch(picture, middle, reach + beyond);
  const auto down = Darkest_Stroke(patch, true, reach), across = Darkest_Stroke(patch, false, reach);
  if (!down || !across) return std::nullopt;
  // x = a + b y, y = c + d x
  const double divisor = 1 - down->slope * across->slope;
  const QPointF found((down->offset + down->slope * across->offset) / divisor,
                      (across->offset + across->slope * down->offset) / divisor);
  const QPointF off = found + QPointF(middle) - near;
  if (std::hypot(off.x(), off.y()) > reach) return std::nullopt;
  return found + QPointF(middle);
}
