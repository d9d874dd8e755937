#include "analysis/diagrams.h"

#include "analysis_rows.h"

using ::testing::ElementsAre;

namespace {

// Entries at these places, assigned to something.
void Assign_At(TestMap& map, const QString& to, const std::vector<QPoint>& places) {
  for (const QPoint at : places) map.rows.push_back(Row(QStringLiteral("Text>") + to, 0, "x", at.x(), at.y()));
}

QStringList Ranked(const SpeciesMatrix& matrix, std::optional<size_t> row = {}) {
  QStringList texts;
  for (const auto& [name, count] : Rank_Abundance(matrix, row)) texts += QString::number(count) + u' ' + name;
  return texts;
}

}  // namespace

TEST(Diagrams, RanksOfOneAreaAndOfAll) {
  TestMap map;
  map.Add_Square("Flaeche1", 10);
  map.Add_Square("Flaeche10", 10);
  map.Assign("Flaeche1", {"3 Zilpzalp", "2 Öl", "2 Amsel", "0 Nichts", "7"});
  map.Assign("Flaeche10", {"4 Amsel"});
  map.Add("Text>Flaeche1<1", 0, "5 Zilpzalp");
  const auto matrix = Calc_Species_Matrix(map);
  EXPECT_THAT(Ranked(*matrix, 0), ElementsAre("8 Zilpzalp", "7 (ohne Namen)", "2 Amsel", "2 Öl"));
  EXPECT_THAT(Ranked(*matrix, 1), ElementsAre("4 Amsel"));
  EXPECT_THAT(Ranked(*matrix), ElementsAre("8 Zilpzalp", "7 (ohne Namen)", "6 Amsel", "2 Öl"))
      << "who is in a group as well counts once";
  TestMap grouped;
  grouped.Add("Text<1", 0, "5 Zilpzalp");
  EXPECT_THAT(Ranked(*Calc_Species_Matrix(grouped)), ElementsAre("5 Zilpzalp"));
}

TEST(Diagrams, SpeciesOverAreasAndFigures) {
  TestMap map;
  map.Add_Square("Flaeche1", 10, 4, "Au");
  map.Add_Square("Flaeche2", 10, 4, "leer");
  map.Add_Square("Flaeche3", 10, 4);
  map.Add("Figur1", 23, "Kreis");
  map.Add("Linie1", 4, "Weg");
  map.Assign("Flaeche1", {"a", "5 b"});
  map.Assign("Flaeche3", {"b", "c"});
  map.Assign("Figur1", {"c"});
  map.Assign("Linie1", {"d"});
  const AreaAccumulation found = Accumulate_Areas(*Calc_Species_Matrix(map));
  EXPECT_THAT(found.names, ElementsAre("Au", "Flaeche3", "Kreis"));
  EXPECT_THAT(found.species.collected, ElementsAre(2, 3, 3));
  // a is on one area of three, b and c are on two: 1/3 + 2/3 + 2/3, then 2/3 + 1 + 1.
  EXPECT_THAT(found.species.expected,
              ElementsAre(testing::DoubleNear(5.0 / 3, 1e-12), testing::DoubleNear(8.0 / 3, 1e-12), 3));
  EXPECT_TRUE(Accumulate_Areas({}).species.collected.empty());
}

TEST(Diagrams, NearestNeighboursInAnAreaWithItsEdge) {
  TestMap map;  // two metres a pixel
  map.Add_Square("Flaeche1", 5);
  map.Add_Square("Flaeche10", 5);
  Assign_At(map, "Flaeche1", {{0, 0}, {1, 0}, {5, 5}, {5, 4}});
  Assign_At(map, "Flaeche10", {{0, 1}, {0, 2}, {3, 3}});
  const auto matrix = Calc_Species_Matrix(map);
  const NearestDistances found = Nearest_In(map, matrix->rows[0]);
  EXPECT_THAT(found.distances, ElementsAre(2, 2, 2, 2));
  ASSERT_TRUE(found.pattern);
  // A = 100, P = 40, N = 4: 0.5 * 5 + (0.0514 + 0.041 / 2) * 10 = 3.219;
  // error = sqrt(0.0703 * 6.25 + 1.48 * 0.3125) = 0.949671.
  EXPECT_NEAR(found.pattern->observed, 2, 1e-12);
  EXPECT_NEAR(found.pattern->expected, 3.219, 1e-9);
  EXPECT_NEAR(found.pattern->index, 0.621311, 1e-6);
  EXPECT_NEAR(found.pattern->z, -1.283602, 1e-5);
  EXPECT_EQ(Pattern_Word(*found.pattern), "zufällig");
  EXPECT_EQ(Pattern_Word({.z = -1.97}), "gehäuft");
  EXPECT_EQ(Pattern_Word({.z = 1.97}), "gleichmäßig");
  const NearestDistances all = Nearest_On_Map(map, QSize(50, 25));
  EXPECT_EQ(all.distances.size(), 7U);
  // A = 100 * 50, P = 300, N = 7.
  EXPECT_NEAR(all.pattern->expected, 0.5 * std::sqrt(5000.0 / 7) + (0.0514 + 0.041 / std::sqrt(7.0)) * 300 / 7, 1e-9);
}

TEST(Diagrams, ACircleIsTakenAsItIsDrawnAndALineHasNoIndex) {
  TestMap map;
  map.Add("Figur1", 223, "Kreis");
  map.rows[0].Xline = map.rows[0].Yline = 20;
  map.Add("Linie1", 4, "Weg");
  Assign_At(map, "Figur1", {{20, 20}, {26, 20}});
  Assign_At(map, "Linie1", {{20, 20}, {20, 24}, {20, 25}});
  map.Add("Text<3", 0, "allein");
  const auto matrix = Calc_Species_Matrix(map);
  ASSERT_EQ(matrix->rows.size(), 3U);
  const NearestDistances circle = Nearest_In(map, matrix->rows[0]);
  ASSERT_TRUE(circle.pattern);
  // 314 pixels and 63 round: A = 1256, P = 126, N = 2.
  EXPECT_NEAR(circle.pattern->expected, 17.59462, 1e-4);
  const NearestDistances line = Nearest_In(map, matrix->rows[1]);
  EXPECT_THAT(line.distances, ElementsAre(8, 2, 2));
  EXPECT_FALSE(line.pattern);
  EXPECT_TRUE(Nearest_In(map, matrix->rows[2]).distances.empty());
}

TEST(Diagrams, MarkedEntriesAreARowOfTheirOwnWhereTheyAreAskedFor) {
  TestMap map;
  map.Add("Text>Flaeche9", 100, "3 Amsel");
  map.Add("Text", 201, "Drossel");
  map.Add("Text", 0, "Elster");
  map.Add("Text", -101, "Fink");
  map.Add("Bild", 105, "bild.bmp");
  map.Add("Text", 107, "Bezugslinie");
  EXPECT_TRUE(Calc_Species_Matrix(map)->rows.empty());
  const auto matrix = Calc_Species_Matrix(map, {}, {.marked = true});
  ASSERT_EQ(matrix->rows.size(), 1U);
  EXPECT_EQ(Matrix_Kind_Word(matrix->rows[0].kind), "Markierte");
  EXPECT_THAT(Ranked(*matrix, 0), ElementsAre("3 Amsel", "1 Drossel"));
}
