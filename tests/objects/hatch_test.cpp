#include "objects/hatch.h"

#include "objects/drawing.h"
#include "support/recording_surface.h"

namespace {

const std::vector<QPointF> square{{10, 10}, {60, 10}, {60, 60}, {10, 60}};

Drawing Hatched(FillStyle pattern, double width, const std::vector<QPointF>& outline = square, double left = 0) {
  Drawing drawing;
  drawing.context.view.Left = left;
  drawing.surface->pen.ForeColor = blue;
  Draw_Hatch(drawing.context, outline, pattern, width);
  return drawing;
}

TEST(Hatch, LinesAreEightPixelsApartAndSlantAsNamed) {
  const Drawing level = Hatched(FillStyle::Horizontal, 1), upright = Hatched(FillStyle::Vertical, 1);
  for (int i = 0; i < 100; ++i) {
    const QRgb wanted = i >= 10 && i < 60 && i % 8 == 0 ? blue : white;
    EXPECT_EQ(level.At(30, i), wanted) << i;
    EXPECT_EQ(upright.At(i, 30), wanted) << i;
  }
  EXPECT_EQ(level.Extent(blue), QRect(QPoint(10, 16), QPoint(59, 56)));
  EXPECT_EQ(Hatched(FillStyle::Horizontal, 3).Count(blue, QRect(30, 10, 1, 50)), 3 * 6);
  const Drawing up = Hatched(FillStyle::Upward, 1), down = Hatched(FillStyle::Downward, 1);
  for (int y = 12; y < 58; ++y) {
    for (int x = 12; x < 58; ++x) {
      EXPECT_EQ(up.At(x, y), (x + y) % 8 == 0 ? blue : white) << x << ' ' << y;
      EXPECT_EQ(down.At(x, y), (x - y) % 8 == 0 ? blue : white) << x << ' ' << y;
    }
  }
  EXPECT_EQ(Hatched(FillStyle::Cross, 1).Count(blue, QRect(20, 20, 32, 32)), 4 * 32 * 2 - 16);
  EXPECT_EQ(Hatched(FillStyle::DiagonalCross, 1).Count(blue, QRect(20, 20, 32, 32)), 4 * 32 * 2 - 32);
  EXPECT_EQ(Hatched(FillStyle::Solid, 1).Count(blue), 0);
}

TEST(Hatch, LeavesHolesAndStaysWithinTheOutline) {
  // Two squares in one outline, the inner one a hole.
  const Drawing ring =
      Hatched(FillStyle::Horizontal, 1,
              {{10, 10}, {90, 10}, {90, 90}, {10, 90}, {10, 10}, {30, 30}, {30, 70}, {70, 70}, {70, 30}, {30, 30}});
  ring.Expect({{20, 48, blue}, {50, 48, white}, {80, 48, blue}});
  // A vertex exactly on a hatch line counts once.
  const Drawing kite = Hatched(FillStyle::Horizontal, 1, {{50, 16}, {90, 48}, {50, 80}, {10, 48}});
  EXPECT_EQ(kite.Count(blue, QRect(0, 48, 100, 1)), 80);
  EXPECT_EQ(kite.Count(blue, QRect(0, 47, 100, 1)), 0);
  EXPECT_EQ(kite.Count(blue, QRect(95, 0, 5, 100)), 0);
}

TEST(Hatch, CrossingsAreInvertedOnce) {
  for (const FillStyle pattern : {FillStyle::Cross, FillStyle::DiagonalCross}) {
    for (const double width : {1.0, 3.0, 20.0}) {
      Drawing copied = Hatched(pattern, width), inverted;
      inverted.surface->pen.ForeColor = blue;
      inverted.surface->pen.mode = DrawMode::NotXor;  // on white the colour itself
      Draw_Hatch(inverted.context, square, pattern, width);
      const QRect inner(14, 14, 40, 40);  // at the rim lines of one direction may reach a pixel further
      EXPECT_EQ(inverted.image.copy(inner), copied.image.copy(inner)) << width;
      EXPECT_EQ(width > 8, copied.Count(blue, inner) == 1600);
    }
  }
}

TEST(Hatch, IsTwoMillimetresApartOnPaper) {
  RecordingSurface paper(QRectF(0, 0, 500, 500), true);
  DrawContext context{paper, {.Left = 3, .Zoom = 1, .whole = false}, paper.Extent()};
  Draw_Hatch(context, square, FillStyle::Vertical, 0.5);
  ASSERT_EQ(paper.calls.size(), 7U);  // 50 pixels are 13.2 mm
  for (size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(paper.calls[i].what, "Line");
    const QPointF from = paper.calls[i].points[0], to = paper.calls[i].points[1];
    EXPECT_NEAR(from.x() - paper.calls[0].points[0].x(), static_cast<double>(i) * 2 * 96 / 25.4, 1e-9);
    EXPECT_EQ(to - from, QPointF(0, 50));
  }
  EXPECT_EQ(paper.calls[0].points[0].y(), 10);
}

TEST(Hatch, LiesFastOnTheMapAndFillsFarOutlines) {
  // The map is scrolled by 3 pixels, the outline with it: every pixel moves along.
  std::vector<QPointF> moved;
  for (const QPointF& point : square) moved.push_back(point - QPointF(3, 0));
  const Drawing before = Hatched(FillStyle::Downward, 1), after = Hatched(FillStyle::Downward, 1, moved, 3);
  EXPECT_EQ(before.image.copy(3, 0, 97, 100), after.image.copy(0, 0, 97, 100));
  const Drawing huge = Hatched(FillStyle::Cross, 1, {{-9000, -9000}, {9000, -9000}, {9000, 9000}, {-9000, 9000}});
  huge.Expect({{0, 0, blue}, {99, 96, blue}, {99, 99, white}});
}

}  // namespace
