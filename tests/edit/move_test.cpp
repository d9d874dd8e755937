#include "edit/move.h"

#include "support/bulk_fixture.h"

using Move = BulkTest;

TEST_F(Move, EveryPositionOfAKindGoesAlong) {
  const EntryRow both[] = {Make(101, "Text", "a", 10, 20, 30, 40),     Make(-3, "Text", "a", 10, 20, 0, 40),
                           Make(7, "Text", "a", 10, 20, 30, 40),       Make(5, "Bild", "x.bmp", 10, 20, 30, 40),
                           Make(11, "Maßstab", " m", 9, 9, 99, 17),    Make(-12, "Np", "Nordpfeil", 10, 80, 10, 20),
                           Make(16, "Plan\x1fX", "A1", 10, 20, 60, 80)};
  const EntryRow first[] = {Make(0, "Text", "a", 10, 20), Make(5, "Bild", "x.bmp", 10, 20),
                            Make(22, "Figur1", "", 10, 20, 30, 40), Make(4, "Linie9", "", 10, 20, 2, 1)};
  const EntryRow none[] = {Make(17, "Plan\x1fX", "", 102, 3, 30, 40), Make(15, "Netz", "", 7, 7, 7, 7)};
  std::vector<EntryRow> will = {Row(Header_Key())};
  const auto add = [&will](EntryRow row, int ofFirst, int ofSecond) {
    Add(row);
    row.Xmap += 5 * ofFirst, row.Ymap -= 7 * ofFirst;
    row.Xline += 5 * ofSecond, row.Yline -= 7 * ofSecond;
    will.push_back(row);
  };
  for (const EntryRow& row : both) add(row, 1, 1);
  for (const EntryRow& row : first) add(row, 1, 0);
  for (const EntryRow& row : none) add(row, 0, 0);
  EXPECT_EQ(Move_Entries({5, -7}), 11);
  EXPECT_THAT(Rows_Of(*dbEntries), testing::ElementsAreArray(will));
}

TEST_F(Move, VerticesGoAlongOnceAndTakeTheirStopMark) {
  Add_Polygon("Linie0", {{10, 10}, {20, 20}, {stopMark, 0}, {30, 30}});
  Add(Make(4, "-Linie0", "", 1, 1, 2, 1));
  Add_Polygon("Figur1", {{10, 10}, {20, 20}, {0, 9}}, 24);
  Add(Make(-140, "Flaeche5", "Tabelle fehlt", 1, 1, 2, 1));  // hidden: nobody is asked about it
  Add_Text("beschädigt");
  dbEntries->Execute("UPDATE MapData SET Xmap = 99999 WHERE Eintrag = 'beschädigt'");
  const QStringList before = Whole_Table();
  EXPECT_EQ(Move_Entries({3, 4}), 4);
  EXPECT_TRUE(Whole_Table().join('\n').contains("1:99999|1:20|")) << "such a row belongs to the repair";
  const auto& points = *dbEntries->Points("Linie0");
  ASSERT_EQ(points.size(), 4U);
  EXPECT_EQ(points[1].x, 23);
  EXPECT_EQ(points[2].x, stopMark);
  EXPECT_EQ(points[3].y, 34);
  EXPECT_EQ(Load_Vertices("Figur1"), (std::vector<QPoint>{{13, 14}, {23, 24}, {3, 13}}));
  MessageScript script("wieder hergestellt");
  Move_Back();
  EXPECT_EQ(Whole_Table(), before);
  Move_Back();  // nothing more to take back
}

TEST_F(Move, MarkedOnlyAndPositionsOutOfRange) {
  const QString plain = Add_Text("a", 100, 100), marked = Add_Text("b", 100, 100, 100);
  EXPECT_EQ(Move_Entries({1.5, 0, true}), 1);
  EXPECT_EQ(Row(plain).Xmap, 100);
  EXPECT_EQ(Row(marked).Xmap, 102);
  Add_Polygon("Linie4", {{10, 10}, {-14990, 20}});
  const QStringList before = Whole_Table();
  const std::pair<MoveRequest, const char*> cases[] = {
      {{32700, 0}, "Text: a"}, {{0, -32868}, "zu groß"}, {{-11, 0}, "Linie4"}};
  for (const auto& [request, named] : cases) {
    MessageScript script(named);
    EXPECT_EQ(Move_Entries(request), 0);
    EXPECT_EQ(script.Seen()[0].title, QString("Fehler - Einträge verchieben"));
  }
  EXPECT_EQ(Whole_Table(), before);
  EntryRow corner = Make(16, "Plan", "", 32000, 0, 32760, 50);
  const EntryRow was = corner;
  EXPECT_THROW(Shift_Row(corner, 10, 0), Error);
  EXPECT_EQ(corner, was);
}
