#include "objects/hatch.h"

#include "objects/drawing.h"

namespace {

const std::vector<QPointF> square{{10, 10}, {60, 10}, {60, 60}, {10, 60}};

Drawing Hatched(FillStyle pattern, double width, const std::vector<QPointF>& outline = square, double left = 0) {
  Drawing drawing;
  drawing.context.view.Left = left;
  drawing.surface->pen.ForeColor = blue;
  Draw_Hatch(drawing.context, outline, pattern, width);
  return drawing;
}

TEST(Hatch, LinesAreEightPixelsApartWithGapsBetween) {
  const Drawing level = Hatched(FillStyle::Horizontal, 1);
  for (int y = 0; y < 100; ++y) EXPECT_EQ(level.At(30, y), y >= 10 && y < 60 && y % 8 == 0 ? blue : white) << y;
  EXPECT_EQ(level.Extent(blue), QRect(QPoint(10, 16), QPoint(59, 56)));
  const Drawing upright = Hatched(FillStyle::Vertical, 1);
  for (int x = 0; x < 100; ++x) EXPECT_EQ(upright.At(x, 30), x >= 10 && x < 60 && x % 8 == 0 ? blue : white) << x;
  const Drawing wide = Hatched(FillStyle::Horizontal, 3);
  EXPECT_EQ(wide.Count(blue, QRect(30, 10, 1, 50)), 3 * 6);
}

TEST(Hatch, SlantsAsNamed) {
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
  EXPECT_EQ(ring.At(20, 48), blue);
  EXPECT_EQ(ring.At(50, 48), white);
  EXPECT_EQ(ring.At(80, 48), blue);
  // A vertex exactly on a hatch line counts once.
  const Drawing kite = Hatched(FillStyle::Horizontal, 1, {{50, 16}, {90, 48}, {50, 80}, {10, 48}});
  EXPECT_EQ(kite.Count(blue, QRect(0, 48, 100, 1)), 80);
  EXPECT_EQ(kite.Count(blue, QRect(0, 47, 100, 1)), 0);
  EXPECT_EQ(kite.Count(blue, QRect(95, 0, 5, 100)), 0);
}

TEST(Hatch, LiesFastOnTheMap) {
  // The map is scrolled by 3 pixels, the outline with it: every pixel moves along.
  std::vector<QPointF> moved;
  for (const QPointF& point : square) moved.push_back(point - QPointF(3, 0));
  const Drawing before = Hatched(FillStyle::Downward, 1), after = Hatched(FillStyle::Downward, 1, moved, 3);
  EXPECT_EQ(before.image.copy(3, 0, 97, 100), after.image.copy(0, 0, 97, 100));
}

TEST(Hatch, FarOutlinesCostNoMoreThanTheWindow) {
  const Drawing huge = Hatched(FillStyle::Cross, 1, {{-9000, -9000}, {9000, -9000}, {9000, 9000}, {-9000, 9000}});
  EXPECT_EQ(huge.At(0, 0), blue);
  EXPECT_EQ(huge.At(99, 96), blue);
  EXPECT_EQ(huge.At(99, 99), white);
}

}  // namespace
