#include "objects/bezier.h"

using Points = std::vector<QPointF>;

TEST(Bezier, ClosedRunsThroughTheMiddlesOfTheSidesOpenFromEndToEnd) {
  Points out;
  Bezier_Points(Points{{0, 0}, {10, 0}, {10, 20}}, out);
  EXPECT_EQ(out, (Points{{5, 10}, {0, 0}, {0, 0}, {5, 0}, {10, 0}, {10, 0}, {10, 10}, {10, 20}, {10, 20}, {5, 10}}));
  Bezier_Points(Points{{1, 1}}, out);
  EXPECT_TRUE(out.empty());
  Bezier_Points_Open(Points{{0, 0}, {10, 0}, {10, 20}, {30, 20}}, out);
  EXPECT_EQ(out, (Points{{0, 0}, {10, 0}, {10, 0}, {10, 10}, {10, 20}, {10, 20}, {30, 20}}));
  Bezier_Points_Open(Points{{0, 0}, {10, 0}, {10, 20}}, out);
  EXPECT_EQ(out, (Points{{0, 0}, {10, 0}, {10, 0}, {10, 20}}));
  Bezier_Points_Open(Points{{0, 0}, {8, 4}}, out);
  EXPECT_EQ(out.size(), 4U);
  EXPECT_EQ(Points({out.front(), out.back()}), (Points{{0, 0}, {8, 4}}));
}

TEST(Bezier, FlatteningFollowsTheCurve) {
  Points curve, flat;
  Bezier_Points(Points{{0, 0}, {100, 0}, {100, 100}, {0, 100}}, curve);
  Flatten_Bezier(curve, flat);
  EXPECT_EQ(Points({flat.front(), flat.back()}), (Points{{0, 50}, {0, 50}}));
  // Half way round a corner: (p0 + 6 v + p1) / 8 = (0 + 6 * 0 + 50) / 8.
  EXPECT_TRUE(std::any_of(flat.begin(), flat.end(),
                          [](QPointF point) { return (point - QPointF(6.25, 6.25)).manhattanLength() < 2; }));
  for (size_t i = 1; i < flat.size(); ++i) EXPECT_LT((flat[i] - flat[i - 1]).manhattanLength(), 16);
}
