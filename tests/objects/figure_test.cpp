#include "objects/figure.h"

#include "objects/drawing.h"

namespace {

EntryRow Row(const QString& schrift, int x, int y, int width, int height, int ra = 0) {
  EntryRow row;
  row.Schrift = schrift;
  row.Xmap = x, row.Ymap = y, row.Xline = width, row.Yline = height;
  row.RA = ra;
  row.Typ = 20;
  return row;
}

FigureShown Draw(Drawing& drawing, EntryKind kind, EntryRow row, const std::vector<QPoint>& vertices = {}) {
  row.Typ = static_cast<int>(kind);
  return Draw_Figure(drawing.context, row, kind, vertices, drawing.colors);
}

TEST(Figure, FillCodesByTheirTable) {
  const QRgb ground = qRgb(200, 255, 180);
  const auto NotXor = [](QRgb a, QRgb b) { return ~(a ^ b) | 0xff000000; };
  struct Case {
    const char* schrift;
    QRgb inside, onHatch;
  };
  const Case cases[] = {{"F 0", ground, ground},
                        {"F 1", yellow, yellow},
                        {"F 8", blue, blue},
                        {"F-1", NotXor(ground, yellow), NotXor(ground, yellow)},
                        {"F-8", NotXor(ground, blue), NotXor(ground, blue)},
                        {"F 2", yellow, blue},
                        {"F-2", NotXor(ground, yellow), NotXor(ground, blue)}};
  for (const Case& c : cases) {
    Drawing drawing(100, 100, ground);
    EXPECT_TRUE(Draw(drawing, EntryKind::Rectangle, Row(QString::fromLatin1(c.schrift), 20, 20, 60, 60)).drawn);
    EXPECT_EQ(drawing.At(50, 50), c.inside) << c.schrift;
    EXPECT_EQ(drawing.At(50, 52), c.onHatch) << c.schrift;
    EXPECT_EQ(drawing.At(20, 50), red) << c.schrift;
    EXPECT_EQ(drawing.At(80, 80), red) << c.schrift;  // width + 1 pixels
    EXPECT_EQ(drawing.At(81, 80), ground) << c.schrift;
  }
}

TEST(Figure, FrameAndBareOutline) {
  Drawing unframed;
  Draw(unframed, EntryKind::Rectangle, Row("F 1", 20, 20, 60, 60, -100));
  EXPECT_EQ(unframed.Count(red), 0);
  EXPECT_EQ(unframed.At(30, 30), yellow);
  Drawing wide;
  Draw(wide, EntryKind::Rectangle, Row("F 3", 20, 20, 60, 60, 400));
  EXPECT_EQ(wide.Count(red, QRect(20, 50, 30, 1)), 4);
  EXPECT_GE(wide.Count(blue, QRect(24, 50, 52, 1)), 24);  // hatch lines of the frame's width, 4 of 8 pixels
  EXPECT_GE(wide.Count(yellow, QRect(24, 50, 52, 1)), 20);
  // A font is no fill: an outline of 2 pixels in VG, of 1 when the map is reduced.
  Drawing bare;
  Draw(bare, EntryKind::Rectangle, Row("Futura", 20, 20, 60, 60));
  EXPECT_EQ(bare.Count(blue, QRect(10, 50, 40, 1)), 2);
  EXPECT_EQ(bare.At(50, 50), white);
  Drawing reduced;
  reduced.context.view.Zoom = 2;
  Draw(reduced, EntryKind::PlanSquare, Row("Arial", 20, 20, 80, 80));
  EXPECT_EQ(reduced.Count(blue, QRect(5, 20, 20, 1)), 1);
  EXPECT_EQ(reduced.Extent(blue).topLeft(), QPoint(10, 10));
}

TEST(Figure, EllipseAndCircleFillTheirBox) {
  Drawing ellipse;
  const FigureShown shown = Draw(ellipse, EntryKind::Ellipse, Row("F 1", 20, 30, 60, 30));
  EXPECT_EQ(shown.box, QRectF(20, 30, 60, 30));
  const QRect extent = ellipse.Extent(red);
  EXPECT_EQ(extent.left(), 18);  // radius half the side + 1 about (Xmap + radius - 2)
  EXPECT_NEAR(extent.right(), 80, 1);
  EXPECT_NEAR(extent.height(), 32, 1);
  EXPECT_EQ(ellipse.At(49, 45), yellow);
  EXPECT_EQ(ellipse.At(21, 31), white);
  Drawing tall;
  Draw(tall, EntryKind::Ellipse, Row("F 1", 30, 20, 30, 60));
  EXPECT_NEAR(tall.Extent(red).width(), 32, 1);
  EXPECT_NEAR(tall.Extent(red).height(), 63, 1);
  Drawing circle;
  Draw(circle, EntryKind::Circle, Row("F 1", 30, 30, 40, 40));
  EXPECT_EQ(circle.Extent(red).width(), circle.Extent(red).height());
}

TEST(Figure, KeepsItsFormBeyondTheWindow) {
  // The same ellipse, seen whole and with its left half cut off.
  Drawing whole, cut;
  cut.context.view.Left = 50;
  for (const EntryKind kind : {EntryKind::Ellipse, EntryKind::Rectangle, EntryKind::Circle}) {
    Draw(whole, kind, Row("F 1", 10, 20, 70, 50));
    Draw(cut, kind, Row("F 1", 10, 20, 70, 50));
    EXPECT_EQ(whole.image.copy(50, 0, 50, 100), cut.image.copy(0, 0, 50, 100));
  }
  // Far larger than the window: still there, and still round.
  for (const EntryKind kind : {EntryKind::Rectangle, EntryKind::Ellipse, EntryKind::Circle}) {
    Drawing huge;
    huge.context.view = {.Left = 15000, .Top = 15000, .Zoom = 0.125};
    EXPECT_TRUE(Draw(huge, kind, Row("F 1", 0, 0, 30000, 30000)).drawn);
    EXPECT_EQ(huge.Count(yellow), 10000);
  }
  Drawing rim;  // the leftmost point of a circle of 30000 pixels
  rim.context.view = {.Left = -5, .Top = 14995, .Zoom = 0.125};
  Draw(rim, EntryKind::Circle, Row("F 1", 0, 0, 30000, 30000));
  EXPECT_NEAR(rim.Extent(red).left(), 38, 2);
  EXPECT_EQ(rim.At(99, 40), yellow);
  EXPECT_EQ(rim.At(10, 40), white);
  Drawing beside;
  for (const EntryKind kind : {EntryKind::Rectangle, EntryKind::Ellipse, EntryKind::Circle})
    EXPECT_FALSE(Draw(beside, kind, Row("F 1", 200, 20, 30, 30)).drawn);
  EXPECT_FALSE(Draw(beside, EntryKind::Rectangle, Row("F 1", -80, 20, 30, 30)).drawn);
}

TEST(Figure, AngleTurnsCounterClockwiseAboutTheMiddle) {
  // A lying bar about (50, 50), turned by 90 degrees, stands.
  Drawing standing;
  const FigureShown shown = Draw(standing, EntryKind::Rectangle, Row("F 1<90", 20, 40, 60, 20));
  EXPECT_EQ(standing.At(50, 25), yellow);
  EXPECT_EQ(standing.At(25, 50), white);
  EXPECT_TRUE(Shape_Contains(shown.region, {50, 25}));
  EXPECT_FALSE(Shape_Contains(shown.region, {25, 50}));
  // By 30 degrees its right end rises.
  for (const EntryKind kind : {EntryKind::Rectangle, EntryKind::Ellipse}) {
    Drawing tilted;
    Draw(tilted, kind, Row("F 1<30", 20, 40, 60, 20));
    EXPECT_EQ(tilted.At(70, 39), yellow);
    EXPECT_EQ(tilted.At(30, 61), yellow);
    EXPECT_EQ(tilted.At(70, 61), white);
    EXPECT_EQ(tilted.At(30, 39), white);
  }
  Drawing plain, full;
  Draw(plain, EntryKind::Ellipse, Row("F 1", 20, 40, 60, 20));
  Draw(full, EntryKind::Ellipse, Row("F 1<360", 20, 40, 60, 20));
  EXPECT_EQ(plain.image, full.image);
}

TEST(Figure, FreeFiguresAreDrawnFromTheirVertices) {
  const std::vector<QPoint> triangle{{20, 80}, {50, 20}, {80, 80}};
  Drawing straight;
  const FigureShown shown = Draw(straight, EntryKind::FreeFigure, Row("F 1", 20, 20, 60, 60), triangle);
  EXPECT_TRUE(shown.drawn);
  EXPECT_EQ(straight.At(50, 60), yellow);
  EXPECT_EQ(straight.At(50, 20), red);
  EXPECT_TRUE(Shape_Contains(shown.region, {50, 60}));
  EXPECT_FALSE(Shape_Contains(shown.region, {22, 22}));
  Drawing rounded;
  Draw(rounded, EntryKind::FreeFigureRound, Row("F 1", 20, 20, 60, 60), triangle);
  EXPECT_EQ(rounded.At(50, 22), white);
  EXPECT_EQ(rounded.At(50, 60), yellow);
  Drawing turned;  // upside down
  Draw(turned, EntryKind::FreeFigure, Row("F 1<180", 20, 20, 60, 60), triangle);
  EXPECT_EQ(turned.At(30, 24), yellow);
  EXPECT_EQ(turned.At(30, 76), white);
  EXPECT_FALSE(Draw(turned, EntryKind::FreeFigure, Row("F 1", 20, 20, 60, 60), {{3, 3}}).drawn);
  Drawing transparent;
  Draw(transparent, EntryKind::FreeFigure, Row("F-8", 20, 20, 60, 60), triangle);
  EXPECT_EQ(transparent.At(50, 60), blue);  // not-xor on white is the colour itself
}

TEST(Figure, EmptyBoxCanStillBeHit) {
  Drawing drawing;
  const FigureShown shown = Draw(drawing, EntryKind::Rectangle, Row("F 1", 50, 50, 0, 0));
  EXPECT_TRUE(shown.drawn);
  EXPECT_EQ(Shape_Bounds(shown.region), QRectF(50, 50, 3, 3));
  EXPECT_EQ(drawing.Count(white), 10000 - 1);
}

}  // namespace
