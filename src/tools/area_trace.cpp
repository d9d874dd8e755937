#include "tools/area_trace.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/text.h"
#include "tools/area_colors.h"

namespace {

constexpr int widestRing = 5, mostPoints = 9000, mostCycles = 20;

const QString
    colorTail = QStringLiteral(
        "\nFarbunterschiede zu gering?\nFläche vielfarbig, gerastert oder gemustert? \nFlächenbegrenzung nicht "
        "eindeutig?"),
    lastTail = QStringLiteral("\nBitte versuchen Sie es noch einmal mit einer anderen Einstellung.");

struct TraceFault {
  QString text;
};
struct TraceStopped {};

std::vector<QPoint> Make_Ring(int radius) {
  std::vector<QPoint> ring;
  const int q = radius * radius;
  const auto sweep = [&](int from, int to, int sign) {
    for (int i = from; i != to + (to > from ? 1 : -1); i += to > from ? 1 : -1) {
      const double x = i / 10.0;
      const QPoint point(To_Int16(x), To_Int16(std::sqrt(To_Int16(q - x * x)) * sign));
      if (ring.empty() || ring.back() != point) ring.push_back(point);
    }
  };
  const int end = 10 * radius;
  sweep(-end, end, -1);
  ring.pop_back();
  sweep(end, -end, 1);
  ring.pop_back();
  sweep(-end, end, -1);
  return ring;
}

// A pixel as the channels see it; beyond the picture there is no colour.
class Pixels {
 public:
  explicit Pixels(const QImage& source)
      : picture(source.format() == QImage::Format_RGB32 ? source : source.convertToFormat(QImage::Format_RGB32)) {}
  std::array<int, 3> At(int x, int y) const {
    if (x < 0 || y < 0 || x >= picture.width() || y >= picture.height()) return {-1, -1, -1};
    const QRgb color = Row(y)[x];
    return {qRed(color), qGreen(color), qBlue(color)};
  }
  const QRgb* Row(int y) const { return reinterpret_cast<const QRgb*>(picture.constScanLine(y)); }
  QSize Size() const { return picture.size(); }

 private:
  QImage picture;
};

struct EdgePoint {
  bool active = true;
  int x = 0, y = 0;
};

float Slope(float dx, float dy) {
  const auto guarded = [](float value) { return value == 0 ? 0.001F : value > 1000 ? 1000.0F : value; };
  return guarded(dy) / guarded(dx);
}

// The edge from point to point, then fewer of them. points[0] is the start, the others are counted from 1.
class Follower {
 public:
  explicit Follower(const TraceRequest& traceRequest) : request(traceRequest), pixels(traceRequest.picture) {}

  TraceResult Run() {
    TraceResult result;
    try {
      Sample(result.sampled);
      Find_Start();
      Follow();
      result.edgePoints = Count();
      Thin();
      if (Count() < 3) throw TraceFault{QStringLiteral("Zu wenig Randpunkte") + lastTail};
      for (int i = 1; i <= Count(); ++i) result.outline.push_back(Place(At(i)));
    } catch (const TraceFault& fault) {
      result.fault = fault.text;
    } catch (const TraceStopped&) {
    }
    return result;
  }

 private:
  int Count() const { return static_cast<int>(points.size()) - 1; }
  EdgePoint& At(int i) { return points[static_cast<size_t>(i)]; }
  // Behind the last point the edge is at its start again.
  const EdgePoint& Or_Start(int i) const { return points[i <= Count() ? static_cast<size_t>(i) : 0]; }
  QPoint Place(const EdgePoint& point) const { return start + QPoint(point.x, point.y); }

  void Sample(std::vector<QRgb>& sampled) {
    firstRing = std::clamp(static_cast<int>(To_Int16(request.tolerance / 10.0)), 2, widestRing);
    for (int radius = 1; radius <= firstRing; ++radius)
      for (const QPoint offset : Digi_Ring(radius)) {
        const QPoint at = request.click + offset;
        const auto color = pixels.At(at.x(), at.y());
        if (color[0] >= 0) sampled.push_back(qRgb(color[0], color[1], color[2]));
        bounds.Take(color);
      }
    bounds.Widen(request.tolerance / 100.0);
    if (request.tolerance < 20 && bounds.uniform) firstRing = 1;
  }

  bool Inside(int x, int y) { return bounds.Hold(pixels.At(x, y)); }

  void Find_Start() {
    int outside = 0;
    for (int d = 1; d <= mostPoints; ++d) {
      const QPoint at = request.click - QPoint(0, d);
      if (at.y() < 0)
        throw TraceFault{QStringLiteral("Möglicherweise ragt die Fläche über den oberen Fensterrand hinaus")};
      if (Inside(at.x(), at.y()) || ++outside <= 1) continue;
      start = at + QPoint(0, 3);
      return;
    }
    throw TraceFault{QStringLiteral("Kein Startpunkt gefunden.\n") + colorTail + lastTail};
  }

  // The first point of the longest run of inside pixels on the narrowest ring that has one.
  std::optional<QPoint> Next(QPoint from) {
    for (int radius = firstRing; radius <= widestRing; ++radius) {
      const std::vector<QPoint>& ring = Digi_Ring(radius);
      bool outsideSeen = false;
      int run = 0, longest = 0;
      QPoint runStart, best;
      for (const QPoint offset : ring) {
        const QPoint at = start + from + offset;
        if (!Inside(at.x(), at.y())) {
          outsideSeen = true;
          run = 0;
          continue;
        }
        if (!outsideSeen) continue;
        if (++run == 1) runStart = from + offset;
        if (run <= longest) continue;
        longest = run;
        best = runStart;
      }
      if (longest > 0) return best;
    }
    return std::nullopt;
  }

  void Follow() {
    points.assign(1, EdgePoint{});
    QPoint at;
    for (;;) {
      const auto next = Next(at);
      if (!next || Count() >= mostPoints)
        throw TraceFault{QStringLiteral("Kein weiterer Randpunkt gefunden.\nZuviele Punkte (Limit 9000)?") + colorTail +
                         lastTail};
      at = *next;
      if (Count() > 5 && std::abs(at.x()) < 4 && std::abs(at.y()) < 4) return;
      points.push_back({true, at.x(), at.y()});
      if (request.step && !request.step(start + at)) throw TraceStopped{};
    }
  }

  static float Slope_Of(const EdgePoint& from, const EdgePoint& to) {
    return Slope(static_cast<float>(to.x - from.x), static_cast<float>(to.y - from.y));
  }
  // Going round clockwise, an edge that runs back along an axis is long, one that runs on is short.
  static int Distance(const EdgePoint& from, const EdgePoint& to) {
    return Entfernung(static_cast<float>(from.x - to.x), static_cast<float>(from.y - to.y));
  }

  void Pack() {
    points.erase(std::remove_if(points.begin() + 1, points.end(), [](const EdgePoint& point) { return !point.active; }),
                 points.end());
  }

  // Points on a straight line between their neighbours go.
  void Drop_Collinear() {
    for (int i = 1; i < Count(); ++i)
      if (Slope_Of(At(i), At(i + 1)) == Slope_Of(At(i - 1), At(i))) At(i).active = false;
    Pack();
  }

  bool Drop_Two(int i) {
    At(i + 1).active = At(i + 2).active = false;
    return true;
  }

  // Points close together become one, zigzags straight.
  bool Smooth() {
    bool changed = false;
    for (int i = 1; i <= Count() - 2; ++i) {
      EdgePoint& point = At(i);
      if (!point.active) continue;
      const EdgePoint &second = At(i + 2), &third = Or_Start(i + 3);
      if (Distance(point, second) < 3) {
        point.x = To_Int16(point.x - (point.x - second.x) / 2.0);
        point.y = To_Int16(point.y - (point.y - second.y) / 2.0);
        changed = Drop_Two(i);
      }
      if (Distance(point, third) > 20) continue;
      const float s3 = Slope_Of(point, third), s1 = Slope_Of(point, At(i + 1)), s2 = Slope_Of(point, second);
      if ((s1 > s3 && s2 < s3) || (s1 < s3 && s2 > s3)) changed = Drop_Two(i);
    }
    return changed;
  }

  void Thin() {
    for (int cycle = 1;; ++cycle) {
      if (cycle > mostCycles)
        throw TraceFault{QStringLiteral("Fehler beim Glätten der Randlinie: Zu viele Zyklen") + lastTail};
      Drop_Collinear();
      if (!Smooth()) return;
      Pack();
    }
  }

  const TraceRequest& request;
  Pixels pixels;
  PatchColors bounds;
  int firstRing = 2;
  QPoint start;
  std::vector<EdgePoint> points;
};

}  // namespace

const std::vector<QPoint>& Digi_Ring(int radius) {
  static const std::array<std::vector<QPoint>, widestRing> rings = {Make_Ring(1), Make_Ring(2), Make_Ring(3),
                                                                    Make_Ring(4), Make_Ring(5)};
  return rings[static_cast<size_t>(std::clamp(radius, 1, widestRing) - 1)];
}

int GetRGB(int color, int channel) {
  if (channel < 1 || channel > 3 || color < 0 || color >= 0x1000000) return -1;
  return (color >> (8 * (channel - 1))) & 255;
}

int Entfernung(float dx, float dy) {
  if (dx == 0) return To_Int16(static_cast<double>(dy));
  if (dy == 0) return To_Int16(static_cast<double>(dx));
  return To_Int16(
      std::sqrt(static_cast<double>(dx) * static_cast<double>(dx) + static_cast<double>(dy) * static_cast<double>(dy)));
}

double Part_Of_Picture(const std::vector<QPoint>& outline, QSize picture) {
  double twice = 0;
  for (size_t i = 0; i < outline.size(); ++i) {
    const QPoint here = outline[i], next = outline[(i + 1) % outline.size()];
    twice += static_cast<double>(here.x()) * next.y() - static_cast<double>(next.x()) * here.y();
  }
  return std::abs(twice) / 2 / picture.width() / picture.height();
}

TraceResult Digi_Trace_RGB(const TraceRequest& request) {
  TraceResult result = Follower(request).Run();
  result.part = Part_Of_Picture(result.outline, request.picture.size());
  return result;
}
