#include "analysis/map_input.h"

namespace {
class MapInputTest : public TableTest {};
}  // namespace

TEST_F(MapInputTest, RowsOfTheOpenTable) {
  EXPECT_TRUE(Read_Map_Input().rows.empty());
  EXPECT_TRUE(Read_Sorted_Map_Input().map.rows.empty());
  Open_Table();
  for (const char* text : {"Zebra", "ähre", "=Ahorn", "Bär"}) Add(Text(text));
  Add(Entry("Flaeche3 - P0110L5.0B3.0", 4));
  Write_Vertices("Flaeche3", {{1, 1}, {5, 1}, {5, 5}});
  ASSERT_TRUE(Add_Column({"Datum", FieldType::Text, 20}, {}));
  rsEntries->MoveFirst();
  rsEntries->MoveNext();
  Set_Field(u"Datum", QStringLiteral("14.5."));
  const QString current = rsEntries->Bookmark();
  const MapInput input = Read_Map_Input();
  EXPECT_EQ(rsEntries->Bookmark(), current);
  ASSERT_EQ(input.rows.size(), 5U);
  EXPECT_EQ(std::tuple(input.rows[0].Eintrag, input.mapName), std::tuple("Zebra", "Karte.bmp"));
  EXPECT_EQ(input.vertices(input.rows[4]).size(), 3U);
  EXPECT_TRUE(input.vertices(input.rows[0]).empty());
  const SortedMapInput sorted = Read_Sorted_Map_Input();
  QStringList texts;
  for (const EntryRow& row : sorted.map.rows) texts += row.Eintrag;
  EXPECT_EQ(texts, (QStringList{"=Ahorn", "ähre", "Bär", "x", "Zebra"}));
  EXPECT_EQ(std::tuple(sorted.columns, sorted.values[4]), std::tuple(QStringList{"Datum"}, QStringList{"14.5."}));
}

TEST_F(MapInputTest, AUnitCountsWithItsScale) {
  MapUnit = " km";
  MapUnitPerPixel = 3;
  for (const bool scale : {false, true}) {
    MapHasScale = scale;
    EXPECT_EQ(Read_Map_Measure(), (MapMeasure{MapPixelMm, scale ? 3 : MapPixelMm, scale ? " km" : " mm", scale}));
  }
}
