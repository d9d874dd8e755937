#include "calibration/calibration_reading.h"
#include "calibration/calibration_writer.h"
#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"

// From measured points through the file and its reader to the conversions of the program.

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

MATCHER_P(Says, part, "") { return arg.contains(QString(part)); }

// A map as it may be: where each of its pixels really lies.
struct TrueNet {
  NetDescription net;
  QSize map;
  double turn = 0, metresPerPixel = 2;  // degrees
  QPointF middle;                       // place of the map's middle
  double bend = 0;                      // of traced nets: pixels over half the longer side
  double degreesWide() const { return 1 / std::cos(middle.y() * 3.14159265358979 / 180); }

  QPointF Pixel_Of(QPointF place) const {
    QPointF metres = place - middle;
    if (Is_Geographic(net.kind)) {
      // Meridians draw together toward the pole.
      const double shrink = std::cos(place.y() * 3.14159265358979 / 180);
      metres = {metres.x() * 111320 * shrink, metres.y() * 111320};
    }
    const double angle = turn * 3.14159265358979 / 180, half = map.width() / 2.0,
                 far = std::max(map.width(), map.height()) / 2.0;
    QPointF flat = metres / metresPerPixel;
    if (!Is_Metric(net.kind)) flat.ry() += bend * (flat.x() / far) * (flat.x() / far);
    return {half + flat.x() * std::cos(angle) + flat.y() * std::sin(angle),
            map.height() / 2.0 + flat.x() * std::sin(angle) - flat.y() * std::cos(angle)};
  }
};

double Nearest(double value, double step) { return std::nearbyint(value / step) * step; }

TrueNet Random_Net(NetKind kind, std::mt19937& random) {
  const auto between = [&random](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
  TrueNet net;
  net.net.kind = kind;
  net.map = QSize(static_cast<int>(between(700, 5000)), static_cast<int>(between(700, 5000)));
  net.turn = between(-10, 10);
  net.metresPerPixel = std::exp(between(std::log(0.4), std::log(12)));
  const double metres = std::min(net.map.width(), net.map.height()) * net.metresPerPixel;
  net.bend = between(-12, 12);
  if (Is_Geographic(kind)) {
    net.middle = QPointF(between(-170, 170), between(-60, 65));
    net.net.spacing = Fitting_Spacing(kind, metres / 111320);
  } else {
    net.middle = QPointF(between(250000, 700000) + (kind == NetKind::GaussKrueger ? 4e6 : 0), between(5.2e6, 6e6));
    net.net.spacing = Fitting_Spacing(kind, metres);
    if (kind == NetKind::GaussKrueger) net.net.zone = "4", net.net.datum = "Potsdam";
  }
  return net;
}

// All crossings on the map, each measured half a pixel beside.
ControlPoints Measured(const TrueNet& net, std::mt19937& random, double noise = 0.5) {
  std::uniform_real_distribution<double> angle(0, 6.283185307), length(0, noise);
  ControlPoints points;
  const double spacing = net.net.spacing;
  const QPointF first(Nearest(net.middle.x(), spacing), Nearest(net.middle.y(), spacing));
  for (int i = -40; i <= 40; ++i)
    for (int j = -40; j <= 40; ++j) {
      const QPointF place = first + QPointF(i * spacing, j * spacing), pixel = net.Pixel_Of(place);
      if (!QRectF(QPointF(), net.map).contains(pixel)) continue;
      const double way = angle(random), far = length(random);
      points.push_back({pixel + QPointF(far * std::cos(way), far * std::sin(way)), place});
    }
  return points;
}

CalibrationPlan Plan_Of(const TrueNet& net, const ControlPoints& points) {
  return {"Karte.bmp", net.map, net.net, {}, points, Fit_Net(points, net.net.kind)};
}

// How far the program's conversions of a file miss the true net at worst, both ways, in pixels.
double Worst_Miss(const TrueNet& net, const CoordinateState& state, std::mt19937& random) {
  std::uniform_real_distribution<double> part(-0.5, 0.5);
  const double high = net.map.height() * net.metresPerPixel, wide = net.map.width() * net.metresPerPixel;
  double worst = 0;
  for (int i = 0; i < 60; ++i) {
    QPointF place = net.middle + QPointF(part(random) * wide, part(random) * high);
    if (Is_Geographic(net.net.kind))
      place = net.middle +
              QPointF((place.x() - net.middle.x()) / 111320 * net.degreesWide(), (place.y() - net.middle.y()) / 111320);
    const QPointF pixel = net.Pixel_Of(place);
    if (!QRectF(QPointF(), net.map).contains(pixel)) continue;
    QPointF found;
    if (state.Metric()) {
      // Whole metres go in; the pixel comes out whole.
      const QPointF whole(std::nearbyint(place.x()), std::nearbyint(place.y()));
      int x = 0, y = 0;
      EXPECT_EQ(Koord_To_Pixel(state, static_cast<int>(whole.x()), static_cast<int>(whole.y()), x, y), onMap);
      const QPointF exact = net.Pixel_Of(whole), off = QPointF(x, y) - exact;
      worst = std::max({worst, std::fabs(off.x()), std::fabs(off.y())});
      const QPointF back = net.Pixel_Of(Pixel_To_Koord(state, x, y)) - QPointF(x, y);
      worst = std::max(worst, std::hypot(back.x(), back.y()));
      continue;
    }
    const QPointF written =
        state.NetPKG ? QPointF((place.x() - state.PkgR) / 1000, (place.y() - state.PkgH) / 1000) : place;
    Grad_To_Pixel(state, written.x(), written.y(), found.rx(), found.ry());
    worst = std::max(worst, std::hypot(found.x() - pixel.x(), found.y() - pixel.y()));
    const QPoint at = pixel.toPoint();
    double east = 0, north = 0;
    EXPECT_EQ(Pixel_To_Grad(state, at.x(), at.y(), east, north), 1);
    const QPointF read =
        state.NetPKG ? QPointF(east * 1000 + state.PkgR, north * 1000 + state.PkgH) : QPointF(east, north);
    const QPointF back = net.Pixel_Of(read) - QPointF(at);
    worst = std::max(worst, std::hypot(back.x(), back.y()));
  }
  return worst;
}

class NetFiles : public FluraxTest {};

// What the work is refused with; empty if it is not.
QString Refusal(const std::function<void()>& work) {
  const Error error = Raised(work);
  EXPECT_TRUE(error.number == 0 || error.number == badPoints) << error.number;
  return error.text;
}

}  // namespace

TEST_F(NetFiles, PointsComeBackAsTheCoordinatesOfTheProgram) {
  std::mt19937 random(4711);
  for (const NetKind kind :
       {NetKind::Utm, NetKind::GaussKrueger, NetKind::Kilometres, NetKind::DegreesGms, NetKind::DegreesDec})
    for (int round = 0; round < 25; ++round) {
      const TrueNet net = Random_Net(kind, random);
      const ControlPoints points = Measured(net, random);
      ASSERT_GE(points.size(), 6U);
      const CalibrationPlan plan = Plan_Of(net, points);
      SCOPED_TRACE(
          u"kind %1 round %2: %3 x %4, turn %5, bend %6, %7 m, spacing %8, %9 points"_s.arg(static_cast<int>(kind))
              .arg(round)
              .arg(net.map.width())
              .arg(net.map.height())
              .arg(net.turn)
              .arg(net.bend)
              .arg(net.metresPerPixel)
              .arg(net.net.spacing)
              .arg(points.size())
              .toStdString());
      EXPECT_THAT(Fit_Remarks(plan.fit, points, net.map), IsEmpty());
      const QString file = Path("Karte.cal");
      const CalibrationProof proof = Save_Calibration(plan, file);
      CoordinateState state;
      const MessageScript silent;
      ASSERT_EQ(Read_Cal(file, net.map, state), -1);
      EXPECT_LT(Worst_Miss(net, state, random), Is_Metric(kind) ? 1.0 : 1.5);
      EXPECT_LT(proof.missed, Is_Metric(kind) ? 0.15 : 1.5);
      EXPECT_FALSE(state.NetBLines.empty());
      EXPECT_FALSE(state.NetLLines.empty());
      // What was measured comes back to go on with.
      const CalibrationDraft draft = Read_Draft(file, net.map);
      EXPECT_EQ(draft.net.kind, net.net.kind);
      EXPECT_NEAR(draft.net.spacing, net.net.spacing, net.net.spacing * 1e-4);
      ASSERT_EQ(draft.points.size(), points.size());
      EXPECT_LT(std::hypot((draft.points.back().pixel - points.back().pixel).x(),
                           (draft.points.back().pixel - points.back().pixel).y()),
                0.002);
      EXPECT_LT(Metres_Between(kind, draft.points.back().place, points.back().place), 0.01);
    }
}

TEST_F(NetFiles, AFileOfAnotherMakerIsTakenUpByItsNet) {
  for (const char* name : {"a_utm.cal", "c_gms.cal"}) {
    const QSize map(3000, 2200);
    const CalibrationDraft draft = Read_Draft(FLURAX_TEST_DATA "/kalibrierung/"_L1 + QLatin1String(name), map);
    ASSERT_EQ(draft.points.size(), 9U);
    CalibrationPlan plan{"a.bmp", map, draft.net, draft.style, draft.points, Fit_Net(draft.points, draft.net.kind)};
    EXPECT_LT(plan.fit.meanPixels, 0.5);
    CoordinateState former;
    Read_Cal(FLURAX_TEST_DATA "/kalibrierung/"_L1 + QLatin1String(name), map, former);
    const CoordinateState now = Save_Calibration(plan, Path("a.cal")).state;
    EXPECT_EQ(std::tuple(now.GridVG, now.NetLLabels.size()), std::tuple(former.GridVG, former.NetLLabels.size()));
    for (const QPoint at : {QPoint(100, 100), QPoint(2900, 150), QPoint(1500, 1100), QPoint(60, 2100)}) {
      QPointF one, other;
      if (now.Metric()) {
        one = Pixel_To_Koord(former, at.x(), at.y());
        other = Pixel_To_Koord(now, at.x(), at.y());
      } else {
        Pixel_To_Grad(former, at.x(), at.y(), one.rx(), one.ry());
        Pixel_To_Grad(now, at.x(), at.y(), other.rx(), other.ry());
      }
      // Curves of both files go through whole pixels.
      EXPECT_LT(Metres_Between(draft.net.kind, one, other), 1.5 * plan.fit.metresPerPixel) << name;
    }
  }
}

TEST_F(NetFiles, AnExistingFileIsKeptAndABadOneIsNotWritten) {
  std::mt19937 random(5);
  TrueNet net = Random_Net(NetKind::Utm, random);
  CalibrationPlan plan = Plan_Of(net, Measured(net, random));
  const QString path = Put("Karte.cal", "von Hand");
  Save_Calibration(plan, path);
  EXPECT_EQ(Read_Bytes(path + "_alt"), "von Hand");
  const QByteArray good = Read_Bytes(path);
  // The map's own name finds the file, and not the one put aside.
  EXPECT_EQ(Calibration_File_Of(Path("Karte.neu.bmp")), path);
  EXPECT_THAT(Cal_Files_Of(Path("Karte.bmp")), ElementsAre(path));
  // Words of the file in zone and datum, lines no map has: nothing is written.
  const auto refused = [&](const std::function<void(CalibrationPlan&)>& spoil) {
    CalibrationPlan bad = plan;
    spoil(bad);
    const QString why = Refusal([&] { Save_Calibration(bad, path); });
    EXPECT_EQ(Read_Bytes(path), good);
    return why;
  };
  EXPECT_THAT(refused([](auto& bad) { bad.net.datum = "GEO 84"; }), Says("GEO"));
  EXPECT_THAT(refused([](auto& bad) { bad.net.datum = "R: 5"; }), Says(":"));
  EXPECT_THAT(refused([](auto& bad) { bad.net.zone = "U"; }), Says("Zone"));
  EXPECT_THAT(refused([](auto& bad) { bad.net.spacing = 1e6; }), Says("größer als die Karte"));
  EXPECT_THAT(refused([](auto& bad) { bad.net.spacing = 2.5; }), Says("ganze Zahl"));
  EXPECT_NE(refused([](auto& bad) { bad.net.spacing = 1; }), QString());  // a line every pixel
  // A disk that takes the first bytes and no more.
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  EXPECT_THROW(Save_Calibration(plan, path), Error);
  File_Write_Fault = {};
  EXPECT_EQ(Read_Bytes(path), good);
  // A picture whose name is that of the other program does not turn the colours.
  plan.mapName = "Trakkor 3.bmp";
  EXPECT_FALSE(Save_Calibration(plan, path).state.CalFromTrakkor);
}

TEST_F(NetFiles, PointsThatMakeNoNetAreRefusedByName) {
  std::mt19937 random(17);
  const TrueNet net = Random_Net(NetKind::Utm, random);
  const ControlPoints points = Measured(net, random, 0);
  const auto refused = [&](ControlPoints bad, NetKind kind = NetKind::Utm) {
    return Refusal([&] { Fit_Net(bad, kind); });
  };
  EXPECT_THAT(refused({points[0], points[1]}), Says("mindestens drei"));
  EXPECT_THAT(refused({points[0], points[1], points[0]}), Says("Punkt 1 und Punkt 3 haben dieselben Koordinaten"));
  ControlPoints twice = {points[0], points[1], points[5]};
  twice[2].pixel = twice[0].pixel;
  EXPECT_THAT(refused(twice), Says("derselben Stelle"));
  ControlPoints line = {{{100, 100}, {1000, 9000}}, {{200, 200.3}, {2000, 8000}}, {{300, 300}, {3000, 7000}}};
  for (const NetKind kind : {NetKind::Utm, NetKind::DegreesDec, NetKind::Kilometres})
    EXPECT_THAT(refused(line, kind), Says("auf einer Linie"));
  ControlPoints mirrored = points;
  for (ControlPoint& point : mirrored) point.place = QPointF(point.place.y(), point.place.x());
  EXPECT_THAT(refused(mirrored), Says("vertauscht"));
  for (ControlPoint& point : mirrored) point = {-point.pixel, QPointF(point.place.y(), point.place.x())};
  EXPECT_THAT(refused(mirrored), Says("auf dem Kopf"));
  // Switched off, a point does no harm.
  line.push_back({{100, 300}, {1000, 7000}});
  EXPECT_NO_THROW(Fit_Net(line, NetKind::Utm));
  twice.push_back(points[7]);
  twice[2].used = false;
  EXPECT_NO_THROW(Fit_Net(twice, NetKind::Utm));
}

TEST_F(NetFiles, APointWithSwappedDigitsIsNamedAndNoOther) {
  std::mt19937 random(99);
  for (const NetKind kind : {NetKind::Utm, NetKind::Kilometres, NetKind::DegreesGms})
    for (int round = 0; round < 20; ++round) {
      const TrueNet net = Random_Net(kind, random);
      ControlPoints points = Measured(net, random);
      if (points.size() < 9) continue;
      const size_t bad = std::uniform_int_distribution<size_t>(0, points.size() - 1)(random);
      const double unit = Is_Geographic(kind) ? 1 / 111320.0 : 1, off = 20 * net.metresPerPixel;
      points[bad].place.ry() += off * unit;
      const NetFit fit = Fit_Net(points, kind);
      for (size_t i = 0; i < points.size(); ++i) EXPECT_EQ(fit.points[i].outlier, i == bad) << i << " of " << bad;
      EXPECT_NEAR(fit.points[bad].alone, off, off * 0.2);
      EXPECT_THAT(Fit_Remarks(fit, points, net.map),
                  ElementsAre(Says(u"Punkt %1 passt nicht zu den anderen: "_s.arg(bad + 1))));
    }
}

// Far off it bends the net so much that nothing fits any more, or that the map seems to stand on its head.
TEST_F(NetFiles, ASwappedFirstDigitIsNamedAsWell) {
  std::mt19937 random(12);
  for (const NetKind kind : {NetKind::Utm, NetKind::Kilometres}) {
    const TrueNet net = Random_Net(kind, random);
    const ControlPoints all = Measured(net, random);
    ControlPoints points;
    for (const size_t part : {0, 8, 3, 10, 6, 1}) points.push_back(all[part * (all.size() - 1) / 10]);
    for (const QPointF wrong : {QPointF(-180000, 0), QPointF(0, 900000), QPointF(200000, -90000)}) {
      ControlPoints bad = points;
      bad[2].place += wrong;
      QStringList said;
      const QString refused = Refusal([&] { said = Fit_Remarks(Fit_Net(bad, kind), bad, net.map); });
      EXPECT_THAT(said.join(u' ') + refused, Says("Punkt 3 passt nicht zu den anderen"));
    }
  }
}

TEST_F(NetFiles, TheLookOfANetIsMeasured) {
  std::mt19937 random(3);
  TrueNet net = Random_Net(NetKind::Utm, random);
  net.turn = 4, net.metresPerPixel = 2.5;
  ControlPoints points = Measured(net, random, 0);
  NetFit fit = Fit_Net(points, NetKind::Utm);
  EXPECT_NEAR(fit.turn, 4, 1e-6);
  EXPECT_NEAR(fit.metresPerPixel, 2.5, 1e-9);
  EXPECT_NEAR(fit.skew, 0, 1e-6);
  EXPECT_NEAR(fit.meanPixels, 0, 1e-6);
  // Paper that was drawn aslant: a degree of skew, which no scale and turn take away.
  for (ControlPoint& point : points)
    point.pixel.rx() += std::tan(3.14159265 / 180) * (net.map.height() / 2.0 - point.pixel.y());
  fit = Fit_Net(points, NetKind::Utm);
  EXPECT_NEAR(std::fabs(fit.skew), 1, 0.02);
  EXPECT_GT(fit.meanPixels, 1);
  const auto inOneCorner = Fit_Remarks(fit, points, net.map * 4);
  EXPECT_THAT(inOneCorner, ElementsAre(Says("% der Karte")));
}
