#pragma once
#include <QSize>
#include <QStringList>
#include <optional>

#include "calibration/control_point.h"

// The net of a map from measured points. Metric nets: one scale, one turn, one reference, which is all that the
// conversions know of such a net. All others: pixels as a polynomial of the place.

// How the lines of a traced net run.
enum class NetShape {
  Automatic,   // straight with fewer than eight points, else bent
  Straight,    // between straight lines that need not be parallel
  Bent,        // of the second degree
  ThroughGrid  // through the points themselves where they form a grid of up to three by three
};

// Rechtswert = right + a x + b y, Hochwert = high + b x - a y.
struct Similarity {
  double right = 0, high = 0, a = 1, b = 0;
  // Of a map pixel, not rounded.
  QPointF Place_Of(QPointF pixel) const {
    return {right + a * pixel.x() + b * pixel.y(), high + b * pixel.x() - a * pixel.y()};
  }
  QPointF Pixel_Of(QPointF place) const;  // the inverse
};

// Pixel = sum of coefficients times powers of the place, which is scaled to -1..1.
class NetPolynomial {
 public:
  struct Power {
    int across = 0, up = 0;
  };
  // Nothing where the points do not determine so many powers. `leverage`, one a point, is filled.
  static std::optional<NetPolynomial> Fit(const ControlPoints& points, const std::vector<Power>& powers,
                                          std::vector<double>* leverage = nullptr);
  QPointF Pixel_Of(QPointF place) const;  // not rounded
  // How the pixel changes by one unit of the place along x and along y.
  void Slopes_At(QPointF place, QPointF& alongX, QPointF& alongY) const;
  // Nothing where the net folds. A start that is near saves time.
  std::optional<QPointF> Place_Of(QPointF pixel, std::optional<QPointF> start = {}) const;
  QPointF Middle() const { return middle; }  // of the points' places

 private:
  std::vector<double> Terms(QPointF place) const;
  std::vector<Power> powers;
  std::vector<QPointF> coefficients;
  QPointF middle, half;
};

// One measured point against the fit.
struct PointFit {
  QPointF arrow;                  // from where it was measured to where the fit puts it, pixels
  double pixels = 0, metres = 0;  // length of the arrow
  double alone = 0;               // metres to where the other points alone put it
  bool outlier = false;           // more than three times as far as the others are on the average
};

struct NetFit {
  NetKind kind = NetKind::Utm;
  std::optional<Similarity> similarity;     // metric nets
  std::optional<NetPolynomial> polynomial;  // all others
  std::vector<PointFit> points;             // one a measured point, also for those that are switched off
  double meanPixels = 0, meanMetres = 0;    // root of the mean square over the points in use
  double metresPerPixel = 0;
  double turn = 0;  // degrees, how far the net's north lies clockwise of the map's top edge
  double skew = 0;  // degrees by which the net's lines miss the right angle

  // Map pixel of a place, and the reverse; nothing where the net folds.
  QPointF Pixel_Of(QPointF place) const;
  std::optional<QPointF> Place_Of(QPointF pixel) const;
};

inline constexpr size_t leastPoints = 3;
inline constexpr int badPoints = 5000;  // number of the errors below

// Raises badPoints with a German text: fewer than three points in use, points on one line, two with the same
// coordinates or on the same spot, a mirrored net, more than a quarter turn.
NetFit Fit_Net(const ControlPoints& points, NetKind kind, NetShape shape = NetShape::Automatic);
// What the user should know of a fit: points that do not go with the others, points that cover little of the map, a map
// that is turned far. German sentences.
QStringList Fit_Remarks(const NetFit& fit, const ControlPoints& points, QSize map);
