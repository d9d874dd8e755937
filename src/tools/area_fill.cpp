#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "tools/area_trace.h"

// The second way to an outline: filling.

namespace {

constexpr int tileSize = 128, gap = 2, margin = 2 * gap, sampleRadius = 2;
constexpr size_t tried = 6;  // ends of a side that are looked at
constexpr double mostOff = 0.7;
// Of colours at 100 %: the follower widens each channel by half of its range on the average to either side, and this is
// the corner of that cube.
constexpr double farthestColors = 220.836;

// Which pixels are of the patch's colour, gaps closed: worked out tile by tile where the filling comes along.
class ClosedMask {
 public:
  ClosedMask(const QImage& source, QRgb likeColor, double tolerance)
      : picture(source.format() == QImage::Format_RGB32 ? source : source.convertToFormat(QImage::Format_RGB32)),
        like(likeColor),
        limit(static_cast<int>(tolerance * tolerance)),
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

  void Compare_Colors(Work& mask, int left, int top) const {
    const int red = qRed(like), green = qGreen(like), blue = qBlue(like);
    mask.fill(0);
    for (int y = std::max(0, top); y < std::min(picture.height(), top + side); ++y) {
      const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
      uchar* row = mask.data() + static_cast<size_t>(y - top) * side;
      for (int x = std::max(0, left); x < std::min(picture.width(), left + side); ++x) {
        const int dr = qRed(line[x]) - red, dg = qGreen(line[x]) - green, db = qBlue(line[x]) - blue;
        row[x - left] = dr * dr + dg * dg + db * db <= limit ? 1 : 0;
      }
    }
  }

  // The greatest (or least) value within `gap` pixels along rows and columns. What lies beyond the work area counts as
  // its border.
  template <typename Choose>
  static void Spread(Work& mask, Choose choose) {
    static thread_local Work other;
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

  std::unique_ptr<Tile> Make(int left, int top) const {
    static thread_local Work mask;
    Compare_Colors(mask, left - margin, top - margin);
    Spread(mask, [](uchar a, uchar b) { return std::max(a, b); });
    Spread(mask, [](uchar a, uchar b) { return std::min(a, b); });
    auto tile = std::make_unique<Tile>();
    for (size_t y = 0; y < tileSize; ++y)
      std::copy_n(mask.data() + (y + margin) * side + margin, tileSize, tile->data() + y * tileSize);
    return tile;
  }

  QImage picture;
  QRgb like;
  int limit, columns, rows;
  std::vector<std::unique_ptr<Tile>> tiles;
};

QRgb Mean_Round(const QImage& picture, QPoint click, std::vector<QRgb>& sampled) {
  int red = 0, green = 0, blue = 0;
  for (int y = click.y() - sampleRadius; y <= click.y() + sampleRadius; ++y)
    for (int x = click.x() - sampleRadius; x <= click.x() + sampleRadius; ++x) {
      if (!picture.valid(x, y)) continue;
      const QRgb color = picture.pixel(x, y);
      sampled.push_back(color);
      red += qRed(color);
      green += qGreen(color);
      blue += qBlue(color);
    }
  const int count = std::max(1, static_cast<int>(sampled.size()));
  return qRgb(red / count, green / count, blue / count);
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
  const QRgb like = Mean_Round(request.picture, request.click, result.sampled);
  ClosedMask mask(request.picture, like, request.tolerance * farthestColors / 100);
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
  return result;
}
