#include "calibration/curve_lines.h"

#include <QRectF>
#include <algorithm>
#include <array>
#include <cmath>

#include "calibration/calibration_plan.h"
#include "coordinates/degree_text.h"
#include "platform/error.h"
#include "platform/text.h"

namespace calibration {

namespace {

constexpr int mostSamples = 1200, leastStep = 2;  // samples a line, pixels

// What the numbers of the file count: degrees, or kilometres from an origin in metres.
struct Numbers {
  bool kilometres = false, sexagesimal = false;
  QPointF origin;
  QPointF Written(QPointF place) const {
    return kilometres ? QPointF((place.x() - origin.x()) / 1000, (place.y() - origin.y()) / 1000) : place;
  }
  QPointF Place(QPointF written) const {
    return kilometres ? QPointF(written.x() * 1000 + origin.x(), written.y() * 1000 + origin.y()) : written;
  }
};

using ThreeValues = std::array<double, 3>;

[[noreturn]] void Raise_No_Lines() {
  Raise(badPoints,
        QStringLiteral("Die Punkte ergeben kein Netz, das über die Karte reicht. Setzen Sie Punkte auch am Rand."));
}

// Range of the net from edge to edge of the map, as written: between lines nearer to each other the whole pixels of the
// samples would make themselves felt at the edges.
QRectF Range_On_Map(const NetFit& fit, const Numbers& numbers, QSize map) {
  const QSizeF extent = Extent_Of(fit, map);
  const auto middle = fit.Place_Of(QPointF(map.width() / 2.0, map.height() / 2.0));
  if (!middle || !(extent.width() > 0) || !(extent.height() > 0)) Raise_No_Lines();
  const QPointF half(extent.width() / 2, extent.height() / 2);
  return {numbers.Written(*middle - half), numbers.Written(*middle + half)};
}

// Three values in the range that the file can write exactly: the outer ones near its ends, round if there is room.
ThreeValues Three_Lines(double low, double high, bool sexagesimal) {
  constexpr double parts = 8;
  static const std::vector<double> decimal = {10,  5,   2,    1,    .5,   .2,   .1,   .05,
                                              .02, .01, .005, .002, .001, 1e-4, 1e-5, 1e-6};
  static const std::vector<double> sixty = {36000, 18000, 7200, 3600, 1800, 900, 600, 300, 120,
                                            60,    30,    10,   5,    2,    1,   .1,  .01};
  const double scale = sexagesimal ? 3600 : 1;
  for (const double unit : sexagesimal ? sixty : decimal) {
    if ((high - low) * scale / unit < parts) continue;
    const double first = std::ceil(low * scale / unit), last = std::floor(high * scale / unit);
    const double middle = std::nearbyint((first + last) / 2);
    return {first * unit / scale, middle * unit / scale, last * unit / scale};
  }
  Raise(badPoints, QStringLiteral("Die Karte zeigt einen zu kleinen Ausschnitt für ein Netz in diesen Einheiten."));
}

// Where the line of one value crosses each place of the run. A parallel runs along x, a meridian along y.
class LineTrace {
 public:
  LineTrace(const NetPolynomial& netOfMap, const Numbers& units, bool isParallel, double value)
      : net(netOfMap), numbers(units), parallel(isParallel), fixed(value), place(Start()) {}

  double Across(double run) {
    constexpr int mostRounds = 40;
    constexpr double exact = 1e-4, longestStep = 0.5;
    for (int round = 0; round < mostRounds; ++round) {
      const QPointF pixel = net.Pixel_Of(place);
      const double miss = run - (parallel ? pixel.x() : pixel.y());
      if (std::fabs(miss) < exact) return parallel ? pixel.y() : pixel.x();
      QPointF alongX, alongY;
      net.Slopes_At(place, alongX, alongY);
      const double slope = parallel ? alongX.x() : alongY.y();
      if (!(parallel ? slope > 0 : slope < 0)) break;
      double& moving = parallel ? place.rx() : place.ry();
      moving += miss / slope;
      if (!std::isfinite(moving) || std::fabs(miss) > 1e6 * longestStep) break;
    }
    Raise(badPoints, QStringLiteral("Die Linien des Netzes falten sich am Rand der Karte. Setzen Sie Punkte auch dort, "
                                    "oder wählen Sie gerade Linien."));
  }

 private:
  QPointF Start() const {
    const QPointF middle = numbers.Written(net.Middle());
    return numbers.Place(parallel ? QPointF(middle.x(), fixed) : QPointF(fixed, middle.y()));
  }
  const NetPolynomial& net;
  const Numbers& numbers;
  bool parallel;
  double fixed;
  QPointF place;
};

struct Run {
  int start = 0, step = 1, count = 0;
};
// One step beyond both edges.
Run Run_Over(int pixels) {
  Run run;
  run.step = std::max(leastStep, (pixels + mostSamples - 5) / (mostSamples - 4));
  run.start = -run.step;
  run.count = (pixels + run.step - 1) / run.step + 3;
  return run;
}

QString Curve_Line(LineTrace trace, const Run& run, bool parallel, int number, double value) {
  constexpr double farthest = 30000;  // readers keep 16 bits
  QString line = QStringLiteral("%1%2x%3y0S0R%4")
                     .arg(parallel ? QStringLiteral("b") : QStringLiteral("l"))
                     .arg(number)
                     .arg(run.start)
                     .arg(QString::number(value, 'f', 7));
  line.reserve(line.size() + run.count * 6);
  for (int k = 0; k < run.count; ++k) {
    const double across = trace.Across(run.start + k * run.step);
    line += u'/';
    line += QString::number(static_cast<int>(std::nearbyint(std::clamp(across, -farthest, farthest))));
  }
  return line;
}

QString Value_Text(double value, bool latitude, bool sexagesimal) {
  const QString sign = value < 0 ? QStringLiteral("-") : QStringLiteral("+");
  const double size = std::fabs(value);
  if (sexagesimal) return Dec_To_GMS((latitude ? u'y' : u'x') + sign + QString::number(size, 'f', 9));
  const QString number = QString::number(size, 'f', 6).replace(u'.', u',');
  return latitude ? sign + u' ' + number.rightJustified(9, u'0') : sign + number.rightJustified(10, u'0');
}

QString Point_Line(int number, const QString& longitude, const QString& latitude, QPoint pixel) {
  const auto column = [](int value) { return QString::number(value).rightJustified(7); };
  return QStringLiteral("R%1  ").arg(number) + longitude.leftJustified(15) + latitude.leftJustified(15) +
         column(pixel.x()) + u' ' + column(pixel.y()) + QStringLiteral("  ") + column(pixel.x() + 10) + u' ' +
         column(pixel.y() - 10);
}

QString Grid_Line(const CalibrationPlan& plan, const Numbers& numbers) {
  constexpr int datumWidth = 13;
  const QString datum =
      QStringLiteral("D: ") + plan.net.datum.trimmed().leftJustified(datumWidth) + QStringLiteral("F: 1");
  if (!numbers.kilometres)
    return QStringLiteral("Grid GEO %1 ").arg(numbers.sexagesimal ? QStringLiteral("GMS") : QStringLiteral("DEC")) +
           datum;
  return QStringLiteral("Grid GEO PKG Z: %1 R: %2 H: %3 ")
             .arg(plan.net.zone.trimmed())
             .arg(static_cast<qint64>(numbers.origin.x()))
             .arg(static_cast<qint64>(numbers.origin.y())) +
         datum;
}

// Decimals enough that a reader finds the fraction again.
QString Division_Line(const CalibrationPlan& plan, const Numbers& numbers) {
  const double step = numbers.kilometres ? plan.net.spacing / 1000 : plan.net.spacing;
  if (!(step >= 0) || !std::isfinite(step))
    Raise(badPoints, QStringLiteral("Der Abstand der Netzlinien ist keine Zahl."));
  QString text = QString::number(step, 'f', 7);
  while (text.contains(u'.') && (text.endsWith(u'0') || text.endsWith(u'.'))) {
    const bool point = text.endsWith(u'.');
    text.chop(1);
    if (point) break;
  }
  return QStringLiteral("Div = ") + text;
}

Numbers Numbers_Of(const CalibrationPlan& plan) {
  constexpr double block = 10'000, across = 100'000;  // metres
  Numbers numbers;
  numbers.kilometres = plan.net.kind == NetKind::Kilometres;
  numbers.sexagesimal = plan.net.kind == NetKind::DegreesGms;
  if (!numbers.kilometres) return numbers;
  const auto middle = plan.fit.Place_Of(QPointF(plan.map.width() / 2.0, plan.map.height() / 2.0));
  if (!middle) Raise_No_Lines();
  const QSizeF extent = Extent_Of(plan.fit, plan.map);
  numbers.origin = {std::floor((middle->x() - extent.width() / 2) / across) * across,
                    std::floor((middle->y() - extent.height() / 2) / block) * block};
  constexpr double mostUp = 99'000, mostAcross = 990'000;
  if (extent.height() + block > mostUp || extent.width() + across > mostAcross)
    Raise(badPoints,
          QStringLiteral("Die Karte ist zu groß für ein Netz in Kilometern: höchstens 89 km von Süd nach Nord."));
  return numbers;
}

}  // namespace

TracedNet Trace_Net(const CalibrationPlan& plan) {
  const Numbers numbers = Numbers_Of(plan);
  const NetPolynomial& net = *plan.fit.polynomial;
  const QRectF range = Range_On_Map(plan.fit, numbers, plan.map);
  const ThreeValues east = Three_Lines(range.left(), range.right(), numbers.sexagesimal);
  ThreeValues north = Three_Lines(range.top(), range.bottom(), numbers.sexagesimal);
  std::reverse(north.begin(), north.end());  // from north to south
  const Run across = Run_Over(plan.map.width()), down = Run_Over(plan.map.height());
  TracedNet traced{Grid_Line(plan, numbers), Division_Line(plan, numbers), {}};
  traced.lines << QStringLiteral("BParm = T1S%1N%2").arg(across.step).arg(across.count)
               << QStringLiteral("LParm = T1S%1N%2").arg(down.step).arg(down.count);
  for (int n = 0; n < 9; ++n) {
    const auto column = static_cast<size_t>(n % 3), row = static_cast<size_t>(n / 3);
    const QPointF pixel = plan.fit.Pixel_Of(numbers.Place({east[column], north[row]}));
    traced.lines << Point_Line(n + 1, Value_Text(east[column], false, numbers.sexagesimal),
                               Value_Text(north[row], true, numbers.sexagesimal), pixel.toPoint());
  }
  for (size_t n = 0; n < 3; ++n)
    traced.lines << Curve_Line({net, numbers, true, north[n]}, across, true, static_cast<int>(n) + 1, north[n]);
  for (size_t n = 0; n < 3; ++n)
    traced.lines << Curve_Line({net, numbers, false, east[n]}, down, false, static_cast<int>(n) + 1, east[n]);
  return traced;
}

}  // namespace calibration
