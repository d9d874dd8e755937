#include "objects/vertex_check.h"

TEST(VertexCheck, FindsRepeatedCloseAndCrossingVertices) {
  // Is it closed, its vertices, those that disturb.
  const std::tuple<const char*, bool, std::vector<QPoint>, std::vector<int>> cases[] = {
      {"square", true, {{0, 0}, {100, 0}, {100, 100}, {0, 100}}, {}},
      {"repeated", false, {{0, 0}, {50, 0}, {50, 0}, {90, 9}}, {2}},
      {"two pixels are too close, three are not", false, {{0, 0}, {2, 0}, {5, 0}, {90, 9}}, {1}},
      {"last on the first of an area", true, {{0, 0}, {100, 0}, {100, 100}, {0, 0}}, {0}},
      {"the same as a line", false, {{0, 0}, {100, 0}, {100, 100}, {0, 3}}, {}},
      {"bow tie", true, {{0, 0}, {100, 100}, {100, 0}, {0, 100}}, {1, 3}},
      {"loop of a line", false, {{0, 0}, {100, 0}, {100, 50}, {50, 50}, {50, -50}}, {1, 4}},
      {"triangle", true, {{0, 0}, {100, 0}, {50, 80}}, {}},
      {"one vertex", true, {{0, 0}}, {0}},
      {"none", false, {}, {}},
  };
  for (const auto& [what, closed, points, disturbing] : cases) {
    std::vector<int> found;
    for (int i = -1; i <= static_cast<int>(points.size()); ++i)
      if (Vertex_Disturbs(points, closed, i)) found.push_back(i);
    EXPECT_EQ(found, disturbing) << what;
  }
}
