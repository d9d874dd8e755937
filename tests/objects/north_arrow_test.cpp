#include "objects/north_arrow.h"

#include "objects/drawing.h"

namespace {

class NorthArrowTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    Add(Entry("Text", 0));
    Add(Entry("Maßstab", 11));
  }
  static std::vector<EntryRow> Rows() { return Rows_Of(*dbEntries); }
};

TEST(NorthArrowRow, ColoursAreToldApart) {
  const std::tuple<int, int, int, int> cases[] = {
      {9, 14, 9, 14}, {15, 0, 8, 0}, {15, 8, 8, 7}, {3, 3, 3, 12}, {0, 0, 0, 15}};
  for (const auto& [curVG, curHG, VG, HG] : cases) {
    const EntryRow row = Make_North_Arrow({100, 200}, curVG, curHG);
    EXPECT_EQ(std::tuple(row.VG, row.HG), std::tuple(VG, HG));
  }
}

TEST_F(NorthArrowTest, SecondOneReplacesTheFirstAndNothingElse) {
  int redraws = 0;
  events.RedrawWanted.Connect([&] { ++redraws; });
  CurVG = 4, CurHG = 14;
  rsEntries->MoveTo(1);
  const QString current = rsEntries->Bookmark();
  Add_North_Arrow(QPoint(50, 90));
  Add_North_Arrow(QPoint(150, 190));
  EXPECT_EQ(redraws, 2);
  EXPECT_EQ(rsEntries->Bookmark(), current);
  ASSERT_EQ(Rows().size(), 4U);
  EXPECT_EQ(Rows()[2].ID, "Maßstab");  // the scale bar stays
  EXPECT_EQ(Rows()[3], Make_North_Arrow({150, 190}, 4, 14));
  rsEntries->MoveLast();
  Set_Field(column::Typ, qint64{-112});  // a marked one is one as well
  Add_North_Arrow(QPoint(10, 90));       // the current row is the one that goes
  EXPECT_EQ(Rows().size(), 4U);
  EXPECT_EQ(Rows()[3].Xmap, 10);
}

TEST_F(NorthArrowTest, PointsAlongAMetricNet) {
  const CoordinateState former = Coord;
  // The tip is where Rechtswert stays the same: (dx, dy) with dy * slope + dx = 0.
  const std::tuple<int, double, QPoint> cases[] = {{gridUtm, 0.75, {136, 152}},
                                                   {gridGaussKrueger, -0.75, {64, 152}},
                                                   {gridUtm, 0.0001, {100, 140}},
                                                   {gridGeographic, 0.75, {100, 140}},
                                                   {gridNone, 0.75, {100, 140}}};
  for (const auto& [grid, slope, tip] : cases) {
    Coord.Grid = grid;
    Coord.Inclin = slope;
    Add_North_Arrow(QPoint(100, 200));
    EXPECT_EQ(QPoint(Rows().back().Xline, Rows().back().Yline), tip) << grid << ' ' << slope;
  }
  Coord = former;
}

TEST(NorthArrowDrawing, PointsFromFootToTip) {
  Drawing drawing;
  const QRectF box = Draw_North_Arrow(drawing.context, Make_North_Arrow({50, 90}, 1, 2), drawing.colors);
  drawing.Expect({{47, 60, blue}, {53, 60, yellow}, {50, 86, white}});  // both halves, the notch at its foot
  EXPECT_GT(drawing.Count(blue, QRect(40, 10, 20, 19)), 8);             // the letter above its tip
  EXPECT_TRUE(box.contains(QRectF(45, 30, 10, 60)));
  EXPECT_TRUE(QRectF(30, 5, 40, 96).contains(box));
  Drawing east, old, beside;
  EntryRow row = Make_North_Arrow({20, 50}, 1, 2);
  row.Xline = 80, row.Yline = 50;
  Draw_North_Arrow(east.context, row, east.colors);
  east.Expect({{50, 47, blue}, {50, 53, yellow}}, "tip to the right");
  row.Xline = row.Yline = 0;  // a row without a tip takes its length from the size
  row.Ymap = 90;
  row.Groesse = -4;
  Draw_North_Arrow(old.context, row, old.colors);
  old.Expect({{15, 75, white}, {20, 40, white}}, "old");
  EXPECT_NE(old.At(20, 65), white);
  EXPECT_TRUE(Draw_North_Arrow(beside.context, Make_North_Arrow({500, 90}, 1, 2), beside.colors).isEmpty());
}

}  // namespace
