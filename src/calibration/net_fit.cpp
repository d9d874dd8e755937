#include "calibration/net_fit.h"

#include <QRectF>
#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <set>

#include "platform/error.h"
#include "platform/text.h"

namespace {

using Power = NetPolynomial::Power;
using Complex = std::complex<double>;

constexpr double degreesPerRadian = 180 / std::numbers::pi;

const std::vector<Power> affine = {{0, 0}, {1, 0}, {0, 1}};
const std::vector<Power> straight = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
const std::vector<Power> bent = {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {2, 0}, {0, 2}};

size_t Count_Used(const ControlPoints& points) {
  return static_cast<size_t>(
      std::count_if(points.begin(), points.end(), [](const ControlPoint& point) { return point.used; }));
}

// Points ------------------------------------------------------------------------------------------------------------

[[noreturn]] void Raise_On_One_Line() {
  Raise(badPoints, QStringLiteral("Die Punkte liegen auf einer Linie. Setzen Sie einen weiteren abseits davon."));
}

constexpr double flattest = 0.02;  // of points that are no line

// Breadth of a cloud of points across its longest direction, as a part of its length.
double Flatness(const ControlPoints& points, QPointF ControlPoint::*side) {
  Complex middle, moment;
  double square = 0, count = 0;
  for (const ControlPoint& point : points)
    if (point.used) middle += Complex((point.*side).x(), (point.*side).y()), ++count;
  middle /= count;
  for (const ControlPoint& point : points) {
    if (!point.used) continue;
    const Complex offset = Complex((point.*side).x(), (point.*side).y()) - middle;
    moment += offset * offset;
    square += std::norm(offset);
  }
  const double along = square + std::abs(moment), across = std::max(0.0, square - std::abs(moment));
  return along > 0 ? std::sqrt(across / along) : 0;
}

void Check_Distinct(const ControlPoints& points, NetKind kind) {
  constexpr double sameSpot = 1, sameMetres = 0.01;
  if (Count_Used(points) < leastPoints) Raise(badPoints, QStringLiteral("Es werden mindestens drei Punkte gebraucht."));
  std::vector<size_t> order;
  for (size_t i = 0; i < points.size(); ++i)
    if (points[i].used) order.push_back(i);
  std::sort(order.begin(), order.end(), [&](size_t a, size_t b) { return points[a].place.x() < points[b].place.x(); });
  for (size_t i = 0; i < order.size(); ++i)
    for (size_t j = i + 1; j < order.size(); ++j) {
      const ControlPoint &one = points[order[i]], &other = points[order[j]];
      const double apart = other.place.x() - one.place.x();
      if (apart > sameMetres && j > i + 1 && order.size() > 100) break;  // sorted: further ones lie further away
      const QPointF between = other.pixel - one.pixel;
      const bool samePlace = Metres_Between(kind, one.place, other.place) < sameMetres;
      if (!samePlace && std::hypot(between.x(), between.y()) >= sameSpot) continue;
      const auto [first, second] = std::minmax(order[i], order[j]);
      Raise(badPoints, QStringLiteral("Punkt %1 und Punkt %2 ").arg(first + 1).arg(second + 1) +
                           (samePlace ? QStringLiteral("haben dieselben Koordinaten: ") + Place_Text(kind, one.place)
                                      : QStringLiteral("liegen auf derselben Stelle der Karte.")));
    }
}

// Fits --------------------------------------------------------------------------------------------------------------

// As complex numbers the similarity is one line: place = c0 + c1 * conj(pixel).
Similarity Fit_Similarity(const ControlPoints& points, std::vector<double>& leverage) {
  Complex middlePixel, middlePlace, product;
  double square = 0, count = 0;
  const auto conjugate = [](QPointF pixel) { return Complex(pixel.x(), -pixel.y()); };
  const auto complex = [](QPointF place) { return Complex(place.x(), place.y()); };
  for (const ControlPoint& point : points) {
    if (!point.used) continue;
    middlePixel += conjugate(point.pixel);
    middlePlace += complex(point.place);
    ++count;
  }
  middlePixel /= count;
  middlePlace /= count;
  for (const ControlPoint& point : points) {
    if (!point.used) continue;
    const Complex offset = conjugate(point.pixel) - middlePixel;
    product += std::conj(offset) * (complex(point.place) - middlePlace);
    square += std::norm(offset);
  }
  const Complex factor = product / square, start = middlePlace - factor * middlePixel;
  leverage.clear();
  for (const ControlPoint& point : points)
    leverage.push_back(1 / count + std::norm(conjugate(point.pixel) - middlePixel) / square);
  return {start.real(), start.imag(), factor.real(), factor.imag()};
}

// Powers up to the number of different values, at most the second.
std::vector<Power> Grid_Powers(const ControlPoints& points) {
  std::set<qint64> columns, rows;
  const auto rounded = [](double value) { return static_cast<qint64>(std::llround(value * 1e7)); };
  for (const ControlPoint& point : points) {
    if (!point.used) continue;
    columns.insert(rounded(point.place.x()));
    rows.insert(rounded(point.place.y()));
  }
  std::vector<Power> powers;
  for (int up = 0; up < static_cast<int>(std::min<size_t>(3, rows.size())); ++up)
    for (int across = 0; across < static_cast<int>(std::min<size_t>(3, columns.size())); ++across)
      powers.push_back({across, up});
  return powers;
}

NetPolynomial Fit_Curves(const ControlPoints& points, NetShape shape, std::vector<double>& leverage) {
  constexpr size_t enoughForBent = 8;
  std::vector<std::vector<Power>> tries;
  const bool bends = shape == NetShape::Bent || (shape == NetShape::Automatic && Count_Used(points) >= enoughForBent);
  if (shape == NetShape::ThroughGrid) tries.push_back(Grid_Powers(points));
  if (bends || shape == NetShape::ThroughGrid) tries.push_back(bent);
  tries.push_back(straight);
  tries.push_back(affine);
  for (const auto& powers : tries)
    if (auto net = NetPolynomial::Fit(points, powers, &leverage)) return *std::move(net);
  Raise_On_One_Line();
}

// Scale, turn and skew from how the pixel changes by a metre east and a metre north in the middle of the points.
void Measure_Look(NetFit& fit, const ControlPoints& points) {
  const auto plane = NetPolynomial::Fit(points, affine);
  if (!plane) Raise_On_One_Line();
  QPointF east, north;
  plane->Slopes_At(plane->Middle(), east, north);
  const QPointF middle = plane->Middle();
  const double unitEast = Metres_Between(fit.kind, middle, middle + QPointF(1e-3, 0)) * 1e3;
  const double unitNorth = Metres_Between(fit.kind, middle, middle + QPointF(0, 1e-3)) * 1e3;
  east /= unitEast;
  north /= unitNorth;
  if (east.x() * -north.y() + east.y() * north.x() <= 0)
    Raise(badPoints,
          QStringLiteral("Die Karte wäre gespiegelt. Sind Rechtswert und Hochwert (Länge und Breite) vertauscht?"));
  const double eastTurn = std::atan2(east.y(), east.x()), northTurn = std::atan2(north.x(), -north.y());
  fit.metresPerPixel = 2 / (std::hypot(east.x(), east.y()) + std::hypot(north.x(), north.y()));
  fit.turn = (eastTurn + northTurn) / 2 * degreesPerRadian;
  fit.skew = (northTurn - eastTurn) * degreesPerRadian;
  if (fit.similarity) {
    fit.metresPerPixel = std::hypot(fit.similarity->a, fit.similarity->b);
    fit.turn = std::atan2(fit.similarity->b, fit.similarity->a) * degreesPerRadian;
  }
}

NetFit Fit_Used(const ControlPoints& points, NetKind kind, NetShape shape) {
  NetFit fit;
  fit.kind = kind;
  std::vector<double> leverage;
  if (Is_Metric(kind))
    fit.similarity = Fit_Similarity(points, leverage);
  else
    fit.polynomial = Fit_Curves(points, shape, leverage);
  double squarePixels = 0, squareMetres = 0, count = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    const ControlPoint& point = points[i];
    PointFit result;
    result.arrow = fit.Pixel_Of(point.place) - point.pixel;
    result.pixels = std::hypot(result.arrow.x(), result.arrow.y());
    const auto there = fit.polynomial ? fit.polynomial->Place_Of(point.pixel, point.place) : fit.Place_Of(point.pixel);
    if (there) result.metres = Metres_Between(kind, point.place, *there);
    const double rest = point.used ? 1 - leverage[i] : 1;
    result.alone = rest > 1e-6 ? result.metres / rest : 0;
    fit.points.push_back(result);
    if (!point.used) continue;
    squarePixels += result.pixels * result.pixels;
    squareMetres += result.metres * result.metres;
    ++count;
  }
  fit.meanPixels = std::sqrt(squarePixels / count);
  fit.meanMetres = std::sqrt(squareMetres / count);
  return fit;
}

// One bad point bends the fit and lifts the mean, so each suspect is judged by a fit of the others, the worst first.
void Mark_Outliers(NetFit& fit, const ControlPoints& points, NetShape shape) {
  constexpr double timesMean = 3, leastPixels = 3;
  constexpr size_t redundant = 1;
  ControlPoints left = points;
  NetFit now = fit;
  for (size_t round = 0; round < points.size() / 4 + 1; ++round) {
    if (Count_Used(left) <= leastPoints + redundant - 1) return;
    size_t worst = left.size();
    for (size_t i = 0; i < left.size(); ++i)
      if (left[i].used && (worst == left.size() || now.points[i].alone > now.points[worst].alone)) worst = i;
    if (worst == left.size() || now.points[worst].alone < leastPixels * fit.metresPerPixel) return;
    left[worst].used = false;
    const bool judged = Count_Used(left) > leastPoints || Is_Metric(fit.kind);
    if (!judged || Flatness(left, &ControlPoint::place) < flattest) return;
    now = Fit_Used(left, fit.kind, shape);
    if (now.points[worst].metres <= timesMean * now.meanMetres) return;
    fit.points[worst].outlier = true;
    fit.points[worst].alone = now.points[worst].metres;
  }
}

NetFit Fit_Whole(const ControlPoints& points, NetKind kind, NetShape shape) {
  if (Flatness(points, &ControlPoint::pixel) < flattest || Flatness(points, &ControlPoint::place) < flattest)
    Raise_On_One_Line();
  NetFit fit = Fit_Used(points, kind, shape);
  Measure_Look(fit, points);
  if (std::fabs(fit.turn) >= 90)
    Raise(badPoints, QStringLiteral("Die Karte steht auf dem Kopf. Drehen Sie das Bild, bevor Sie es kalibrieren."));
  return fit;
}

QString Outlier_Text(size_t index, double metres) {
  return QStringLiteral("Punkt %1 passt nicht zu den anderen: %2 m. Vertauschte Ziffern?")
      .arg(index + 1)
      .arg(Format(metres, QStringLiteral("# ### ##0")).trimmed());
}

// Points that make no net, all but one of which make a good one: that one's number and distance. A single swapped digit
// can draw a net into a line or put it on its head.
std::optional<QString> Culprit(const ControlPoints& points, NetKind kind, NetShape shape) {
  constexpr size_t mostTried = 60;
  constexpr double goodPixels = 10;
  const size_t enough = Is_Metric(kind) ? leastPoints + 1 : leastPoints + 2;
  if (Count_Used(points) < enough || points.size() > mostTried) return std::nullopt;
  std::optional<QString> text;
  double least = goodPixels;
  for (size_t i = 0; i < points.size(); ++i) {
    if (!points[i].used) continue;
    ControlPoints others = points;
    others[i].used = false;
    try {
      const NetFit fit = Fit_Whole(others, kind, shape);
      if (fit.meanPixels >= least) continue;
      least = fit.meanPixels;
      text = Outlier_Text(i, fit.points[i].metres);
    } catch (const Error&) {
      // Not the only bad one.
    }
  }
  return text;
}

}  // namespace

QPointF Similarity::Pixel_Of(QPointF place) const {
  const double r = place.x() - right, h = place.y() - high, square = a * a + b * b;
  return {(a * r + b * h) / square, (b * r - a * h) / square};
}

QPointF NetFit::Pixel_Of(QPointF place) const {
  return similarity ? similarity->Pixel_Of(place) : polynomial->Pixel_Of(place);
}

std::optional<QPointF> NetFit::Place_Of(QPointF pixel) const {
  if (similarity) return similarity->Place_Of(pixel);
  return polynomial->Place_Of(pixel);
}

NetFit Fit_Net(const ControlPoints& points, NetKind kind, NetShape shape) {
  Check_Distinct(points, kind);
  try {
    NetFit fit = Fit_Whole(points, kind, shape);
    Mark_Outliers(fit, points, shape);
    return fit;
  } catch (const Error&) {
    if (const auto culprit = Culprit(points, kind, shape)) Raise(badPoints, *culprit);
    throw;
  }
}

QStringList Fit_Remarks(const NetFit& fit, const ControlPoints& points, QSize map) {
  constexpr double leastCovered = 0.2, farTurn = 15;
  QStringList remarks;
  QRectF covered;
  for (size_t i = 0; i < points.size(); ++i) {
    if (!points[i].used) continue;
    covered = covered.isNull() ? QRectF(points[i].pixel, QSizeF(1e-6, 1e-6))
                               : covered.united(QRectF(points[i].pixel, QSizeF(1e-6, 1e-6)));
    if (fit.points[i].outlier) remarks << Outlier_Text(i, fit.points[i].alone);
  }
  const double part = covered.width() * covered.height() / (static_cast<double>(map.width()) * map.height());
  if (part < leastCovered)
    remarks << QStringLiteral("Die Punkte umfassen nur %1 % der Karte. Setzen Sie auch welche am Rand.")
                   .arg(Format(part * 100, QStringLiteral("##0")));
  if (std::fabs(fit.turn) > farTurn)
    remarks << QStringLiteral("Die Karte ist um %1° gedreht.").arg(Format(fit.turn, QStringLiteral("##0")));
  return remarks;
}
