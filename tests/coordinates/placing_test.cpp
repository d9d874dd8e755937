#include "coordinates/placing.h"
#include "coordinates/conversions.h"
#include "support/nets.h"

namespace {

using Kind = ReferenceSystem::Kind;

// Points of Germany in the systems of maps and files, computed by cs2cs of PROJ 9.1.1 (EPSG:4326 to 326nn, 3146n and
// 4314). Ways between the datums differ by up to three metres with the grids that a machine has.
struct Known {
  QPointF wgs;
  int utmZone;
  QPointF utm;
  int gkZone;
  QPointF gk, dhdn;
};
const Known known[] = {
    {{11.05, 49.75}, 32, {647672.7715, 5512851.8742}, 4, {4431643.1919, 5513030.8316}, {11.05133628, 49.75110472}},
    {{7.63, 51.96}, 32, {405867.0996, 5757475.7369}, 3, {3405902.9397, 5759338.0366}, {7.63086048, 51.96136612}},
    {{13.74, 51.05}, 33, {411682.8505, 5656140.3735}, 5, {5411784.6610, 5657957.9219}, {13.74176897, 51.05123339}},
    {{6.08, 50.78}, 32, {294155.1399, 5629425.7688}, 2, {2505686.4034, 5627175.4483}, {6.08063688, 50.78124202}},
};

const QSize map(10000, 8000);
const QPoint middle(5000, 4000);
constexpr double degreesPerPixel = 1e-5;

CoordinateState Plane_Net(int grid, QPointF at, int zone, const QString& datum) {
  CoordinateState net = Utm_Net(map, middle, 1000);
  net.Grid = grid;
  net.GridR = qRound(at.x()), net.GridH = qRound(at.y());
  net.ZoneNumber = zone;
  net.GridDatum = datum;
  return net;
}

CoordinateState Degree_Net_Of(QPointF at, const QString& datum) {
  return Degree_Net(map, {at.x() - middle.x() * degreesPerPixel, at.y() + middle.y() * degreesPerPixel},
                    degreesPerPixel, datum);
}

double Off(const PlacedPoint& placed) {
  return placed.Here() ? std::hypot(placed.at.x() - middle.x(), placed.at.y() - middle.y()) : 1e9;
}

}  // namespace

TEST(PlacingTest, EveryKindAndDatumComesOntoEveryNet) {
  for (const Known& point : known) {
    const std::pair<CoordinateState, bool> nets[] = {
        {Plane_Net(gridUtm, point.utm, point.utmZone, u"WGS-84"_s), false},
        {Plane_Net(gridUtm, point.utm, point.utmZone, u"ETRS89"_s), false},
        {Plane_Net(gridUtm, point.utm, point.utmZone, {}), false},
        {Plane_Net(gridGaussKrueger, point.gk, point.gkZone, u"Potsdam"_s), true},
        {Plane_Net(gridGaussKrueger, {point.gk.x() - point.gkZone * 1e6, point.gk.y()}, point.gkZone, {}), true},
        {Degree_Net_Of(point.wgs, u"WGS-84"_s), false},
        {Degree_Net_Of(point.dhdn, u"Potsdam"_s), true}};
    const std::tuple<GivenSystem, GivenPlace, bool> files[] = {
        {{Kind::Geographic, u"G WGS 84"_s}, {point.wgs.x(), point.wgs.y()}, false},
        {{Kind::Geographic, u"ETRS 89"_s}, {point.wgs.x(), point.wgs.y()}, false},
        {{Kind::Geographic, u"Potsdam"_s}, {point.dhdn.x(), point.dhdn.y()}, true},
        {{Kind::Utm, u"WGS-84"_s}, {point.utm.x(), point.utm.y(), point.utmZone}, false},
        {{Kind::Utm, {}}, {point.utm.x() + point.utmZone * 1e6, point.utm.y()}, false},
        {{Kind::GaussKrueger, {}}, {point.gk.x(), point.gk.y()}, true}};
    for (const auto& [net, netDhdn] : nets)
      for (const auto& [given, place, fileDhdn] : files) {
        Placing placing(given, net, PlacingWay::Transformed);
        EXPECT_LT(Off(placing.Place(place)), netDhdn == fileDhdn ? 1.5 : 4)
            << point.wgs.x() << ' ' << static_cast<int>(given.kind) << ' ' << given.datum << " to " << net.Grid << ' '
            << net.GridDatum;
      }
  }
}

TEST(PlacingTest, NeighboursInTwoZonesAndWhatCannotBe) {
  const CoordinateState net = Plane_Net(gridGaussKrueger, known[0].gk, 4, u"Potsdam"_s);
  Placing placing({Kind::Utm, u"WGS-84"_s}, net, PlacingWay::Transformed);
  // The same place in the zone beside, by cs2cs; 12 E is the border.
  const GivenPlace here{known[0].utm.x(), known[0].utm.y(), 32}, beside{215486.93, 5518325.83, 33};
  const GivenPlace cold{known[0].utm.x(), known[0].utm.y(), 99}, broken{std::nan(""), 5512851, 32};
  const auto placed = placing.Place({here, beside, cold, here, broken, {1e300, 1, 32}, here});
  for (const size_t i : {0U, 1U, 3U, 6U}) EXPECT_LT(Off(placed[i]), 4) << i;
  for (const size_t i : {2U, 4U, 5U}) EXPECT_EQ(placed[i].code, notConvertible) << i;
  GivenPlace south = here;
  south.y += 1e7;
  south.southern = true;
  EXPECT_LT(Off(placing.Place(south)), 4) << "counted from ten million";
  Placing degrees({Kind::Geographic, u"WGS-84"_s}, net, PlacingWay::Transformed);
  EXPECT_EQ(degrees.Place({11.05, 95}).code, notConvertible);
  EXPECT_EQ(degrees.Place({11.05, 52}).code, tooFarUp);
  EXPECT_EQ(degrees.Place({10.9, 49.75}).code, tooFarLeft);
}

TEST(PlacingTest, AsWrittenTellsOfOtherZones) {
  const CoordinateState utm = Plane_Net(gridUtm, known[0].utm, 32, u"WGS-84"_s);
  Placing placing({Kind::Utm, u"WGS-84"_s}, utm, PlacingWay::AsWritten);
  const double right = known[0].utm.x(), high = known[0].utm.y();
  EXPECT_EQ(Off(placing.Place({right, high, 32})), 0);
  EXPECT_EQ(Off(placing.Place({right + 32e6, high})), 0);
  EXPECT_EQ(placing.Place({right, high, 31}).code, zoneTooLow);
  EXPECT_EQ(placing.Place({right, high, 33}).code, zoneTooHigh);
  EXPECT_EQ(placing.Place({right + 33e6, high}).code, zoneTooHigh);
  EXPECT_EQ(placing.Place({5.5e15, high}).code, zoneTooHigh) << "no number of a zone is as large";
  EXPECT_EQ(placing.Place({right - 1e5, high, 32}).code, tooFarLeft);
  EXPECT_EQ(placing.Place({3e9, high, 32}).code, notConvertible);
  Placing degrees({Kind::Geographic, u"WGS-84"_s}, utm, PlacingWay::AsWritten);
  EXPECT_NE(degrees.Place({11.05, 49.75}).code, onMap) << "degrees are no metres";
  const CoordinateState gk = Plane_Net(gridGaussKrueger, {431643, 5513031}, 4, u"Potsdam"_s);
  Placing metres({Kind::GaussKrueger, {}}, gk, PlacingWay::AsWritten);
  EXPECT_EQ(Off(metres.Place({4431643, 5513031})), 0);
  EXPECT_EQ(Off(metres.Place({431643, 5513031})), 0);
  EXPECT_EQ(metres.Place({3431643, 5513031}).code, zoneTooLow);
  const CoordinateState net = Degree_Net_Of(known[0].wgs, u"WGS-84"_s);
  Placing same({Kind::Geographic, u"WGS-84"_s}, net, PlacingWay::AsWritten);
  EXPECT_LE(Off(same.Place({11.05, 49.75})), 1);
  EXPECT_EQ(Error_Of([] { Placing({}, {}, PlacingWay::AsWritten); }), 5000) << "a map without a net";
}

TEST(PlacingTest, ComparesAndNamesTheSystems) {
  const CoordinateState utm = Plane_Net(gridUtm, known[0].utm, 32, u"WGS-84"_s);
  const CoordinateState gk = Plane_Net(gridGaussKrueger, known[0].gk, 4, u"Potsdam"_s);
  const CoordinateState potsdam = Degree_Net_Of(known[0].dhdn, u"Potsdam"_s);
  const GivenSystem gpx{Kind::Geographic, u"WGS-84"_s}, apart{Kind::Utm, u"G WGS 84"_s}, odd{Kind::Utm, u"ED50"_s};
  EXPECT_TRUE(Match_Of(apart, utm).Whole()) << "the words stand apart";
  EXPECT_TRUE(Match_Of({Kind::Utm, {}}, utm).Whole());
  EXPECT_FALSE(Match_Of(gpx, utm).kind);
  EXPECT_TRUE(Match_Of(gpx, potsdam).kind);
  EXPECT_FALSE(Match_Of(gpx, potsdam).datum);
  EXPECT_FALSE(Match_Of(odd, utm).datum);
  CoordinateState other = utm;
  other.GridDatum = u"ed50"_s;
  EXPECT_TRUE(Match_Of(odd, other).Whole()) << "a name that nobody knows, but both bear it";
  for (const auto& [given, net] : {std::pair{gpx, &gk}, {gpx, &potsdam}, {apart, &gk}}) {
    const QString name = Transformation_Name(given, *net).value_or(u"nothing"_s);
    EXPECT_TRUE(name.startsWith(u"WGS-84 -> Potsdam, "_s) && name.endsWith(u" m"_s)) << name;
  }
  EXPECT_EQ(Transformation_Name(gpx, utm), u"WGS-84 -> UTM 32 WGS-84"_s) << "exact";
  EXPECT_FALSE(Transformation_Name(odd, utm));
  EXPECT_FALSE(Transformation_Name(gpx, other));
  EXPECT_FALSE(Transformation_Name(gpx, {}));
  EXPECT_EQ(Error_Of([&] { Placing(odd, gk, PlacingWay::Transformed); }), 5000);
}
