#include "platform/geodesy.h"

namespace {

using Kind = ReferenceSystem::Kind;
constexpr ReferenceSystem wgs{Kind::Geographic, Datum::Wgs84, 0}, dhdn{Kind::Geographic, Datum::Dhdn, 0};

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
