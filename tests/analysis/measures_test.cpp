#include "analysis/measures.h"

#include "analysis/distances.h"
#include "analysis_rows.h"

TEST(Measures, Polygons) {
  const std::tuple<const char*, std::vector<QPoint>, int, int> cases[] = {
      // area and perimeter
      {"square", {{5, 5}, {15, 5}, {15, 15}, {5, 15}}, 100, 40},
      {"the other way round", {{5, 15}, {15, 15}, {15, 5}, {5, 5}}, 100, 40},
      {"half goes to even, down", {{0, 0}, {1, 0}, {0, 1}}, 0, 3},  // 0.5; 3.41
      {"half goes to even, up", {{0, 0}, {3, 0}, {0, 1}}, 2, 7},    // 1.5; 7.16
      {"ends left of the map", {{0, 0}, {10, 0}, {10, 10}, {-1, 10}, {0, 10}}, 50, 34},
      {"closed twice", {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}, 100, 40},
      {"the whole plane", {{0, 0}, {32767, 0}, {32767, 32767}, {0, 32767}}, 1073676289, 131068},
      {"two points", {{0, 0}, {3, 4}}, 0, 10},
      {"one point", {{7, 7}}, 0, 0},
      {"none", {}, 0, 0},
  };
  for (const auto& [what, points, area, perimeter] : cases) {
    const ShapeSize size = Polygon_Size(points, 0.5);
    EXPECT_EQ(std::tuple(size.areaPx, size.perimeterPx), std::tuple(area, perimeter)) << what;
    EXPECT_EQ(std::tuple(size.areaNat, size.perimeterNat), std::tuple(0.25 * area, 0.5 * perimeter)) << what;
  }
  // Three times round the plane.
  const std::vector<QPoint> wound(std::get<1>(cases[6]));
  std::vector<QPoint> thrice;
  for (int i = 0; i < 3; ++i) thrice.insert(thrice.end(), wound.begin(), wound.end());
  EXPECT_EQ(Error_Of([&] { Polygon_Size(thrice, 1); }), errors::overflow);
}

TEST(Measures, Figures) {
  const auto size = [](int typ, int w, int h) {
    EntryRow row = Row("Figur1", typ);
    row.Xline = w;
    row.Yline = h;
    const ShapeSize result = Figure_Size(row, std::vector<QPoint>{{0, 0}, {4, 0}, {4, 4}, {0, 4}}, 2);
    EXPECT_EQ(result.areaNat, 4.0 * result.areaPx);
    return std::pair(result.areaPx, result.perimeterPx);
  };
  EXPECT_EQ(size(20, 30, 10), std::pair(300, 80));
  EXPECT_EQ(size(-121, 10, 10), std::pair(100, 40));  // hidden and marked
  EXPECT_EQ(size(22, 20, 20), std::pair(314, 63));
  EXPECT_EQ(size(22, 60, 20), std::pair(942, 134));  // 133.65 by another way
  EXPECT_EQ(size(22, 5, 3), std::pair(13, 13));      // halves 2.5 and 1.5 are taken as 2 and 2
  EXPECT_EQ(size(22, 0, 0), std::pair(0, 0));
  EXPECT_EQ(size(23, 10, 10), std::pair(314, 63));  // by its width as radius
  EXPECT_EQ(size(24, 9, 9), std::pair(16, 16));
  EXPECT_EQ(size(4, 9, 9), std::pair(0, 0));
}

TEST(Measures, LinesAndTheirAngles) {
  const std::vector<QPoint> star = {{0, 0}, {0, -10}, {10, -20}, {20, -20}, {20, -10}, {10, 0}, {0, 0}, {-5, 0}};
  const auto segments = Line_Segments(star, 0.5);
  ASSERT_EQ(segments.size(), 6U);  // the last vertex lies left of the map
  const double angles[] = {0, 45, 90, 180, 225, 270};
  for (size_t i = 0; i < 6; ++i) EXPECT_NEAR(segments[i].angle, angles[i], 1e-9) << i;
  EXPECT_DOUBLE_EQ(segments[1].px, std::sqrt(200.0));
  EXPECT_DOUBLE_EQ(segments[1].nat, std::sqrt(200.0) / 2);
  const LineLength total = Total_Length(segments);
  EXPECT_NEAR(total.px, 40 + 2 * std::sqrt(200.0), 1e-12);
  EXPECT_NEAR(total.nat, total.px / 2, 1e-12);
  EXPECT_TRUE(Line_Segments(std::vector<QPoint>{{1, 1}}, 1).empty());
}

TEST(Distances, OfClickedEntries) {
  const std::vector<QPoint> points = {{0, 0}, {3, 4}, {3, 16}, {0, 0}};
  const auto polygon = Measure_Distances(points, DistanceMode::Polygon, 2);  // 10, 24, 2 * sqrt(265)
  const double third = 2 * std::sqrt(265.0), sum = 34 + third, mean = sum / 3;
  EXPECT_EQ(polygon->count, 3);
  EXPECT_DOUBLE_EQ(polygon->last, third);
  EXPECT_DOUBLE_EQ(polygon->sum, sum);
  EXPECT_DOUBLE_EQ(*polygon->mean, mean);
  EXPECT_FLOAT_EQ(*polygon->spread, static_cast<float>(std::sqrt(100 + 576 + third * third - 3 * mean * mean) / 2));
  const auto bundle = Measure_Distances(points, DistanceMode::Bundle, 1);
  EXPECT_DOUBLE_EQ(bundle->sum, 5 + std::sqrt(265.0));  // the last one is back at the first
  EXPECT_EQ(bundle->last, 0);
  const auto equal = Measure_Distances({{0, 0}, {5, 0}, {10, 0}}, DistanceMode::Polygon, 0.1);
  EXPECT_EQ(*equal->spread, 0);
  const auto two = Measure_Distances({{0, 0}, {3, 4}}, DistanceMode::Bundle, 1);
  EXPECT_EQ(two->sum, 5);
  EXPECT_FALSE(two->mean || two->spread);
  EXPECT_FALSE(Measure_Distances({{1, 1}}, DistanceMode::Simple, 1));
  EXPECT_EQ(Measured_Points(points, DistanceMode::Simple), (std::vector<QPoint>{{3, 16}, {0, 0}}));
}
