#include "objects/polygon.h"

#include "objects/drawing.h"

namespace {

const std::vector<QPoint> square{{20, 20}, {80, 20}, {80, 80}, {20, 80}};
const std::vector<QPoint> level{{10, 50}, {90, 50}};

EntryRow Row(int xline, int yline, int ra = 0) {
  EntryRow row;
  row.Xline = xline, row.Yline = yline;
  row.RA = ra;
  row.Typ = 4;
  return row;
}

bool Draw(Drawing& drawing, const char* id, const EntryRow& row, const std::vector<QPoint>& points,
          LineOptions options = {}) {
  return Draw_Line_Entry(drawing.context, row, EntryId::Parse(id), points, drawing.colors, options);
}
bool Draw_Area(Drawing& drawing, const EntryRow& row, const std::vector<QPoint>& points, LineOptions options = {}) {
  return Draw(drawing, "Flaeche0", row, points, options);
}
bool Draw_Line(Drawing& drawing, const EntryRow& row, const std::vector<QPoint>& points, LineOptions options = {}) {
  return Draw(drawing, "Linie0", row, points, options);
}

void Expect_Hits(const Drawing& drawing, const std::vector<QPointF>& points, bool hit) {
  for (const QPointF& point : points) EXPECT_EQ(drawing.regions.AnyAt(point), hit) << point.x() << ',' << point.y();
}

TEST(Area, FillCodesAndOutline) {
  const QRgb ground = qRgb(200, 255, 180);
  // Transparent codes keep only what ground and colour have in common.
  const std::pair<int, QRgb> cases[] = {{0, ground},           {1, yellow},         {8, blue},
                                        {-1, ground & yellow}, {-8, ground & blue}, {2, yellow},
                                        {-2, ground & yellow}};
  for (const auto& [code, inside] : cases) {
    Drawing drawing(100, 100, ground);
    EXPECT_TRUE(Draw_Area(drawing, Row(1, code), square));
    drawing.Expect({{50, 51, inside}, {20, 50, red}, {85, 50, ground}});  // framed: outline in RA
  }
  Drawing unframed;
  Draw_Area(unframed, Row(1, 1, -100), square);
  EXPECT_EQ(unframed.At(20, 50), blue);
}

TEST(Area, HatchHasTheOutlinesWidth) {
  Drawing drawing, clear;
  Draw_Area(drawing, Row(3, 2), square);
  EXPECT_EQ(drawing.Count(blue, QRect(50, 24, 1, 52)), 7 * 3 - 1);  // about 24, 32, .. 72; the first begins above
  EXPECT_EQ(drawing.At(50, 28), yellow);
  clear.colors.HG = white;
  Draw_Area(clear, Row(1, -5), square);
  clear.Expect({{48, 40, blue}, {49, 40, white}});
}

TEST(Area, RoundedCornersAreCutOff) {
  Drawing drawing;
  Draw_Area(drawing, Row(1, 1), square, {.rounded = true});
  drawing.Expect({{22, 22, white}, {50, 20, red}, {50, 50, yellow}});  // the middle of a side is on the curve
  Expect_Hits(drawing, {{50, 50}}, true);
  Expect_Hits(drawing, {{22, 22}}, false);
}

TEST(Area, EnclosingTheWindowFillsItAtEveryZoom) {
  for (const double zoom : {1.0, 0.125, 4.0}) {
    for (const bool rounded : {false, true}) {
      Drawing drawing;
      drawing.context.view = {.Left = 15000, .Top = 15000, .Zoom = zoom};
      EXPECT_TRUE(
          Draw_Area(drawing, Row(1, 1), {{-15000, 0}, {32000, 10}, {32000, 32000}, {0, 32000}}, {.rounded = rounded}));
      EXPECT_EQ(drawing.Count(yellow), 10000) << zoom << rounded;
      EXPECT_TRUE(drawing.regions.AnyAt({50, 50}));
    }
  }
  Drawing beside;
  EXPECT_FALSE(Draw_Area(beside, Row(1, 1), {{200, 0}, {300, 0}, {300, 90}}));
  EXPECT_EQ(beside.regions.Count(), 0);
}

TEST(Area, SelfCrossingAndDegenerateOutlinesDoNoHarm) {
  Drawing drawing, empty;
  EXPECT_FALSE(Draw_Line(empty, Row(1, 1), {{50, 50}}));
  EXPECT_FALSE(Draw_Line(empty, Row(1, 1), {}));
  EXPECT_EQ(empty.Count(white), 10000);
  EXPECT_EQ(empty.regions.Count(), 0);
  Draw_Area(drawing, Row(1, 1), {{20, 20}, {80, 80}, {80, 20}, {20, 80}});
  drawing.Expect({{70, 50, yellow}, {50, 25, white}});
  for (const bool rounded : {false, true}) {
    EXPECT_TRUE(Draw_Area(drawing, Row(1, 3), {{5, 5}, {5, 5}, {5, 5}}, {.rounded = rounded}));
    EXPECT_TRUE(Draw_Line(drawing, Row(3, 1), {{5, 5}, {5, 5}, {5, 5}}, {.rounded = rounded}));
    EXPECT_FALSE(Draw_Area(drawing, Row(1, 1), {{5, 5}}, {.rounded = rounded}));
  }
}

TEST(Line, WidthStyleAndModeComeFromTheRow) {
  for (const auto& [zoom, width] : {std::pair(1, 6), {2, 3}, {20, 1}}) {
    Drawing line;
    line.context.view.Zoom = zoom;
    Draw_Line(line, Row(6, 1), {{10 * zoom, 50 * zoom}, {90 * zoom, 50 * zoom}});
    EXPECT_EQ(line.Count(blue, QRect(50, 0, 1, 100)), width) << zoom;
  }
  Drawing dashed, dotted, transparent(100, 100, yellow);
  Draw_Line(dashed, Row(1, 2), level);
  Draw_Line(dotted, Row(1, 3), level);
  EXPECT_LT(dotted.Count(blue), dashed.Count(blue));
  EXPECT_LT(dashed.Count(blue), 75);
  EXPECT_GT(dotted.Count(blue), 20);
  Draw_Line(transparent, Row(1, -1), level);
  EXPECT_EQ(transparent.At(50, 50), yellow & blue);
  const std::pair<int, PenStyle> styles[] = {
      {0, PenStyle::Solid}, {-4, PenStyle::DashDot}, {5, PenStyle::DashDotDot}, {99, PenStyle::Solid}};
  for (const auto& [stored, pen] : styles) EXPECT_EQ(Line_Style(stored).pen, pen) << stored;
  EXPECT_TRUE(Line_Style(-4).transparent);
}

TEST(Line, RoundedRunsFromEndToEnd) {
  Drawing drawing;
  Draw_Line(drawing, Row(1, 1), {{10, 90}, {10, 10}, {90, 10}}, {.rounded = true});
  // Half way (p0 + 6 v + p1) / 8, of x (10 + 60 + 90) / 8.
  drawing.Expect({{10, 89, blue}, {20, 20, blue}, {88, 10, blue}, {10, 10, white}});
}

TEST(Line, DashesStayInPlaceWhenTheStartLeavesTheWindow) {
  // The part right of x = 60 looks the same whether the window shows the start or not.
  const std::vector<QPoint> line{{-300, 20}, {-250, 80}, {-200, 20}, {10, 50}, {95, 52}};
  Drawing narrow, open(500, 100);
  open.context.view.Left = -400;
  open.context.window = QRectF(0, 0, 500, 100);
  Draw_Line(narrow, Row(1, 2), line);
  Draw_Line(open, Row(1, 2), line);
  EXPECT_EQ(open.image.copy(400, 0, 100, 100), narrow.image);
}

TEST(Line, HitStripLiesFivePixelsAndHalfTheWidthBeside) {
  Drawing drawing;
  Draw_Line(drawing, Row(4, 1), {{10, 50}, {50, 50}, {50, 10}});
  ASSERT_EQ(drawing.regions.Count(), 1);
  EXPECT_EQ(std::pair(drawing.regions.Row(1).key, drawing.regions.Row(1).kind), std::pair(qint64{7}, 0));
  Expect_Hits(drawing, {{30, 56}, {30, 44}, {56, 30}, {55, 55}}, true);  // and on the outer side of the bend
  Expect_Hits(drawing, {{30, 58}, {30, 42}, {5, 50}, {30, 20}}, false);  // no longer than the line
  Drawing still;
  still.context.inactive = true;
  Draw_Line(still, Row(4, 1), level);
  EXPECT_EQ(still.regions.Count(), 0);
  EXPECT_EQ(still.At(50, 50), blue);
  // That of a sharp bend does not run away.
  const QPolygonF strip = Hit_Strip(std::vector<QPointF>{{0, 0}, {100, 0}, {0, 1}}, 6);
  EXPECT_EQ(strip.size(), 6);
  EXPECT_LT(strip.boundingRect().right(), 125);
  EXPECT_TRUE(Hit_Strip(std::vector<QPointF>{{3, 3}, {3, 3}}, 6).isEmpty());
}

TEST(Line, InHandShowsHandlesAndHasNoRegion) {
  Drawing drawing, highlighted;
  Draw_Line(drawing, Row(1, 1), level, {.inHand = true});
  EXPECT_EQ(drawing.Count(blue, QRect(8, 48, 4, 4)), 16);
  EXPECT_EQ(drawing.regions.Count(), 0);
  Draw_Line(highlighted, Row(1, 1), level, {.inHand = true, .highlighted = true});
  highlighted.Expect({{50, 49, blue}, {50, 50, white}});  // blue over blue, not-xor
}

TEST(Line, EndsAreDrawnWhereTheIdSaysSo) {
  Drawing drawing, beyond;
  const char* const id = "Linie3 - P1010L8.0B8.0";
  Draw(drawing, id, Row(1, 1), level);
  drawing.Expect({{62, 60, blue}, {38, 60, white}});
  // An end outside the window is not drawn, the line is.
  Draw(beyond, id, Row(1, 1), {{10, 50}, {400, 50}});
  EXPECT_EQ(beyond.Count(blue), 90);
}

}  // namespace
