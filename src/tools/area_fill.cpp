#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "tools/area_colors.h"
#include "tools/area_trace.h"

// The second way to an outline: filling.

namespace {

// Work for a pixel of a tile reaches this far: closing to either side of the gap, the grain one pixel at two steps.
constexpr int tileSize = 128, gap = 2, margin = 2 * gap + 2, sampleRadius = 2;
constexpr int company = 5;        // pixels of the colour, of nine, that make a patch and not grain of another one
constexpr double mostGrain = 16;  // of a channel; what differs by more is another colour
constexpr size_t tried = 6;       // ends of a side that are looked at
constexpr double mostOff = 0.7;

// Which pixels are of the patch's colours, grain removed and gaps closed: worked out tile by tile where the filling
// comes along.
class ClosedMask {
 public:
  ClosedMask(const QImage& source, const PatchColors& patchColors)
      : picture(source.format() == QImage::Format_RGB32 ? source : source.convertToFormat(QImage::Format_RGB32)),
        colors(patchColors),
        columns((picture.width() + tileSize - 1) / tileSize),
        rows((picture.height() + tileSize - 1) / tileSize),
        tiles(static_cast<size_t>(columns) * static_cast<size_t>(rows)) {}

  int Width() const { return picture.width(); }
  int Height() const { return picture.height(); }
  bool Open(int x, int y) { return At(x, y) == open; }
  bool Filled(int x, int y) {
    return x >= 0 && y >= 0 && x < picture.width() && y < picture.height() && At(x, y) == filled;
  }
  void Fill(int x, int y) { At(x, y) = filled; }

 private:
  static constexpr uchar open = 1, filled = 2;
  static constexpr int side = tileSize + 2 * margin;
  using Tile = std::array<uchar, static_cast<size_t>(tileSize) * tileSize>;
  using Work = std::array<uchar, static_cast<size_t>(side) * side>;

  uchar& At(int x, int y) {
    auto& tile =
        tiles[static_cast<size_t>(y / tileSize) * static_cast<size_t>(columns) + static_cast<size_t>(x / tileSize)];
    if (!tile) tile = Make(x / tileSize * tileSize, y / tileSize * tileSize);
    return (*tile)[static_cast<size_t>(y % tileSize) * tileSize + static_cast<size_t>(x % tileSize)];
  }

  void Compare_Colors(int left, int top) {
    mask.fill(0);
    for (int y = std::max(0, top); y < std::min(picture.height(), top + side); ++y) {
      const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
      uchar* row = mask.data() + static_cast<size_t>(y - top) * side;
      for (int x = std::max(0, left); x < std::min(picture.width(), left + side); ++x)
        row[x - left] = colors.Hold({qRed(line[x]), qGreen(line[x]), qBlue(line[x])}) ? 1 : 0;
    }
  }

  // How many of the nine pixels round each are set.
  const Work& Count_Company(const Work& of) {
    constexpr size_t last = side * side - 1;
    for (size_t i = 1; i < last; ++i) other[i] = static_cast<uchar>(of[i - 1] + of[i] + of[i + 1]);
    for (size_t i = side; i + side <= last; ++i)
      sums[i] = static_cast<uchar>(other[i - side] + other[i] + other[i + side]);
    return sums;
  }
  // Where two colours are alike, grains of the one are like the other, and closing would make a patch of them. What
  // has no company goes; what touches the rest comes back, so that corners and tips stay.
  void Remove_Grain() {
    const Work& around = Count_Company(mask);
    for (size_t i = 0; i < mask.size(); ++i) kept[i] = around[i] >= company ? mask[i] : uchar{0};
    const Work& touching = Count_Company(kept);
    for (size_t i = 0; i < mask.size(); ++i)
      if (touching[i] == 0) mask[i] = 0;
  }

  // The greatest (or least) value within `gap` pixels along rows and columns. What lies beyond the work area counts as
  // its border.
  template <typename Choose>
  void Spread(Choose choose) {
    constexpr size_t last = side - 1;
    for (size_t y = 0; y < side; ++y) {
      const uchar* from = mask.data() + y * side;
      uchar* to = other.data() + y * side;
      std::copy(from, from + side, to);
      for (size_t d = 1; d <= gap; ++d) {
        for (size_t x = 0; x + d <= last; ++x) to[x] = choose(to[x], from[x + d]);
        for (size_t x = d; x <= last; ++x) to[x] = choose(to[x], from[x - d]);
      }
    }
    for (size_t y = 0; y < side; ++y) {
      uchar* to = mask.data() + y * side;
      const size_t first = y < gap ? 0 : y - gap, end = std::min(last, y + gap);
      std::copy(other.data() + first * side, other.data() + first * side + side, to);
      for (size_t from = first + 1; from <= end; ++from)
        for (size_t x = 0; x < side; ++x) to[x] = choose(to[x], other[from * side + x]);
    }
  }

  std::unique_ptr<Tile> Make(int left, int top) {
    Compare_Colors(left - margin, top - margin);
    Remove_Grain();
    Spread([](uchar a, uchar b) { return std::max(a, b); });
    Spread([](uchar a, uchar b) { return std::min(a, b); });
    auto tile = std::make_unique<Tile>();
    for (size_t y = 0; y < tileSize; ++y)
      std::copy_n(mask.data() + (y + margin) * side + margin, tileSize, tile->data() + y * tileSize);
    return tile;
  }

  QImage picture;
  PatchColors colors;
  int columns, rows;
  Work mask{}, other{}, sums{}, kept{};  // for the tile that is made
  std::vector<std::unique_ptr<Tile>> tiles;
};

// The mean round the click and its grain: twice the standard deviation to either side.
PatchColors Colors_Round(const QImage& picture, QPoint click, std::vector<QRgb>& sampled) {
  std::array<double, 3> sums{}, squares{};
  for (int y = click.y() - sampleRadius; y <= click.y() + sampleRadius; ++y)
    for (int x = click.x() - sampleRadius; x <= click.x() + sampleRadius; ++x) {
      if (!picture.valid(x, y)) continue;
      const QRgb color = picture.pixel(x, y);
      sampled.push_back(color);
      const std::array<int, 3> values = {qRed(color), qGreen(color), qBlue(color)};
      for (size_t i = 0; i < 3; ++i) {
        sums[i] += values[i];
        squares[i] += values[i] * values[i];
      }
    }
  PatchColors colors;
  const auto count = static_cast<double>(sampled.size());
  for (size_t i = 0; i < 3; ++i) {
    const double mean = sums[i] / count, variance = std::max(0.0, squares[i] / count - mean * mean);
    const double grain = std::min(mostGrain, 2 * std::sqrt(variance));
    colors.lo[i] = std::max(0, static_cast<int>(std::lround(mean - grain)));
    colors.hi[i] = std::min(255, static_cast<int>(std::lround(mean + grain)));
  }
  return colors;
}

// Fills all that is joined to the place by its sides. The topmost filled pixel, leftmost in its row.
QPoint Fill_From(ClosedMask& mask, QPoint place) {
  std::vector<QPoint> waiting{place};
  QPoint top = place;
  while (!waiting.empty()) {
    const QPoint at = waiting.back();
    waiting.pop_back();
    if (!mask.Open(at.x(), at.y())) continue;
    int left = at.x(), right = at.x();
    while (left > 0 && mask.Open(left - 1, at.y())) --left;
    while (right + 1 < mask.Width() && mask.Open(right + 1, at.y())) ++right;
    for (int x = left; x <= right; ++x) mask.Fill(x, at.y());
    if (at.y() < top.y() || (at.y() == top.y() && left < top.x())) top = {left, at.y()};
    for (const int y : {at.y() - 1, at.y() + 1}) {
      if (y < 0 || y >= mask.Height()) continue;
      for (int x = left; x <= right; ++x)
        if (mask.Open(x, y) && (x == left || !mask.Open(x - 1, y))) waiting.emplace_back(x, y);
    }
  }
  return top;
}

// Round the filled pixels along their sides, the filled ones to the right; the corners passed. Pixels that touch at a
// corner alone are not joined.
std::vector<QPoint> Outer_Corners(ClosedMask& mask, QPoint topmost) {
  constexpr std::array<QPoint, 4> steps = {QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)};
  // The pixels ahead, to the left and to the right of a corner that is left in this direction.
  constexpr std::array<QPoint, 4> leftAhead = {QPoint(0, -1), QPoint(0, 0), QPoint(-1, 0), QPoint(-1, -1)},
                                  rightAhead = {QPoint(0, 0), QPoint(-1, 0), QPoint(-1, -1), QPoint(0, -1)};
  std::vector<QPoint> corners;
  QPoint at = topmost;
  size_t direction = 0;
  do {
    corners.push_back(at);
    at += steps[direction];
    const QPoint left = at + leftAhead[direction], right = at + rightAhead[direction];
    if (!mask.Filled(right.x(), right.y()))
      direction = (direction + 1) % 4;
    else if (mask.Filled(left.x(), left.y()))
      direction = (direction + 3) % 4;
  } while (at != topmost || direction != 0);
  return corners;
}

// Directions from a vertex that pass all points so far within the allowed distance: between two that lie less than half
// a turn apart.
class Cone {
 public:
  explicit Cone(QPointF vertex) : from(vertex) {}
  bool Empty() const { return empty; }
  void Narrow(QPointF point) {
    const QPointF there = point - from;
    const double squared = QPointF::dotProduct(there, there);
    if (squared <= mostOff * mostOff) return;
    // The tangents from the vertex to the circle round the point.
    const double distance = std::sqrt(squared), sine = mostOff / distance, cosine = std::sqrt(1 - sine * sine);
    const QPointF along = there / distance * cosine, across = QPointF(-there.y(), there.x()) / distance * sine;
    const QPointF right = along - across, left = along + across;
    if (!bounded) {
      low = right;
      high = left;
      bounded = true;
      return;
    }
    if (QPointF::dotProduct(there, low + high) <= 0) {
      empty = true;
      return;
    }
    if (Cross(low, right) > 0) low = right;
    if (Cross(left, high) > 0) high = left;
    empty = Cross(low, high) < 0;
  }
  bool Holds(QPointF point) const {
    const QPointF there = point - from;
    if (empty) return false;
    return !bounded ||
           (Cross(low, there) >= 0 && Cross(there, high) >= 0 && QPointF::dotProduct(there, low + high) > 0);
  }

 private:
  static double Cross(QPointF a, QPointF b) { return a.x() * b.y() - a.y() * b.x(); }

  QPointF from, low, high;
  bool bounded = false, empty = false;
};

// The corners to which a straight line from the corner at `from` stays close, the farthest last, not beyond `last`.
std::vector<size_t> Straight_Ends(const std::vector<QPoint>& corners, size_t from, size_t last) {
  Cone cone(corners[from]);
  std::vector<size_t> ends{from + 1};
  for (size_t i = from; i < last && !cone.Empty(); ++i) {
    const QPointF here = corners[i], next = corners[i + 1];
    cone.Narrow((here + next) / 2);
    if (i > from && cone.Holds(next)) ends.push_back(i + 1);
  }
  return ends;
}

// The end from which the next line comes farthest: the very last one often lies aslant.
size_t Best_End(const std::vector<QPoint>& corners, size_t from, size_t last) {
  const std::vector<size_t> ends = Straight_Ends(corners, from, last);
  size_t best = ends.back(), reach = 0;
  if (best == last) return best;
  for (size_t i = ends.size() > tried ? ends.size() - tried : 0; i < ends.size(); ++i) {
    const size_t next = Straight_Ends(corners, ends[i], last).back();
    if (next <= reach) continue;
    reach = next;
    best = ends[i];
  }
  return best;
}

std::vector<QPoint> Simplified(std::vector<QPoint> corners) {
  // It begins at the corner farthest from any one: that is a vertex.
  const auto distance = [first = corners.front()](QPoint corner) {
    return QPoint::dotProduct(corner - first, corner - first);
  };
  std::rotate(
      corners.begin(),
      std::max_element(corners.begin(), corners.end(), [&](QPoint a, QPoint b) { return distance(a) < distance(b); }),
      corners.end());
  corners.push_back(corners.front());
  std::vector<QPoint> outline;
  for (size_t i = 0; i + 1 < corners.size(); i = Best_End(corners, i, corners.size() - 1))
    outline.push_back(corners[i]);
  return outline;
}

}  // namespace

TraceResult Digi_Fill(const TraceRequest& request) {
  TraceResult result;
  if (!request.picture.valid(request.click)) {
    result.fault = QStringLiteral("Sie haben neben die Karte geklickt.");
    return result;
  }
  PatchColors colors = Colors_Round(request.picture, request.click, result.sampled);
  colors.Widen(request.tolerance / 100.0);
  ClosedMask mask(request.picture, colors);
  if (!mask.Open(request.click.x(), request.click.y())) {
    result.fault = QStringLiteral(
        "An dieser Stelle ist keine einheitliche Farbe.\nKlicken Sie daneben, oder lassen Sie "
        "größere Farbunterschiede zu.");
    return result;
  }
  const std::vector<QPoint> corners = Outer_Corners(mask, Fill_From(mask, request.click));
  result.edgePoints = static_cast<int>(corners.size());
  result.outline = Simplified(corners);
  if (result.outline.size() < 3) {
    result.outline.clear();
    result.fault = QStringLiteral("Zu wenig Randpunkte");
  }
  result.part = Part_Of_Picture(result.outline, request.picture.size());
  return result;
}
