#include "analysis/species.h"

#include "analysis/leading_count.h"
#include "analysis/population.h"
#include "analysis/species_matrix.h"
#include "analysis_rows.h"

namespace {
// "name 3, other 1"
QString Shown(const SpeciesList& list) {
  QStringList parts;
  for (const SpeciesCount& species : list.species) parts += species.name + u' ' + QString::number(species.total);
  return parts.join(", ");
}
SpeciesList Listed(const QStringList& texts) { return List_Species(std::vector<QString>(texts.begin(), texts.end())); }
}  // namespace

TEST(LeadingCounts, TwoRules) {
  const std::tuple<const char*, int, int, const char*, const char*> cases[] = {
      {"13P.mont.", 13, 13, "P.mont.", "P.mont."},
      {" 3  Falter ", 3, 3, "Falter", "Falter"},
      {"*18N", 1, 1, "*18N", "*18N"},
      {"Käfer 3", 1, 1, "Käfer 3", "Käfer 3"},
      {"12/5 Larven", 12, 12, "Larven", "/5 Larven"},
      {"8:30 Ruf", 8, 8, "Ruf", ":30 Ruf"},
      {"/5 Larven", 1, 1, "/5 Larven", "/5 Larven"},  // does not begin with a digit
      {"1.5 m", 1, 1, ".5 m", ".5 m"},
      {"2E5 x", 2, 2, "E5 x", "E5 x"},
      {"0 Ex.", 0, 0, "Ex.", "Ex."},
      {"007", 7, 7, "", ""},
      {"32767 Mücken", 32767, 32767, "Mücken", "Mücken"},
      {"", 1, 1, "", ""},
  };
  for (const auto& [text, count, strictCount, name, strictName] : cases) {
    const CountedName wide = Population_Count(text), strict = Leading_Count(text);
    EXPECT_EQ(std::tuple(wide.count, wide.name), std::tuple(count, name)) << text;
    EXPECT_EQ(std::tuple(strict.count, strict.name), std::tuple(strictCount, strictName)) << text;
    EXPECT_FALSE(wide.tooLarge) << text;
  }
  EXPECT_TRUE(Population_Count("40000 Mücken").tooLarge);
  EXPECT_EQ(Leading_Count("40000 Mücken").count, 40000);
  EXPECT_TRUE(Leading_Count("99999999999999999999 Mücken").tooLarge);
}

TEST(SpeciesLists, OrderByFallingThreshold) {
  EXPECT_EQ(Shown(Listed({"13P.mont.", "2P.mont."})), "P.mont. 15");
  // The single 500 raises no threshold: it stands where the highest merged total begins, in table order.
  EXPECT_EQ(Shown(Listed({"a", "b", "500c", "b", "a", "b", "d"})), "b 3, c 500, a 2, d 1");
  EXPECT_EQ(Shown(Listed({"x", "500c", "y"})), "x 1, c 500, y 1");
  EXPECT_EQ(Shown(Listed({"0a", "b", "0a", "B"})), "b 1, B 1");  // letter by letter; none of a
  EXPECT_EQ(Shown(Listed({"7", "3"})), " 10");
  const SpeciesList list = Listed({"3a", "b", "40000 c", "c"});
  EXPECT_EQ(std::tuple(list.individuals, list.tooLarge), std::tuple(5, QStringList{"40000 c"}));
  EXPECT_TRUE(list.digitsSeen);
  EXPECT_FLOAT_EQ(list.species[0].dominance, 60);
  EXPECT_FLOAT_EQ(list.percentSum, 100);
  EXPECT_FALSE(Listed({"a", "*3"}).digitsSeen);
  // Two of the largest numbers are more than 16 bits hold.
  EXPECT_EQ(Shown(Listed({"32767a", "32767a"})), "a 65534");
}

TEST(SpeciesLists, DensityByDecades) {
  const std::tuple<double, double, float, qint64> cases[] = {
      {5, 2, 2.5F, 1}, {1, 1, 1, 1}, {3, 40, 7.5F, 100}, {1, 10000, 1, 10000}, {1, 1e9, 1, 1'000'000'000}};
  for (const auto& [part, whole, value, decade] : cases) {
    const auto density = Scaled_Density(part, whole);
    ASSERT_TRUE(density);
    EXPECT_FLOAT_EQ(density->value, value);
    EXPECT_EQ(density->decade, decade);
  }
  EXPECT_FALSE(Scaled_Density(3, 0));
  EXPECT_FALSE(Scaled_Density(0, 3));
}

TEST(DiversityTest, IndicesOfOneCommunity) {
  const std::vector<qint64> counts = {10, 0, 5, 3, 1, 1};
  const DiversityIndices all = Diversity_Indices(counts);
  EXPECT_EQ(std::tuple(all.individuals, all.species), std::tuple(20, 5));
  const double h = -(0.5 * std::log(0.5) + 0.25 * std::log(0.25) + 0.15 * std::log(0.15) + 0.1 * std::log(0.05));
  EXPECT_NEAR(*all.shannon, h, 1e-14);
  EXPECT_NEAR(*all.evenness, h / std::log(5.0), 1e-14);
  EXPECT_NEAR(*all.simpson, 0.66, 1e-14);
  EXPECT_NEAR(*all.inverse, 1 / 0.34, 1e-13);
  EXPECT_EQ(*all.chao1, 6);  // two singles, no pair
  EXPECT_EQ(*all.bergerParker, 0.5);
  EXPECT_EQ(*Diversity_Indices(std::vector<qint64>{1, 1, 1, 2, 2}).chao1, 6);  // 5 + 3 * 2 / (2 * 3)
  const DiversityIndices one = Diversity_Indices(std::vector<qint64>{7});
  EXPECT_EQ(*one.shannon, 0);
  EXPECT_FALSE(one.evenness);
  EXPECT_EQ(*one.inverse, 1);
  EXPECT_FALSE(Diversity_Indices(std::vector<qint64>{0, 0}).shannon);
}

TEST(PopulationTest, EntriesOfAnAreaAreThoseOfItsWholeName) {
  TestMap map;
  map.Add_Square("Flaeche1", 100);
  map.Add_Square("Flaeche10", 10);
  map.Add_Square("-Flaeche2", 10);
  map.Add("Text>Flaeche1", 0, "a");
  map.Add("Text>Flaeche10", 0, "10b");
  map.Add("-Text>Flaeche2<4", -101, "c");  // inactive, marked, hidden
  map.Add("1Text>Flaeche1>Flaeche2", 1, "d");
  map.Add("Flaeche3>Flaeche1", 4, "no area of its own");
  map.Add("-Achse>Flaeche1", 7, "only drawn");
  map.Add_Square("Flaeche5", 10, 104);
  map.Add_Square("Flaeche6", 10, -40);
  map.Add("Flaeche7", 4);  // without vertices
  map.Add("Text>Flaeche7", 0, "e");
  const auto result = Calc_Population_Values(map, First_Area_Row(map.rows));
  ASSERT_TRUE(result);
  ASSERT_EQ(result->areas.size(), 4U);
  EXPECT_EQ(result->leftOut, 2);
  EXPECT_EQ(Shown(result->areas[0].species), "a 1, d 1, no area of its own 1");
  EXPECT_EQ(Shown(result->areas[1].species), "b 10");
  EXPECT_EQ(Shown(result->areas[2].species), "c 1, d 1");
  EXPECT_EQ(result->areas[0].size.areaNat, 40000);
  EXPECT_EQ(result->areas[0].density->decade, 100000);
  EXPECT_FLOAT_EQ(result->areas[0].inverse->value, 40000.F / 3);
  EXPECT_EQ(result->areas[3].assigned, 1);
  EXPECT_FALSE(result->areas[3].density || result->areas[3].inverse);
  EXPECT_TRUE(result->digitsSeen);
  // The first may be marked; what stands before it is not in it.
  EXPECT_EQ(Calc_Population_Values(map, 9)->areas.size(), 2U);
  EXPECT_TRUE(Calc_Population_Values(map, 3)->areas.empty());
  int steps = 0;
  EXPECT_FALSE(Calc_Population_Values(map, 0, [&steps] { return ++steps < 5; }));
}

TEST(MatrixTest, WhateverEntriesAreAssignedTo) {
  TestMap map;
  map.Add_Square("Flaeche1", 10, 4, "Wiese");
  map.Add_Square("Flaeche2", 10, -104, "Moor");
  map.Add("Figur1", 23, "Kreis");
  map.Add("Figur2", 23, "leer");
  map.Add("Linie4 - P0110L5.0B3.0", 4, "Bach");
  map.Assign("Flaeche1", {"2 Öchsel", "Zikade"});
  map.Add("Text>Figur1<Nord", 0, "Öchsel");
  map.Assign("Linie4", {"ameise", "3 ameise"});
  map.Assign("Linie4 - P0110L5.0B3.0", {"40000 ameise"});  // as older tables have it
  map.Add("Text<Nord", 0, "17");
  map.Add("-Achse>Figur1", 7);
  const auto matrix = Calc_Species_Matrix(map);
  ASSERT_TRUE(matrix);
  EXPECT_EQ(matrix->species, (std::vector<QString>{"", "ameise", "Öchsel", "Zikade"}));
  const std::tuple<const char*, MatrixKind, std::vector<int>> rows[] = {{"Flaeche1", MatrixKind::Area, {0, 0, 2, 1}},
                                                                        {"Flaeche2", MatrixKind::Area, {0, 0, 0, 0}},
                                                                        {"Figur1", MatrixKind::Figure, {0, 0, 1, 0}},
                                                                        {"Linie4", MatrixKind::Line, {0, 4, 0, 0}},
                                                                        {"Nord", MatrixKind::Group, {17, 0, 1, 0}}};
  ASSERT_EQ(matrix->rows.size(), std::size(rows));
  for (size_t i = 0; i < std::size(rows); ++i)
    EXPECT_EQ(std::tie(matrix->rows[i].id, matrix->rows[i].kind, matrix->rows[i].counts), rows[i]) << i;
  EXPECT_EQ(matrix->rows[0].indices.individuals, 3);
  EXPECT_EQ(std::tuple(matrix->totals, matrix->all.species), std::tuple((std::vector<qint64>{17, 4, 4, 1}), 4));
  EXPECT_EQ(matrix->tooLarge, QStringList{"40000 ameise"});
}
