#include "printing/page_geometry.h"

// Room of 170 x 250 mm on a sheet, whatever the printer.
static Paper Paper_With_Room(double width = 170, double height = 250) {
  return {.widthMm = width + 10, .heightMm = height + 10, .unprintableX = 5, .unprintableY = 5, .dpi = 600};
}
static PrintedMap Map_Of(double widthMm, double heightMm) { return {{2000, 1000}, {widthMm, heightMm}}; }

TEST(PrintGeometryTest, SheetsCoverTheMapWithoutGapAndOverlap) {
  const std::tuple<double, double, double, int, int> cases[] = {
      {100, 80, 1, 1, 1},       {170, 250, 1, 1, 1}, {170, 100, 2, 2, 1},     {254, 100, 1.5, 3, 1},
      {1000, 1000, 0.05, 1, 1}, {171, 251, 1, 2, 2}, {1000, 700, 3.7, 22, 11}};
  for (const auto& [width, height, factor, across, down] : cases) {
    const PrintGeometry g = Print_Geometry({.factor = factor}, Paper_With_Room(), Map_Of(width, height));
    ASSERT_TRUE(g.valid);
    EXPECT_EQ(std::pair(g.across, g.down), std::pair(across, down)) << width << " x " << factor;
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
    EXPECT_NEAR(covered, width * height, 1e-6);
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
  const auto geometry = [](const PrintSettings& settings, double side = 100) {
    return Print_Geometry(settings, Paper_With_Room(), Map_Of(side, side));
  };
  for (const double factor : {0.0, -1.0}) EXPECT_EQ(geometry({.factor = factor}).factor, 1.0);
  const PrintSettings wide{.factor = 1, .left = 90, .right = 90};
  EXPECT_FALSE(geometry(wide).valid || geometry({}, 0).valid);
  EXPECT_TRUE(Sheet_Walk(geometry(wide)).empty());
  EXPECT_TRUE(Calc_Pages(wide, Paper_With_Room(), Map_Of(100, 100)).empty());
  // A scan that says of itself that it has ten points a metre: no number of sheets to be counted or walked.
  const PrintGeometry endless = geometry({.factor = 20}, 6e6);
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
  EXPECT_EQ((std::vector(choices.begin(), choices.begin() + 3)),
            (std::vector<PageChoice>{{1, 0.425}, {2, 0.833}, {4, 0.85}}));
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
