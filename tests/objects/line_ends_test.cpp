#include "objects/line_ends.h"

#include "objects/drawing.h"

namespace {

constexpr double mm = pixelsPerMm;

LineEnds Ends(LineEnds::Shape shape, double length, double width) {
  LineEnds ends;
  ends.shape = shape;
  ends.filled = ends.atEnd = true;
  ends.lengthMm = length;
  ends.widthMm = width;
  return ends;
}

void Expect_Point(QPointF got, QPointF wanted) {
  EXPECT_NEAR(got.x(), wanted.x(), 1e-9);
  EXPECT_NEAR(got.y(), wanted.y(), 1e-9);
}

TEST(EndMark, ArrowLiesAlongTheLineBoxAndCircleAboutItsEnd) {
  // Length 5 mm, width 3 mm; the tip is the end of the line.
  const EndMark right = End_Mark(Ends(LineEnds::Shape::Arrow, 5, 3), {100, 50}, {0, 50}, 1);
  Expect_Point(right.arrow[0], {100, 50});
  Expect_Point(right.arrow[1], {100 - 5 * mm, 50 + 1.5 * mm});
  Expect_Point(right.arrow[2], {100 - 5 * mm, 50 - 1.5 * mm});
  // Steep 3-4-5 line at zoom 2: everything half as large.
  const EndMark slanted = End_Mark(Ends(LineEnds::Shape::Arrow, 5, 2.5), {30, 40}, {0, 0}, 2);
  const QPointF base(30 - 0.6 * 2.5 * mm, 40 - 0.8 * 2.5 * mm);
  Expect_Point(slanted.arrow[1], base + QPointF(-0.8, 0.6) * 0.625 * mm);
  Expect_Point(slanted.arrow[2], base - QPointF(-0.8, 0.6) * 0.625 * mm);
  const EndMark box = End_Mark(Ends(LineEnds::Shape::Rectangle, 4, 2), {10, 20}, {0, 0}, 1);
  Expect_Point(box.box.topLeft(), {10 - 2 * mm, 20 - mm});
  Expect_Point(box.box.bottomRight(), {10 + 2 * mm, 20 + mm});
  const EndMark least = End_Mark(Ends(LineEnds::Shape::Circle, 0.2, 0), {10, 20}, {0, 0}, 1);
  Expect_Point(least.box.bottomRight() - least.box.topLeft(), {mm, mm});
}

TEST(LineEndsDrawing, FlagsSayWhere) {
  // 4 mm = 15 pixels. The line bends upward at (60, 50).
  const std::vector<QPoint> line{{20, 50}, {60, 50}, {60, 50}, {60, 10}};
  const std::tuple<bool, bool, bool, QRgb, QRgb, QRgb> cases[] = {
      {true, false, false, blue, white, white}, {false, true, false, white, white, blue},
      {true, true, false, blue, white, blue},   {false, true, true, white, blue, blue},
      {true, false, true, blue, blue, white},   {false, false, true, white, white, white}};
  for (const auto& [start, end, partial, atStart, atBend, atEnd] : cases) {
    Drawing drawing;
    LineEnds ends = Ends(LineEnds::Shape::Rectangle, 4, 4);
    ends.atStart = start, ends.atEnd = end, ends.partial = partial;
    Draw_Line_Ends(drawing.context, ends, line, false, blue, 1);
    drawing.Expect({{24, 54, atStart}, {64, 54, atBend}, {56, 6, atEnd}});
  }
}

TEST(LineEndsDrawing, ShapesAndFilling) {
  const std::vector<QPoint> line{{10, 50}, {80, 50}};
  LineEnds ends = Ends(LineEnds::Shape::Arrow, 8, 8);  // 30 pixels long, 15 to either side
  Drawing arrow, hollow, circle, zoomed;
  Draw_Line_Ends(arrow.context, ends, line, false, blue, 1);
  arrow.Expect({{55, 60, blue}, {75, 60, white}, {78, 50, blue}});  // wide at the base, slim near the tip
  EXPECT_EQ(arrow.Extent(blue).right(), 80);
  ends.filled = false;
  Draw_Line_Ends(hollow.context, ends, line, false, blue, 1);
  hollow.Expect({{55, 55, white}, {50, 55, blue}});  // only its base
  ends = Ends(LineEnds::Shape::Circle, 8, 4);
  Draw_Line_Ends(circle.context, ends, line, false, blue, 1);
  const QRect extent = circle.Extent(blue);
  EXPECT_EQ(extent.center(), QPoint(80, 50));
  EXPECT_NEAR(extent.width(), 31, 1);
  EXPECT_NEAR(extent.height(), 16, 1);
  EXPECT_EQ(circle.At(66, 44), white);  // no box: its corner is free
  zoomed.context.view.Zoom = 2;
  Draw_Line_Ends(zoomed.context, Ends(LineEnds::Shape::Rectangle, 8, 8), line, false, blue, 1);
  EXPECT_NEAR(zoomed.Extent(blue).width(), 16, 1);
  EXPECT_EQ(zoomed.surface->pen.fill, FillStyle::None);  // the pen is as it was
}

}  // namespace
