#include "platform/geodesy.h"

namespace {

using Kind = ReferenceSystem::Kind;
constexpr ReferenceSystem wgs{Kind::Geographic, Datum::Wgs84, 0}, dhdn{Kind::Geographic, Datum::Dhdn, 0};

// Points of Germany and Switzerland, computed apart from this program: the plane ones by Krüger's series to the fourth
// power of n, the datum by the seven parameters of the register (598.1 m, 73.7 m, 418.2 m, 0.202", 0.045", -2.455",
// 6.7 ppm). Regional parameter sets differ from these by up to two metres.
struct Known {
  double longitude, latitude;
  int utmZone;
  QPointF utm;
  int gkZone;
  QPointF gk;
};
const Known known[] = {
    {11.0, 49.5, 32, {644810.592, 5484963.055}, 4, {4427670.44, 5485273.23}},
    {7.6, 47.4, 32, {394362.013, 5250566.325}, 3, {3394396.47, 5252226.20}},
    {9.4, 54.8, 32, {525714.460, 6072609.337}, 3, {3525794.54, 6074599.68}},
    {13.74, 51.05, 33, {411682.850, 5656140.374}, 5, {5411783.87, 5657958.23}},
};

double Apart(QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

TEST(GeodesyTest, KnownPointsThereAndBack) {
  for (const Known& point : known) {
    const QPointF place(point.longitude, point.latitude);
    const ReferenceSystem utm{Kind::Utm, Datum::Wgs84, point.utmZone}, etrs{Kind::Utm, Datum::Etrs89, point.utmZone},
        gk{Kind::GaussKrueger, Datum::Dhdn, point.gkZone};
    EXPECT_LT(Apart(*Transformation(wgs, utm)(place), point.utm), 0.002);
    EXPECT_LT(Apart(*Transformation(wgs, etrs)(place), point.utm), 1.5) << "the datums differ by the drift since 1989";
    EXPECT_LT(Apart(*Transformation(wgs, gk)(place), point.gk), 3);
    for (const ReferenceSystem& system : {utm, etrs, gk, dhdn}) {
      const auto there = Transformation(wgs, system)(place);
      ASSERT_TRUE(there);
      EXPECT_LT(Apart(*Transformation(system, wgs)(*there), place), 3e-7) << system.Name();
    }
    EXPECT_LT(Apart(*Transformation(utm, gk)(point.utm), point.gk), 3) << "without degrees in between";
  }
}

TEST(GeodesyTest, NamesAndFaults) {
  const Transformation way(dhdn, wgs);
  EXPECT_TRUE(way({11, 49.5}));
  EXPECT_TRUE(way.Name().startsWith(u"Potsdam -> WGS-84, "_s) && way.Name().endsWith(u" m"_s)) << way.Name();
  EXPECT_EQ(Transformation(wgs, {Kind::Utm, Datum::Wgs84, 32}).Name(), u"WGS-84 -> UTM 32 WGS-84"_s);
  for (const ReferenceSystem& wrong : {ReferenceSystem{Kind::Utm, Datum::Wgs84, 61},
                                       {Kind::Utm, Datum::Dhdn, 32},
                                       {Kind::GaussKrueger, Datum::Dhdn, 6}})
    EXPECT_EQ(Error_Of([&] { Transformation(wgs, wrong); }), 5000) << wrong.Name();
  EXPECT_FALSE(way({std::nan(""), 49.5}));
  EXPECT_FALSE(Transformation(wgs, {Kind::Utm, Datum::Wgs84, 32})({11, 1e9}));
}

}  // namespace
