#include <algorithm>
#include <cmath>

#include "calibration/least_squares.h"
#include "calibration/net_fit.h"

namespace {

double Power_Of(double base, int exponent) {
  double result = 1;
  for (int i = 0; i < exponent; ++i) result *= base;
  return result;
}

double Slope_Of_Power(double base, int exponent) { return exponent == 0 ? 0 : exponent * Power_Of(base, exponent - 1); }

}  // namespace

std::vector<double> NetPolynomial::Terms(QPointF place) const {
  const double u = (place.x() - middle.x()) / half.x(), v = (place.y() - middle.y()) / half.y();
  std::vector<double> terms;
  terms.reserve(powers.size());
  for (const Power power : powers) terms.push_back(Power_Of(u, power.across) * Power_Of(v, power.up));
  return terms;
}

std::optional<NetPolynomial> NetPolynomial::Fit(const ControlPoints& points, const std::vector<Power>& powers,
                                                std::vector<double>* leverage) {
  NetPolynomial net;
  net.powers = powers;
  QPointF low, high;
  size_t used = 0;
  for (const ControlPoint& point : points) {
    if (!point.used) continue;
    const QPointF at = point.place;
    low = used == 0 ? at : QPointF(std::min(low.x(), at.x()), std::min(low.y(), at.y()));
    high = used == 0 ? at : QPointF(std::max(high.x(), at.x()), std::max(high.y(), at.y()));
    ++used;
  }
  net.middle = (low + high) / 2;
  net.half = (high - low) / 2;
  if (used < powers.size() || !(net.half.x() > 0) || !(net.half.y() > 0)) return std::nullopt;
  LeastSquares squares(powers.size());
  for (const ControlPoint& point : points)
    if (point.used) squares.Add(net.Terms(point.place), point.pixel);
  auto solution = squares.Solve();
  if (!solution) return std::nullopt;
  net.coefficients = *std::move(solution);
  if (leverage) {
    leverage->clear();
    for (const ControlPoint& point : points) leverage->push_back(squares.Leverage(net.Terms(point.place)));
  }
  return net;
}

QPointF NetPolynomial::Pixel_Of(QPointF place) const {
  const double u = (place.x() - middle.x()) / half.x(), v = (place.y() - middle.y()) / half.y();
  QPointF pixel;
  for (size_t i = 0; i < powers.size(); ++i)
    pixel += Power_Of(u, powers[i].across) * Power_Of(v, powers[i].up) * coefficients[i];
  return pixel;
}

void NetPolynomial::Slopes_At(QPointF place, QPointF& alongX, QPointF& alongY) const {
  const double u = (place.x() - middle.x()) / half.x(), v = (place.y() - middle.y()) / half.y();
  alongX = alongY = {};
  for (size_t i = 0; i < powers.size(); ++i) {
    const Power power = powers[i];
    alongX += Slope_Of_Power(u, power.across) * Power_Of(v, power.up) / half.x() * coefficients[i];
    alongY += Power_Of(u, power.across) * Slope_Of_Power(v, power.up) / half.y() * coefficients[i];
  }
}

std::optional<QPointF> NetPolynomial::Place_Of(QPointF pixel, std::optional<QPointF> start) const {
  constexpr int mostRounds = 30;
  constexpr double exact = 1e-5, farAway = 1e7;  // pixels
  QPointF place = start.value_or(middle);
  for (int round = 0; round < mostRounds; ++round) {
    const QPointF miss = pixel - Pixel_Of(place);
    if (std::hypot(miss.x(), miss.y()) < exact) return place;
    if (!(std::hypot(miss.x(), miss.y()) < farAway)) return std::nullopt;
    QPointF alongX, alongY;
    Slopes_At(place, alongX, alongY);
    const double turn = alongX.x() * alongY.y() - alongX.y() * alongY.x();
    if (turn == 0) return std::nullopt;
    place += QPointF((miss.x() * alongY.y() - miss.y() * alongY.x()) / turn,
                     (miss.y() * alongX.x() - miss.x() * alongX.y()) / turn);
  }
  return std::nullopt;
}
