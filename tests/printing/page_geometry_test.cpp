#include "printing/page_geometry.h"

#include <gtest/gtest.h>

namespace {

// Room of 170 x 250 mm on a sheet, whatever the printer.
Paper Paper_With_Room(double width = 170, double height = 250) {
  return {.widthMm = width + 10, .heightMm = height + 10, .unprintableX = 5, .unprintableY = 5, .dpi = 600};
}
PrintedMap Map_Of(double widthMm, double heightMm) { return {{2000, 1000}, {widthMm, heightMm}}; }

TEST(PrintGeometryTest, SheetsCoverTheMapWithoutGapAndOverlap) {
  struct Case {
    double width, height, factor;
    int across, down;
  };
  for (const Case& c :
       {Case{100, 80, 1, 1, 1}, Case{170, 250, 1, 1, 1}, Case{170, 100, 2, 2, 1}, Case{254, 100, 1.5, 3, 1},
        Case{1000, 1000, 0.05, 1, 1}, Case{171, 251, 1, 2, 2}, Case{1000, 700, 3.7, 22, 11}}) {
    const PrintGeometry g = Print_Geometry({.factor = c.factor}, Paper_With_Room(), Map_Of(c.width, c.height));
    ASSERT_TRUE(g.valid);
    EXPECT_EQ(g.across, c.across) << c.width << " x " << c.factor;
    EXPECT_EQ(g.down, c.down) << c.height << " x " << c.factor;
    const auto sheets = Sheet_Walk(g);
    ASSERT_EQ(static_cast<int>(sheets.size()), g.Pages());
    double covered = 0;
    for (const PrintSheet& sheet : sheets) {
      EXPECT_LE(sheet.PageWidthOut, g.PageWidthMm + 1e-9);
      EXPECT_LE(sheet.PageHeightOut, g.PageHeightMm + 1e-9);
      EXPECT_GT(sheet.PageWidthOut, 0);
      // The right edge of a sheet is the left one of the next.
      if (sheet.column + 1 < g.across) {
        const PrintSheet& next = sheets[static_cast<size_t>(sheet.number)];
        EXPECT_NEAR(sheet.PageOffX + sheet.PageStepX, next.PageOffX, 1e-9);
      }
      covered += sheet.PageStepX * sheet.PageStepY;
    }
    EXPECT_NEAR(covered, c.width * c.height, 1e-6);
    const QRectF last = Sheet_Source(g, sheets.back());
    EXPECT_NEAR(last.right(), 2000, 1e-6);
    EXPECT_NEAR(last.bottom(), 1000, 1e-6);
  }
}

TEST(PrintGeometryTest, MillimetresAreTrueAtEveryResolution) {
  for (const int dpi : {150, 300, 600, 1200}) {
    Paper paper = Paper_With_Room();
    paper.dpi = dpi;
    const PrintGeometry g =
        Print_Geometry({.factor = 2, .left = 10, .right = 20, .top = 5, .bottom = 15}, paper, Map_Of(200, 100));
    EXPECT_DOUBLE_EQ(g.PageWidthMm, 140);
    EXPECT_DOUBLE_EQ(g.PageHeightMm, 230);
    EXPECT_NEAR(g.DotsPerMmX, dpi / 25.4, 0.01);
    EXPECT_DOUBLE_EQ(g.MapPixelMm, 0.2);
    // Map pixel 1500 of the third sheet across: 300 mm on paper, less two sheets, behind the margin.
    const PrintSheet third = Sheet_Walk(g)[2];
    EXPECT_NEAR(1500 * g.MapPixelMm - third.PageDrawX + g.marginLeft, 300 - 280 + 10, 1e-9);
  }
}

TEST(PrintGeometryTest, BadSettings) {
  EXPECT_EQ(Print_Geometry({.factor = 0}, Paper_With_Room(), Map_Of(100, 100)).factor, 1.0);
  EXPECT_EQ(Print_Geometry({.factor = -1}, Paper_With_Room(), Map_Of(100, 100)).factor, 1.0);
  const PrintSettings wide{.factor = 1, .left = 90, .right = 90};
  EXPECT_FALSE(Print_Geometry(wide, Paper_With_Room(), Map_Of(100, 100)).valid);
  EXPECT_TRUE(Sheet_Walk(Print_Geometry(wide, Paper_With_Room(), Map_Of(100, 100))).empty());
  EXPECT_TRUE(Calc_Pages(wide, Paper_With_Room(), Map_Of(100, 100)).empty());
  EXPECT_FALSE(Print_Geometry({}, Paper_With_Room(), Map_Of(0, 0)).valid);
  // A scan that says of itself that it has ten points a metre: no number of sheets to be counted or walked.
  const PrintGeometry endless = Print_Geometry({.factor = 20}, Paper_With_Room(), Map_Of(6e6, 6e6));
  EXPECT_FALSE(endless.valid);
  EXPECT_GT(endless.Pages(), 0);
}

TEST(PrintGeometryTest, ChoicesAreTheLargestFactorsThatFit) {
  const Paper paper = Paper_With_Room();
  const PrintedMap map = Map_Of(400, 300);
  const auto choices = Calc_Pages({}, paper, map);
  ASSERT_GE(choices.size(), 3U);
  EXPECT_LE(choices.size(), 10U);
  // 400 mm on 170: 0.425 and its multiples; 300 mm on 250: 0.833.
  EXPECT_EQ(choices[0], (PageChoice{1, 0.425}));
  EXPECT_EQ(choices[1], (PageChoice{2, 0.833}));
  EXPECT_EQ(choices[2], (PageChoice{4, 0.85}));
  for (const PageChoice& choice : choices) {
    EXPECT_EQ(Print_Geometry({.factor = choice.factor}, paper, map).Pages(), choice.pages);
    EXPECT_GT(Print_Geometry({.factor = choice.factor + 0.001}, paper, map).Pages(), choice.pages);
    EXPECT_LT(choice.pages, 50);
  }
}

TEST(PaperTest, LandscapeTurnsTheSheet) {
  EXPECT_EQ(Paper_Of("A4", landscape).widthMm, 297);
  EXPECT_EQ(Paper_Of("a3", portrait).heightMm, 420);
  EXPECT_DOUBLE_EQ(Paper_Of({}, portrait).PrintableWidth(), 201.6);
}

}  // namespace
