#include "analysis/neighbours.h"

#include "analysis_rows.h"

namespace {
// The plain search: every pair, the nearest first, of equal ones the first.
Neighbours Search_Plainly(const std::vector<NeighbourEntry>& entries, int n) {
  Neighbours result;
  for (size_t a = 0; a < entries.size(); ++a) {
    std::vector<std::pair<double, int>> others;
    for (size_t b = 0; b < entries.size(); ++b) {
      const double dx = entries[a].x - entries[b].x, dy = entries[a].y - entries[b].y;
      if (a != b) others.emplace_back(std::sqrt(dy * dy + dx * dx), static_cast<int>(b));
    }
    std::sort(others.begin(), others.end());
    others.resize(static_cast<size_t>(n));
    for (const auto& [distance, entry] : others) result.distance.push_back(distance), result.entry.push_back(entry);
  }
  return result;
}

std::vector<NeighbourEntry> Scattered(int count, int range, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> place(-range, range);
  std::vector<NeighbourEntry> entries;
  for (int i = 0; i < count; ++i) entries.push_back({QString::number(i), place(random), place(random)});
  return entries;
}
}  // namespace

TEST(NeighbourSearch, EqualsThePlainSearchTiesIncluded) {
  std::vector<std::vector<NeighbourEntry>> cases;
  for (unsigned seed = 0; seed < 6; ++seed) {
    cases.push_back(Scattered(300, 4, seed));  // nearly all are ties, many at one place
    cases.push_back(Scattered(400, 60, seed));
    cases.push_back(Scattered(200, 32767, seed));  // the whole plane
  }
  cases.emplace_back();  // a lattice
  for (int i = 0; i < 400; ++i) cases.back().push_back({"", 7 * (i * 37 % 400 / 20), 7 * (i * 37 % 400 % 20)});
  cases.emplace_back(150, NeighbourEntry{"", 5, 5});  // all at one place
  cases.emplace_back(3, NeighbourEntry{"", -5, 9});
  for (const auto& entries : cases) {
    for (const int n : {1, 2, 5, 9, 99}) {
      if (static_cast<size_t>(n) >= entries.size()) continue;
      const Neighbours plain = Search_Plainly(entries, n);
      const auto found = Find_Neighbours(entries, n);
      ASSERT_TRUE(found);
      ASSERT_EQ(found->entry, plain.entry) << entries.size() << " entries, N = " << n;
      ASSERT_EQ(found->distance, plain.distance) << entries.size() << " entries, N = " << n;
    }
  }
}

TEST(NeighbourSearch, WhoTakesPartAndHowManyThereCanBe) {
  std::vector<EntryRow> rows;
  for (const int typ : {0, 1, 2, 3, 5, 100, 105, 200, 203, 205}) rows.push_back(Row("Text", typ, "ja"));
  for (const int typ : {-1, -2, -103, 4, 7, 9, 11, 16, 20, 40, 104, 107, 304}) rows.push_back(Row("Text", typ, "nein"));
  for (const NeighbourEntry& entry : Neighbour_Entries(rows)) EXPECT_EQ(entry.name, "ja");
  EXPECT_EQ(Neighbour_Entries(rows).size(), 10U);
  EntryRow row = Row("Text", 1, QString(40, u'x'), 3, 4);
  const std::tuple<int, int, int> feet[] = {{0, 3, 4}, {-5, 3, 4}, {1, 1, 9}};
  for (const auto& [foot, x, y] : feet) {
    row.Xline = foot;
    row.Yline = 9;
    const NeighbourEntry entry = Neighbour_Entries(std::vector{row})[0];
    EXPECT_EQ(std::pair(entry.x, entry.y), std::pair(x, y));
    EXPECT_EQ(entry.name.size(), 29);
  }
  EXPECT_EQ(Reduced_Neighbours(3, 5), 2);
  EXPECT_EQ(Reduced_Neighbours(5, 5), 4);
  EXPECT_EQ(Reduced_Neighbours(6, 5), 5);
  EXPECT_EQ(Find_Neighbours(std::vector<NeighbourEntry>(1), 1)->perEntry, 0);
  int calls = 0;
  EXPECT_FALSE(Find_Neighbours(Scattered(5000, 1000, 1), 3, [&calls](int) { return ++calls < 2; }));
  EXPECT_EQ(calls, 2);
}

TEST(PointPattern, ClarkEvansTellsEvenFromClumped) {
  // A lattice of width 3: the nearest is 3 away, one point in 9 of area.
  const std::vector<double> even(100, 3.0);
  const auto lattice = Clark_Evans(even, 900);
  EXPECT_NEAR(lattice->index, 2, 1e-12);
  EXPECT_NEAR(lattice->z, 1.5 / (0.26136 * 3 / 10), 1e-9);
  EXPECT_LT(Clark_Evans(even, 900, 120.0)->index, lattice->index);
  EXPECT_FALSE(Clark_Evans(even, 0));
  EXPECT_FALSE(Clark_Evans(std::span(even).first(1), 900));
}

TEST(PointPattern, HistogramHoldsEveryValue) {
  const Histogram histogram = Histogram_Of(std::vector<double>{0, 1, 2, 3, 4, 5, 6, 8});  // four classes of 2
  EXPECT_EQ(std::tuple(histogram.width, histogram.counts), std::tuple(2, (std::vector<int>{2, 2, 2, 2})));
  EXPECT_EQ(Histogram_Of(std::vector<double>{0, 0}).counts, (std::vector<int>{2, 0}));
  EXPECT_TRUE(Histogram_Of({}).counts.empty());
}
