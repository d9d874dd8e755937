#include "objects/figure.h"

#include "objects/drawing.h"

namespace {

using enum EntryKind;

FigureShown Draw(Drawing& drawing, EntryKind kind, const char* schrift, const QRect& box,
                 const std::vector<QPoint>& vertices = {}, int ra = 0) {
  EntryRow row;
  row.Schrift = QString::fromLatin1(schrift);
  row.Xmap = box.x(), row.Ymap = box.y(), row.Xline = box.width(), row.Yline = box.height();
  row.RA = ra;
  row.Typ = static_cast<int>(kind);
  return Draw_Figure(drawing.context, row, kind, vertices, drawing.colors);
}

const QRect square(20, 20, 60, 60), lying(20, 40, 60, 20);

TEST(Figure, FillCodesByTheirTable) {
  const QRgb ground = qRgb(200, 255, 180);
  const auto notXor = [](QRgb a, QRgb b) { return ~(a ^ b) | black; };
  const std::tuple<const char*, QRgb, QRgb> cases[] = {{"F 0", ground, ground},
                                                       {"F 1", yellow, yellow},
                                                       {"F 8", blue, blue},
                                                       {"F-1", notXor(ground, yellow), notXor(ground, yellow)},
                                                       {"F-8", notXor(ground, blue), notXor(ground, blue)},
                                                       {"F 2", yellow, blue},
                                                       {"F-2", notXor(ground, yellow), notXor(ground, blue)}};
  for (const auto& [schrift, inside, onHatch] : cases) {
    Drawing drawing(100, 100, ground);
    EXPECT_TRUE(Draw(drawing, Rectangle, schrift, square).drawn);
    // The box has width + 1 pixels.
    drawing.Expect({{50, 50, inside}, {50, 52, onHatch}, {20, 50, red}, {80, 80, red}, {81, 80, ground}}, schrift);
  }
}

TEST(Figure, FrameAndBareOutline) {
  Drawing unframed, wide, bare, reduced;
  Draw(unframed, Rectangle, "F 1", square, {}, -100);
  EXPECT_EQ(unframed.Count(red), 0);
  EXPECT_EQ(unframed.At(30, 30), yellow);
  Draw(wide, Rectangle, "F 3", square, {}, 400);
  EXPECT_EQ(wide.Count(red, QRect(20, 50, 30, 1)), 4);
  EXPECT_GE(wide.Count(blue, QRect(24, 50, 52, 1)), 24);  // hatch lines of the frame's width, 4 of 8 pixels
  EXPECT_GE(wide.Count(yellow, QRect(24, 50, 52, 1)), 20);
  // A font is no fill: an outline of 2 pixels in VG, of 1 when the map is reduced.
  Draw(bare, Rectangle, "Futura", square);
  EXPECT_EQ(bare.Count(blue, QRect(10, 50, 40, 1)), 2);
  EXPECT_EQ(bare.At(50, 50), white);
  reduced.context.view.Zoom = 2;
  Draw(reduced, PlanSquare, "Arial", QRect(20, 20, 80, 80));
  EXPECT_EQ(reduced.Count(blue, QRect(5, 20, 20, 1)), 1);
  EXPECT_EQ(reduced.Extent(blue).topLeft(), QPoint(10, 10));
}

TEST(Figure, EllipseAndCircleFillTheirBoxAndAnEmptyOneCanBeHit) {
  Drawing flat, tall, circle;
  EXPECT_EQ(Draw(flat, Ellipse, "F 1", QRect(20, 30, 60, 30)).box, QRectF(20, 30, 60, 30));
  const QRect extent = flat.Extent(red);
  EXPECT_EQ(extent.left(), 18);  // radius half the side + 1 about (Xmap + radius - 2)
  EXPECT_NEAR(extent.right(), 80, 1);
  EXPECT_NEAR(extent.height(), 32, 1);
  flat.Expect({{49, 45, yellow}, {21, 31, white}});
  Draw(tall, Ellipse, "F 1", QRect(30, 20, 30, 60));
  EXPECT_NEAR(tall.Extent(red).width(), 32, 1);
  EXPECT_NEAR(tall.Extent(red).height(), 63, 1);
  Draw(circle, Circle, "F 1", QRect(30, 30, 40, 40));
  EXPECT_EQ(circle.Extent(red).width(), circle.Extent(red).height());
  Drawing drawing;
  const FigureShown shown = Draw(drawing, Rectangle, "F 1", QRect(50, 50, 0, 0));
  EXPECT_TRUE(shown.drawn);
  EXPECT_EQ(Shape_Bounds(shown.region), QRectF(50, 50, 3, 3));
  EXPECT_EQ(drawing.Count(white), 10000 - 1);
}

TEST(Figure, KeepsItsFormBeyondTheWindow) {
  Drawing whole, cut, beside;
  cut.context.view.Left = 50;
  for (const EntryKind kind : {Rectangle, Ellipse, Circle}) {
    // The same figure, seen whole and with its left half cut off.
    Draw(whole, kind, "F 1", QRect(10, 20, 70, 50));
    Draw(cut, kind, "F 1", QRect(10, 20, 70, 50));
    EXPECT_EQ(whole.image.copy(50, 0, 50, 100), cut.image.copy(0, 0, 50, 100));
    Drawing huge;  // far larger than the window: still there
    huge.context.view = {.Left = 15000, .Top = 15000, .Zoom = 0.125};
    EXPECT_TRUE(Draw(huge, kind, "F 1", QRect(0, 0, 30000, 30000)).drawn);
    EXPECT_EQ(huge.Count(yellow), 10000);
    EXPECT_FALSE(Draw(beside, kind, "F 1", QRect(200, 20, 30, 30)).drawn);
    EXPECT_FALSE(Draw(beside, kind, "F 1", QRect(-80, 20, 30, 30)).drawn);
  }
  Drawing rim;  // and still round: the leftmost point of a circle of 30000 pixels
  rim.context.view = {.Left = -5, .Top = 14995, .Zoom = 0.125};
  Draw(rim, Circle, "F 1", QRect(0, 0, 30000, 30000));
  EXPECT_NEAR(rim.Extent(red).left(), 38, 2);
  rim.Expect({{99, 40, yellow}, {10, 40, white}});
}

TEST(Figure, AngleTurnsCounterClockwiseAboutTheMiddle) {
  // A lying bar about (50, 50), turned by 90 degrees, stands.
  Drawing standing, plain, full;
  const FigureShown shown = Draw(standing, Rectangle, "F 1<90", lying);
  standing.Expect({{50, 25, yellow}, {25, 50, white}});
  EXPECT_TRUE(Shape_Contains(shown.region, {50, 25}));
  EXPECT_FALSE(Shape_Contains(shown.region, {25, 50}));
  // By 30 degrees its right end rises.
  for (const EntryKind kind : {Rectangle, Ellipse}) {
    Drawing tilted;
    Draw(tilted, kind, "F 1<30", lying);
    tilted.Expect({{70, 39, yellow}, {30, 61, yellow}, {70, 61, white}, {30, 39, white}});
  }
  Draw(plain, Ellipse, "F 1", lying);
  Draw(full, Ellipse, "F 1<360", lying);
  EXPECT_EQ(plain.image, full.image);
}

TEST(Figure, FreeFiguresAreDrawnFromTheirVertices) {
  const std::vector<QPoint> triangle{{20, 80}, {50, 20}, {80, 80}};
  Drawing straight, rounded, turned, transparent;
  const FigureShown shown = Draw(straight, FreeFigure, "F 1", square, triangle);
  EXPECT_TRUE(shown.drawn);
  straight.Expect({{50, 60, yellow}, {50, 20, red}});
  EXPECT_TRUE(Shape_Contains(shown.region, {50, 60}));
  EXPECT_FALSE(Shape_Contains(shown.region, {22, 22}));
  Draw(rounded, FreeFigureRound, "F 1", square, triangle);
  rounded.Expect({{50, 22, white}, {50, 60, yellow}}, "rounded");
  Draw(turned, FreeFigure, "F 1<180", square, triangle);
  turned.Expect({{30, 24, yellow}, {30, 76, white}}, "upside down");
  EXPECT_FALSE(Draw(turned, FreeFigure, "F 1", square, {{3, 3}}).drawn);
  Draw(transparent, FreeFigure, "F-8", square, triangle);
  transparent.Expect({{50, 60, blue}});  // not-xor on white is the colour itself
}

}  // namespace
