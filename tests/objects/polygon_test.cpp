#include "objects/polygon.h"

#include "objects/drawing.h"

namespace {

const std::vector<QPoint> square{{20, 20}, {80, 20}, {80, 80}, {20, 80}};
const std::vector<QPoint> level{{10, 50}, {90, 50}};

EntryRow Row(int xline, int yline, int ra = 0) {
  EntryRow row;
  row.Xline = xline;
  row.Yline = yline;
  row.RA = ra;
  row.Typ = 4;
  return row;
}

bool Draw_Area(Drawing& drawing, const EntryRow& row, const std::vector<QPoint>& points, LineOptions options = {}) {
  return Draw_Line_Entry(drawing.context, row, EntryId::Parse(QStringLiteral("Flaeche0")), points, drawing.colors,
                         options);
}

bool Draw_Line(Drawing& drawing, const EntryRow& row, const std::vector<QPoint>& points, LineOptions options = {}) {
  return Draw_Line_Entry(drawing.context, row, EntryId::Parse(QStringLiteral("Linie0")), points, drawing.colors,
                         options);
}

TEST(Area, FillCodesAndOutline) {
  const QRgb ground = qRgb(200, 255, 180);
  struct Case {
    int code;
    QRgb inside;
  };
  // Transparent codes keep only what ground and colour have in common.
  for (const Case& c : {Case{0, ground}, Case{1, yellow}, Case{8, blue}, Case{-1, ground & yellow},
                        Case{-8, ground & blue}, Case{2, yellow}, Case{-2, ground & yellow}}) {
    Drawing drawing(100, 100, ground);
    EXPECT_TRUE(Draw_Area(drawing, Row(1, c.code), square));
    EXPECT_EQ(drawing.At(50, 51), c.inside) << c.code;
    EXPECT_EQ(drawing.At(20, 50), red) << c.code;  // framed: outline in RA
    EXPECT_EQ(drawing.At(85, 50), ground) << c.code;
  }
  Drawing unframed;
  Draw_Area(unframed, Row(1, 1, -100), square);
  EXPECT_EQ(unframed.At(20, 50), blue);
}

TEST(Area, HatchHasTheOutlinesWidth) {
  Drawing drawing;
  Draw_Area(drawing, Row(3, 2), square);
  int lines = 0;
  for (int y = 24; y < 76; ++y) lines += drawing.At(50, y) == blue;
  EXPECT_EQ(lines, 7 * 3 - 1);  // about 24, 32, .. 72; the first one begins a pixel above
  EXPECT_EQ(drawing.At(50, 28), yellow);
  Drawing clear;
  clear.colors.HG = white;
  Draw_Area(clear, Row(1, -5), square);
  EXPECT_EQ(clear.At(48, 40), blue);
  EXPECT_EQ(clear.At(49, 40), white);
}

TEST(Area, RoundedCornersAreCutOff) {
  Drawing drawing;
  Draw_Area(drawing, Row(1, 1), square, {.rounded = true});
  EXPECT_EQ(drawing.At(22, 22), white);
  EXPECT_EQ(drawing.At(50, 20), red);  // the middle of a side is on the curve
  EXPECT_EQ(drawing.At(50, 50), yellow);
  EXPECT_TRUE(drawing.regions.AnyAt({50, 50}));
  EXPECT_FALSE(drawing.regions.AnyAt({22, 22}));
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
  Drawing drawing;
  Draw_Area(drawing, Row(1, 1), {{20, 20}, {80, 80}, {80, 20}, {20, 80}});
  EXPECT_EQ(drawing.At(70, 50), yellow);
  EXPECT_EQ(drawing.At(50, 25), white);
  for (const bool rounded : {false, true}) {
    EXPECT_TRUE(Draw_Area(drawing, Row(1, 3), {{5, 5}, {5, 5}, {5, 5}}, {.rounded = rounded}));
    EXPECT_TRUE(Draw_Line(drawing, Row(3, 1), {{5, 5}, {5, 5}, {5, 5}}, {.rounded = rounded}));
    EXPECT_FALSE(Draw_Area(drawing, Row(1, 1), {{5, 5}}, {.rounded = rounded}));
  }
}

TEST(Line, OneVertexDrawsNothing) {
  Drawing drawing;
  EXPECT_FALSE(Draw_Line(drawing, Row(1, 1), {{50, 50}}));
  EXPECT_FALSE(Draw_Line(drawing, Row(1, 1), {}));
  EXPECT_EQ(drawing.Count(white), 10000);
  EXPECT_EQ(drawing.regions.Count(), 0);
}

TEST(Line, WidthStyleAndModeComeFromTheRow) {
  Drawing wide;
  Draw_Line(wide, Row(6, 1), level);
  EXPECT_EQ(wide.Count(blue, QRect(50, 0, 1, 100)), 6);
  Drawing reduced;
  reduced.context.view.Zoom = 2;
  Draw_Line(reduced, Row(6, 1), level);
  EXPECT_EQ(reduced.Count(blue, QRect(30, 0, 1, 100)), 3);
  Drawing thin;
  thin.context.view.Zoom = 20;
  Draw_Line(thin, Row(6, 1), {{200, 500}, {1800, 500}});
  EXPECT_EQ(thin.Count(blue, QRect(50, 0, 1, 100)), 1);

  Drawing dashed, dotted;
  Draw_Line(dashed, Row(1, 2), level);
  Draw_Line(dotted, Row(1, 3), level);
  EXPECT_LT(dotted.Count(blue), dashed.Count(blue));
  EXPECT_LT(dashed.Count(blue), 75);
  EXPECT_GT(dotted.Count(blue), 20);

  Drawing transparent(100, 100, yellow);
  Draw_Line(transparent, Row(1, -1), level);
  EXPECT_EQ(transparent.At(50, 50), yellow & blue);

  EXPECT_EQ(Line_Style(5).pen, PenStyle::DashDotDot);
  EXPECT_EQ(Line_Style(0).pen, PenStyle::Solid);
  EXPECT_EQ(Line_Style(99).pen, PenStyle::Solid);
  EXPECT_TRUE(Line_Style(-4).transparent);
  EXPECT_EQ(Line_Style(-4).pen, PenStyle::DashDot);
}

TEST(Line, RoundedRunsFromEndToEnd) {
  Drawing drawing;
  Draw_Line(drawing, Row(1, 1), {{10, 90}, {10, 10}, {90, 10}}, {.rounded = true});
  EXPECT_EQ(drawing.At(10, 89), blue);
  EXPECT_EQ(drawing.At(88, 10), blue);
  EXPECT_EQ(drawing.At(10, 10), white);
  EXPECT_EQ(drawing.At(20, 20), blue);  // (p0 + 6 v + p1) / 8 of x: (10 + 60 + 90) / 8
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
  EXPECT_EQ(drawing.regions.Row(1).key, 7);
  EXPECT_EQ(drawing.regions.Row(1).kind, 0);
  EXPECT_TRUE(drawing.regions.AnyAt({30, 56}));
  EXPECT_FALSE(drawing.regions.AnyAt({30, 58}));
  EXPECT_TRUE(drawing.regions.AnyAt({30, 44}));
  EXPECT_FALSE(drawing.regions.AnyAt({30, 42}));
  EXPECT_TRUE(drawing.regions.AnyAt({56, 30}));
  EXPECT_TRUE(drawing.regions.AnyAt({55, 55}));  // the outer side of the bend
  EXPECT_FALSE(drawing.regions.AnyAt({5, 50}));  // no longer than the line
  EXPECT_FALSE(drawing.regions.AnyAt({30, 20}));

  Drawing still;
  still.context.inactive = true;
  Draw_Line(still, Row(4, 1), level);
  EXPECT_EQ(still.regions.Count(), 0);
  EXPECT_EQ(still.At(50, 50), blue);
}

TEST(Line, StripOfASharpBendDoesNotRunAway) {
  const QPolygonF strip = Hit_Strip(std::vector<QPointF>{{0, 0}, {100, 0}, {0, 1}}, 6);
  EXPECT_EQ(strip.size(), 6);
  EXPECT_LT(strip.boundingRect().right(), 125);
  EXPECT_TRUE(Hit_Strip(std::vector<QPointF>{{3, 3}, {3, 3}}, 6).isEmpty());
}

TEST(Line, InHandShowsHandlesAndHasNoRegion) {
  Drawing drawing;
  Draw_Line(drawing, Row(1, 1), {{10, 50}, {90, 50}}, {.inHand = true});
  EXPECT_EQ(drawing.Count(blue, QRect(8, 48, 4, 4)), 16);
  EXPECT_EQ(drawing.regions.Count(), 0);
  Drawing highlighted;
  Draw_Line(highlighted, Row(1, 1), level, {.inHand = true, .highlighted = true});
  EXPECT_EQ(highlighted.At(50, 49), blue);
  EXPECT_EQ(highlighted.At(50, 50), white);  // blue over blue, not-xor
}

TEST(Line, EndsAreDrawnWhereTheIdSaysSo) {
  Drawing drawing;
  EntryId id = EntryId::Parse(QStringLiteral("Linie3 - P1010L8.0B8.0"));
  ASSERT_TRUE(id.ends.has_value());
  Draw_Line_Entry(drawing.context, Row(1, 1), id, level, drawing.colors);
  EXPECT_EQ(drawing.At(62, 60), blue);
  EXPECT_EQ(drawing.At(38, 60), white);
  // An end outside the window is not drawn, the line is.
  Drawing beyond;
  Draw_Line_Entry(beyond.context, Row(1, 1), id, std::vector<QPoint>{{10, 50}, {400, 50}}, beyond.colors);
  EXPECT_EQ(beyond.Count(blue), 90);
}

}  // namespace
