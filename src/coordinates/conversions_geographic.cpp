#include <algorithm>
#include <cmath>
#include <optional>

#include "coordinates/conversions.h"
#include "coordinates/geometry.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "platform/text.h"

// Degrees and pixels of geographic nets: three measured parallels and three measured meridians.

namespace {

// One family of lines and its samples.
struct Family {
  const std::array<NetLine, 4>& lines;
  const std::array<std::vector<std::int16_t>, 4>& pixels;
};

// Far beyond every map; keeps what follows finite.
constexpr double farthestRatio = 1e7;

double Ratio(double dividend, double divisor) {
  if (divisor == 0) Raise(errors::divisionByZero);
  const double ratio = dividend / divisor;
  if (std::isnan(ratio)) Raise(errors::overflow);
  return std::clamp(ratio, -farthestRatio, farthestRatio);
}

// One statement of a conversion: a fault is shown, OK goes on with what the statement gives otherwise.
struct Cancelled {};
template <typename Statement>
double Stated(const QString& title, double otherwise, Statement statement) {
  try {
    return statement();
  } catch (const Error& error) {
    const MsgAnswer answer = Message_Box(error.text, MsgButtons::OkCancel, MsgIcon::Information, title);
    if (answer != MsgAnswer::Ok) throw Cancelled{};
    return otherwise;
  }
}

// The curve of a degree value between (or beyond) two measured neighbours. Its samples lie at even distances of the
// run, so the segments over any stretch of the run are found by division.
class Curve {
 public:
  Curve(const Family& family, int upper, double part)
      : first(family.pixels[static_cast<size_t>(upper - 1)]),
        second(family.pixels[static_cast<size_t>(upper)]),
        fraction(part) {
    const NetLine& line = family.lines[static_cast<size_t>(upper - 1)];
    const NetLine& next = family.lines[static_cast<size_t>(upper)];
    start = line.Start - part * (line.Start - next.Start);
    step = static_cast<double>(line.Step);
    const auto samples = static_cast<int>(std::min(first.size(), second.size())) - 1;
    count = std::min(static_cast<int>(line.Count), samples);
  }

  int Count() const { return count; }
  double Run(int k) const { return start + (k - 1) * step; }
  double Value(int k) const {
    const double near = first[static_cast<size_t>(k)], far = second[static_cast<size_t>(k)];
    return near + fraction * (far - near);
  }
  // The value at any place of the run, straight on beyond both ends.
  double At(double run) const {
    const int k = std::clamp(static_cast<int>(std::clamp((run - start) / step, -1.0, 40000.0)) + 2, 2, count);
    const double before = Value(k - 1);
    return before + (Value(k) - before) * (run - Run(k - 1)) / step;
  }
  // Narrows the segments [from, to] (named by their end sample) to those that reach into the run [low, high].
  void Narrow(double low, double high, int& from, int& to) const {
    if (!Ordered()) return;
    const double least = std::clamp((low - start) / step, -2.0, 40000.0);
    const double most = std::clamp((high - start) / step, -2.0, 40000.0);
    // One segment more on both sides: a place on a joint counts for both.
    from = std::max(from, static_cast<int>(std::floor(least)) + 1);
    to = std::min(to, static_cast<int>(std::ceil(most)) + 2);
  }
  // Least and greatest value over the segments [from, to].
  std::pair<double, double> Span(int from, int to) const {
    double low = Value(from - 1), high = low;
    for (int k = from; k <= to; ++k) {
      const double value = Value(k);
      low = std::min(low, value);
      high = std::max(high, value);
    }
    return {low, high};
  }
  bool Usable() const { return count >= 2; }
  bool Ordered() const { return step > 1e-3; }

 private:
  const std::vector<std::int16_t>&first, &second;
  double fraction, start = 0, step = 0;
  int count = 0;
};

// Does the stretch between two values touch 0..most?
bool Reaches(double a, double b, double most) { return (a >= 0 || b >= 0) && (a <= most || b <= most); }

// First meeting of the two curves, segment by segment along the meridian, among segments that touch the map.
std::optional<QPointF> Meeting(const Curve& meridian, const Curve& parallel, QSize map) {
  int j0 = 2, j1 = meridian.Count(), i0 = 2, i1 = parallel.Count();
  // Each curve bounds the part of the other that can meet it; a few rounds leave a handful of segments.
  for (int before = -1, left = 0; before != left;) {
    before = left;
    const auto [top, bottom] = parallel.Span(i0, i1);
    meridian.Narrow(top, bottom, j0, j1);
    if (j0 > j1) return std::nullopt;
    const auto [west, east] = meridian.Span(j0, j1);
    parallel.Narrow(west, east, i0, i1);
    if (i0 > i1) return std::nullopt;
    left = (j1 - j0) + (i1 - i0);
  }
  for (int j = j0; j <= j1; ++j) {
    const double x1 = meridian.Value(j - 1), x2 = meridian.Value(j), y1 = meridian.Run(j - 1), y2 = meridian.Run(j);
    if (!Reaches(x1, x2, map.width())) continue;
    const auto [west, east] = std::minmax(x1, x2);
    const auto [north, south] = std::minmax(y1, y2);
    int from = i0, to = i1;
    parallel.Narrow(west, east, from, to);
    for (int i = from; i <= to; ++i) {
      const double y3 = parallel.Value(i - 1), y4 = parallel.Value(i), x3 = parallel.Run(i - 1), x4 = parallel.Run(i);
      if (!Reaches(y3, y4, map.height())) continue;
      const bool overlap = std::max(x3, x4) >= west && std::min(x3, x4) <= east && std::max(y3, y4) >= north &&
                           std::min(y3, y4) <= south;
      QPointF hit;
      if (overlap && Line_Intersect(x1, y1, x2, y2, x3, y3, x4, y4, hit.rx(), hit.ry()) != 0) return hit;
    }
  }
  return std::nullopt;
}

// Where the curves cross when both go straight on beyond their ends. `Gap` is how far the meridian lies below the
// parallel at a place of its run; it is 0 at the crossing.
class LongCurves {
 public:
  LongCurves(const Curve& meridianCurve, const Curve& parallelCurve)
      : meridian(meridianCurve), parallel(parallelCurve) {}

  std::optional<QPointF> Crossing() const {
    if (!meridian.Ordered() || !parallel.Ordered()) return std::nullopt;
    double low = meridian.Run(1), high = meridian.Run(meridian.Count());
    // Whole curves cross once: outward in growing steps until the crossing lies between.
    for (double reach = high - low; Gap(low) > 0; reach *= 2) {
      if (reach > farthest) return std::nullopt;
      low -= reach;
    }
    for (double reach = high - low; Gap(high) < 0; reach *= 2) {
      if (reach > farthest) return std::nullopt;
      high += reach;
    }
    for (int round = 0; round < 80 && high - low > 1e-9; ++round) {
      const double middle = (low + high) / 2;
      (Gap(middle) <= 0 ? low : high) = middle;
    }
    const double y = (low + high) / 2, x = meridian.At(y);
    if (!std::isfinite(x)) return std::nullopt;
    return QPointF(x, y);
  }

 private:
  static constexpr double farthest = 1e13;
  const Curve &meridian, &parallel;
  double Gap(double y) const { return y - parallel.At(meridian.At(y)); }
};

// Judged by the pixel it belongs to.
int Place_Code(double x, double y, QSize map) {
  const double column = std::nearbyint(x), row = std::nearbyint(y);
  int code = onMap;
  if (column < 0) code = tooFarLeft;
  if (column > map.width()) code = tooFarRight;
  if (row < 0) code = tooFarUp;
  if (row > map.height()) code = tooFarDown;
  return code;
}

// Curves that never cross: where the search ended.
int End_Code(const Curve& meridian, const Curve& parallel, QSize map, double& x, double& y) {
  const double x1 = meridian.Value(meridian.Count() - 1), y1 = parallel.Value(parallel.Count() - 1);
  x = meridian.Value(meridian.Count());
  y = parallel.Value(parallel.Count());
  int code = tooFarLeft;
  if (!(x1 <= map.width() && x <= map.width())) code = tooFarRight;
  if (!(y1 >= 0 && y >= 0)) code = tooFarUp;
  if (!(y1 <= map.height() && y <= map.height())) code = tooFarDown;
  return code;
}

// Upper line of the bracket: the first one `beyond` the value, 2 or 3.
template <typename Beyond>
int Bracket(const std::array<NetLine, 4>& lines, Beyond beyond) {
  return beyond(static_cast<double>(lines[1].Deg)) || beyond(static_cast<double>(lines[2].Deg)) ? 2 : 3;
}

double Fraction(const std::array<NetLine, 4>& lines, int upper, double value) {
  const double below = lines[static_cast<size_t>(upper - 1)].Deg64, above = lines[static_cast<size_t>(upper)].Deg64;
  return Ratio(value - below, above - below);
}

}  // namespace

int Grad_To_Pixel(const CoordinateState& state, double longitude, double latitude, double& x, double& y) {
  const QString title = QStringLiteral("Fehler: Grad->Pixel");
  const QSize map(state.MapWidthPx, state.MapHeightPx);
  try {
    const int n = Bracket(state.NetL, [&](double degrees) { return degrees > longitude; });
    const int m = Bracket(state.NetB, [&](double degrees) { return degrees < latitude; });
    const double east = Stated(title, 0, [&] { return Fraction(state.NetL, n, longitude); });
    const double south = Stated(title, 0, [&] { return Fraction(state.NetB, m, latitude); });
    const Curve parallel({state.NetB, state.NetBPix}, m, south), meridian({state.NetL, state.NetLPix}, n, east);
    x = y = 0;
    if (!parallel.Usable() || !meridian.Usable()) return tooFarLeft;
    std::optional<QPointF> place = Meeting(meridian, parallel, map);
    if (!place) place = LongCurves(meridian, parallel).Crossing();
    if (!place) return End_Code(meridian, parallel, map, x, y);
    x = place->x();
    y = place->y();
    return Place_Code(x, y, map);
  } catch (const Cancelled&) {
    return conversionCancelled;
  }
}

namespace {

// One coordinate of a pixel. `along` is its place on the run of the family's lines, `across` the other one.
class DegreeSearch {
 public:
  DegreeSearch(const Family& searched, double acrossLines, double alongLines)
      : family(searched), across(acrossLines), along(alongLines) {}

  bool Usable() const {
    return std::all_of(lineNumbers.begin(), lineNumbers.end(), [this](int n) {
      const NetLine& line = Line(n);
      return line.Count >= 2 && line.Step > 1e-3F && Samples(n).size() > static_cast<size_t>(line.Count);
    });
  }

  double Degrees() const {
    int n = 2;
    for (; n <= 3; ++n) {
      const Segment segment = Segment_At(n);
      if (segment.from > across && segment.to > across) break;
      if (segment.from <= across && segment.to <= across) continue;
      // The same for both families: across the lines is x, along them is y.
      const int side = Area2Sign({segment.from, segment.run}, {segment.to, segment.run + Step(n)}, {across, along});
      if (side == 0) return Line(n).Deg64;
      if (side > 0) break;
    }
    n = std::min(n, 3);
    const double a = Value_At(n - 1), b = Value_At(n);
    const double below = Line(n - 1).Deg64, above = Line(n).Deg64;
    return below + (above - below) * Ratio(across - a, b - a);  // beyond the outer lines as well
  }

 private:
  static constexpr std::array<int, 3> lineNumbers = {1, 2, 3};
  struct Segment {
    double run = 0, from = 0, to = 0;  // run of its first sample, both values
  };
  const NetLine& Line(int n) const { return family.lines[static_cast<size_t>(n)]; }
  const std::vector<std::int16_t>& Samples(int n) const { return family.pixels[static_cast<size_t>(n)]; }
  double Step(int n) const { return static_cast<double>(Line(n).Step); }

  // The segment that ends at the first sample k >= 2 whose rounded place is not before `along`; at most the last.
  Segment Segment_At(int n) const {
    const NetLine& line = Line(n);
    const double step = Step(n);
    const auto place = [&](int k) { return std::nearbyint(line.Start + (k - 1) * step); };
    const int last = line.Count;
    int k = std::clamp(static_cast<int>(std::clamp((along - line.Start) / step, 0.0, 40000.0)) + 1, 2, last);
    while (k > 2 && place(k - 1) >= along) --k;
    while (k < last && place(k) < along) ++k;
    const std::vector<std::int16_t>& samples = Samples(n);
    return {line.Start + (k - 2) * step, static_cast<double>(samples[static_cast<size_t>(k - 1)]),
            static_cast<double>(samples[static_cast<size_t>(k)])};
  }
  double Value_At(int n) const {
    const Segment segment = Segment_At(n);
    return segment.from + (segment.to - segment.from) * (along - segment.run) / Step(n);
  }

  Family family;
  double across, along;
};

}  // namespace

int Pixel_To_Grad(const CoordinateState& state, int x, int y, double& longitude, double& latitude) {
  const QString title = QStringLiteral("Fehler: Pix->Grad");
  const DegreeSearch east({state.NetL, state.NetLPix}, x, y), south({state.NetB, state.NetBPix}, y, x);
  if (!east.Usable() || !south.Usable()) return 0;
  try {
    longitude = Stated(title, state.NetL[2].Deg64, [&] { return east.Degrees(); });
    latitude = Stated(title, state.NetB[2].Deg64, [&] { return south.Degrees(); });
    return 1;
  } catch (const Cancelled&) {
    return conversionCancelled;
  }
}
