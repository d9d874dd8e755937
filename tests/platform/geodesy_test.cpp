#include "platform/geodesy.h"

namespace {

using Kind = ReferenceSystem::Kind;
constexpr ReferenceSystem wgs{Kind::Geographic, Datum::Wgs84, 0}, dhdn{Kind::Geographic, Datum::Dhdn, 0};

TEST(GeodesyTest, FaultsAreTold) {
  const Transformation way(dhdn, wgs);
  EXPECT_TRUE(way({11, 49.5}));
  for (const ReferenceSystem& wrong : {ReferenceSystem{Kind::Utm, Datum::Wgs84, 61},
                                       {Kind::Utm, Datum::Dhdn, 32},
                                       {Kind::GaussKrueger, Datum::Dhdn, 6}})
    EXPECT_EQ(Error_Of([&] { Transformation(wgs, wrong); }), 5000) << wrong.Name();
  EXPECT_FALSE(way({std::nan(""), 49.5}));
  EXPECT_FALSE(Transformation(wgs, {Kind::Utm, Datum::Wgs84, 32})({11, 1e9}));
}

}  // namespace
