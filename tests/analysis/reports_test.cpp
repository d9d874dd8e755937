#include "analysis/analysis_texts.h"
#include "analysis/area_text.h"
#include "analysis/neighbour_text.h"
#include "analysis/overview.h"
#include "analysis_rows.h"

TEST(AreaTextTest, AreasAndFiguresWithTheirSpecies) {
  TestMap map;
  EXPECT_FALSE(Area_Text(map));
  map.Add_Square("Flaeche1", 100, -104, "Wiese");
  map.Add("Figur2", 20, "Quadrat");
  map.rows[1].Xline = map.rows[1].Yline = 10;
  map.Add("Text>Flaeche1", 0, "3 Chorthippus parallelus montanus");
  map.Add("Text>Flaeche1", 0, "a");
  const QString text = *Area_Text(map);
  EXPECT_TRUE(text.startsWith("Flächenstatistik:\r\n\tKarte.bmp\r\n"));
  for (const char* part :
       {"\r\nBezeichner:      Flaeche1               "
        "Wiese\r\n------------------------------------------------------------\r\n",
        "\r\nFlächengröße:         10 000       40 000,00 m^2  =  4 Hektar\r\n",
        "\r\nFlächenumfang:           400          800,00 m   =   0,8 Kilometer\r\n",
        "\r\nPopulationsdichte:\t5,000 Einträge pro 100 000 m^2  ", "\r\nFläche pro Eintrag:\t20 000,000 m^2 ",
        "\r\nArt:\tChort...lus montanus\t         3\t     75,00\r\nArt:\ta ", "\r\nBezeichner:      Figur2"})
    EXPECT_TRUE(text.contains(QString::fromUtf8(part))) << part;
  EXPECT_FALSE(text.contains("kein Maßstab"));
  EXPECT_EQ(text.count("zugeordnete Einträge:      2"), 1);
  map.measure.unit = " km";
  EXPECT_FALSE(Area_Text(map)->contains("Hektar") || Area_Text(map)->contains("Kilometer"));
  map.measure = {.pixelMm = 1, .perPixel = 1};
  EXPECT_TRUE(Area_Text(map)->contains("kein Maßstab"));
  EXPECT_FALSE(Area_Text(map, [] { return false; }));
}

TEST(NumberTexts, ShortAndBoxes) {
  const std::pair<double, const char*> numbers[] = {
      {0, "0,00"}, {1234.567, "1 234,57"}, {99999.5, "99 999,50"}, {123456.78, "123 457"}, {0.004, "0,00"}};
  for (const auto& [value, text] : numbers) EXPECT_EQ(Format_Number(value), text);
  EXPECT_EQ(Fixed_Text(0.5), "0,50");
  EXPECT_EQ(Fixed_Text(12345.678), "12345,68");
  TestMap map;
  map.Add_Square("Flaeche1", 10);
  map.Add("Linie1", 4);
  map.shapes["Linie1"] = {{0, 0}, {30, 40}};
  map.Add("Text", 0);
  EXPECT_EQ(Size_Box(map, map.rows[0]).text,
            "Flaeche1\nFläche: 100 Pixel, 6,25 mm², 400,00 m²\nUmfang: 40 Pixel, 10,00 mm, 80,00 m");
  EXPECT_EQ(Size_Box(map, map.rows[1]).text, "Linie1\nLänge: 50 Pixel, 12,50 mm, 100,00 m");
  EXPECT_EQ(Size_Box(map, map.rows[1]).title, "Linien berechnen");
  EXPECT_EQ(Size_Box(map, map.rows[2]).text, "");
}

TEST(NeighbourTextTest, SimpleAndDetailed) {
  const std::vector<NeighbourEntry> entries = {{"Amsel im Garten", 0, 0}, {"b\r\nb", 3, 4}, {"c", 0, 10}};
  const auto found = Find_Neighbours(entries, 2);
  const MapMeasure measure{.pixelMm = 1, .perPixel = 2, .unit = " m", .hasScale = true};
  const QStringList simple = Neighbour_Text(entries, *found, measure, {});
  EXPECT_EQ(simple,
            (QStringList{"Distanz zu den 2 naechstgelegenen Eintraegen.", "Masseinheit:  m", "",
                         "  Nachbar:         1         2          Summe    Mittel",
                         "                                            S       S/2", "Eintrag", "",
                         "Amsel im G      10,0      20,0           30,0      15,0",
                         "b b             10,0      13,4           23,4      11,7",
                         "c               13,4      20,0           33,4      16,7", "",
                         "Anzahl der Einträge:                 3", "mittlere Distanz:                   14,5", ""}));
  const QStringList detailed = Neighbour_Text(entries, *found, measure, {.detailed = true});
  EXPECT_EQ(detailed.mid(7, 3), (QStringList{"Amsel im G       b b         c",
                                             "Distanz:        10,0      20,0           30,0      15,0", ""}));
  EXPECT_EQ(detailed.size(), 7 + 9 + 4);
}

TEST(OverviewTest, SizesAndKinds) {
  TestMap map;
  for (const int typ : {0, 1, 102, -3, -203, 5, -5, 7, 15, 17, 16, 11, -12, 20, 125}) map.Add("Text", typ);
  map.Add("Linie1", 4);
  map.Add("Flaeche1", -40);
  const std::tuple<const char*, int, int, int> kinds[] = {
      {"Texteinträge", 3, 2, 2}, {"Bildeinträge", 1, 1, 0}, {"Linien", 1, 0, 0},
      {"Flächen", 0, 1, 0},      {"Figuren", 2, 0, 1},      {"Planquadrate", 1, 0, 0},
      {"Maßstab", 1, 0, 0},      {"Nordpfeil", 1, 0, 0},    {"Insgesamt", 10, 4, 3}};
  const auto counts = Count_Kinds(map.rows);
  ASSERT_EQ(counts.size(), std::size(kinds));
  for (size_t i = 0; i < counts.size(); ++i)
    EXPECT_EQ(std::tuple(counts[i].word, counts[i].visible, counts[i].hidden, counts[i].marked), kinds[i]) << i;
  const QString text = Overview_Text(map, {4000, 300}, {1000, 75});
  EXPECT_TRUE(text.startsWith("Übersicht\r\nKarte.bmp\r\n----"));
  EXPECT_TRUE(text.contains("\r\nBreite scanned:   \t4 000,00\t1 000,00\t8 000,00\r\n"));
  EXPECT_TRUE(text.contains("\r\n100 m    =\t50,00\t12,50\t100,00"));
  EXPECT_TRUE(text.contains("\r\nTexteinträge \t\t\t3\t2\t2\r\n"));
  EXPECT_FALSE(text.contains("kein Maßstab"));
  map.measure = {};
  const QString plain = Overview_Text(map, {4000, 300}, {1000, 75});
  EXPECT_TRUE(plain.contains("mm  \tPixel\r\n") && plain.contains("kein Maßstab"));
  EXPECT_FALSE(plain.contains("100 mm "));  // no millimetres known: no division by them
}
