#include "plansquares/raster_design.h"

#include "support/nets.h"

class RasterDesignTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    MapWidthPx = 1000;
    MapHeightPx = 800;
    MapWidthMm = 500;
    Coord = {};
  }
  static void Give_Scale(const QString& unit, double perPixel) {
    MapHasScale = true;
    MapUnit = unit;
    MapUnitPerPixel = perPixel;
  }
  static RasterDesign Part(CornerUnit unit, const QString& size, const QStringList& corners) {
    RasterDesign design;
    design.size = size;
    design.field = RasterField::Part;
    design.unit = unit;
    design.P1x = corners[0], design.P1y = corners[1], design.P2x = corners[2], design.P2y = corners[3];
    return design;
  }
};

TEST_F(RasterDesignTest, NamesCountColumnsInLettersAndRowsInNumbers) {
  const std::pair<int, const char*> columns[] = {{1, "A"},   {26, "Z"},  {27, "a"},   {52, "z"},   {53, "AA"},
                                                 {60, "AH"}, {79, "Aa"}, {104, "Az"}, {105, "BA"}, {1405, "aA"}};
  for (const auto& [column, letters] : columns) EXPECT_EQ(Column_Letters(column), letters) << column;
  EXPECT_EQ(Square_Name(28, 12), "b-12");
  int VG = 3, HG = 3;  // a line must be seen
  Sound_Colors(VG, HG);
  EXPECT_NE(VG, HG);
}

TEST_F(RasterDesignTest, FieldsShrinkToWholeSquaresAndSquaresLeaveNoGaps) {
  const RasterPlan plan = Plan({0, 0, 1000, 1000}, 300);
  EXPECT_EQ(std::tuple(plan.Cols, plan.Rows, plan.edgeX.back()), std::tuple(3, 3, 900));
  EXPECT_TRUE(plan.adjusted);
  EXPECT_EQ(std::tuple(plan.squares[5].name, plan.squares[5].box), std::tuple("C-2", QRect(600, 300, 300, 300)));
  EXPECT_FALSE(Plan({0, 0, 900, 600}, 300).adjusted);
  // A field whose end was rounded to a whole pixel still has its last square.
  EXPECT_EQ(Plan({0, 0, 1233, 124, 1}, 123.4F).Cols, 10);
  for (const float side : {100.0F, 33.3F, 7.1F}) {
    const RasterPlan odd = Plan({0.5, 0.25, 710, 110}, side);
    int sum = 0;
    for (int i = 0; i < odd.Cols; ++i) {
      const QRect& box = odd.squares[static_cast<size_t>(i)].box;
      EXPECT_EQ(box.x(), odd.edgeX[0] + sum);
      sum += box.width();
    }
    EXPECT_EQ(sum, odd.edgeX.back() - odd.edgeX.front()) << side;
  }
}

TEST_F(RasterDesignTest, TooManyAndTooSmallAreRefusedBeforeAnythingIsMade) {
  EXPECT_EQ(Plan({0, 0, 400, 500}, 10).squares.size(), 2000U);
  const Error error = Raised([] { Plan({0, 0, 450, 450}, 10); });
  EXPECT_EQ(std::tie(error.number, error.text), std::tuple(5000, "Zuviele Planquadrate. 2025"));
  EXPECT_THROW(Plan({0, 0, 1e9, 1e9}, 0.001F), Error);
  for (const auto& [width, height, side] : {std::tuple(99, 500, 100.0F), {500, 99, 100.0F}, {500, 500, 0.0F}})
    EXPECT_THROW(Plan({0, 0, 1.0 * width, 1.0 * height}, side), RasterFault) << width << ' ' << height;
}

TEST_F(RasterDesignTest, SizesAreReadWithTheirUnits) {
  const std::tuple<const char*, double, const char*> cases[] = {
      {"   100 * 100", 100, ""},       {"2,5 km", 2.5, "km"},  {"2.5km", 2.5, "km"},    {"1.000 m", 1000, "m"},
      {"10 * 10 Kilometer", 10, "km"}, {"20 px", 20, "Pixel"}, {"5 Ellen", 5, "Ellen"}, {"", 0, ""}};
  for (const auto& [text, number, unit] : cases) {
    const SizeText size = Read_Size(QString::fromUtf8(text));
    EXPECT_DOUBLE_EQ(size.number, number) << text;
    EXPECT_EQ(size.unit, unit) << text;
  }
}

TEST_F(RasterDesignTest, SidesFollowScalePaperAndNet) {
  RasterDesign design;
  const auto side = [&design](const QString& size) { return design.size = size, Side_Pixels(design); };
  EXPECT_DOUBLE_EQ(side("10 * 10"), 20);  // mm on paper: half a millimetre a pixel
  EXPECT_THROW(side("10 km"), RasterFault);
  Give_Scale(QStringLiteral(" m"), 5);
  EXPECT_DOUBLE_EQ(side("1 km"), 200);
  EXPECT_DOUBLE_EQ(side("100"), 20);
  design = Part(CornerUnit::Measure, QStringLiteral("100"), {"0", "0", "1000", "500,5"});
  MessageScript messages{{QStringLiteral("Die Maßeinheit fehlt")}, {QStringLiteral("Meter")}};
  EXPECT_DOUBLE_EQ(Side_Pixels(design), 20);
  EXPECT_DOUBLE_EQ(side("100 km"), 20);  // told to be metres
  EXPECT_DOUBLE_EQ(Read_Field(design, {}).height, 100.1);
  design.unit = CornerUnit::Pixel;
  EXPECT_DOUBLE_EQ(side("30"), 30);
  Coord = Utm_Net({1000, 800}, {100, 700}, 500);
  Coord.GridR = 4500000, Coord.GridH = 5400000;
  design = Part(CornerUnit::Coordinates, QStringLiteral("200"), {"4500000", "5401000", "4501000", "5400000"});
  EXPECT_DOUBLE_EQ(Side_Pixels(design), 100);
  const PlanField field = Read_Field(design, {});
  EXPECT_EQ(std::tuple(field.x, field.y, field.width), std::tuple(100, 200, 500));
  design.P2x = QStringLiteral("9999999");
  EXPECT_THROW(Read_Field(design, {}), RasterFault);
}

TEST_F(RasterDesignTest, CornersMayBeSwappedMissingOrNonsense) {
  RasterDesign design = Part(CornerUnit::Pixel, QStringLiteral("50"), {"400", "300", "100", "50"});
  const PlanField field = Read_Field(design, {});
  EXPECT_EQ(std::tuple(field.x, field.width), std::tuple(100, 300));
  design.P2x.clear(), design.P2y.clear();
  EXPECT_DOUBLE_EQ(Read_Field(design, QRectF(10, 20, 70, 80)).height, 80);
  RasterSteps steps;
  for (const char* wrong : {"", "abc", "1e99", "12 34"}) {
    design.P2x = QString::fromLatin1(wrong);
    design.P2y = QStringLiteral("50");
    MessageScript messages("Ungültige(r) Wert(e)");
    EXPECT_FALSE(Design_Raster(design, {}, {}, steps)) << wrong;
    EXPECT_EQ(std::tuple(steps.Mode, steps.tab), std::tuple("Step: 3", RasterTab::Corners));
  }
  design.unit = CornerUnit::Coordinates;
  design.size = QStringLiteral("50 mm");
  MessageScript messages{{QStringLiteral("Kein Koordinatennetz")}, {QStringLiteral("Ungültige")}};
  EXPECT_FALSE(Design_Raster(design, {}, {}, steps));
}

TEST_F(RasterDesignTest, AFaultOnTheMapIsToldWithItsStep) {
  const RasterDesign design = Part(CornerUnit::Pixel, QStringLiteral("50"), {"0", "0", "200", "100"});
  const auto fails = [] { Raise(errors::outOfMemory); };
  RasterSteps steps;
  for (const int number : {6, 7}) {
    RasterOnMap map;
    QString reached;
    map.clear = [&] { number == 6 ? fails() : void(reached = steps.Mode); };
    map.draw = [&](const RasterPlan& plan) {
      EXPECT_EQ(plan.Cols, 4);
      fails();
    };
    MessageScript messages(QString("Step: %1\n\n").arg(number), MsgAnswer::Cancel);
    EXPECT_FALSE(Design_Raster(design, {}, {}, steps, map));
    EXPECT_EQ(reached, number == 6 ? QString() : QStringLiteral("Step: 6"));
  }
}
