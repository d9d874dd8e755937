#include "objects/draw_context.h"

#include "objects/drawing.h"

namespace {

TEST(ViewTransform, WholePixelsWithHalvesToEven) {
  const ViewTransform view{.Left = 100, .Top = -50, .Zoom = 2};
  EXPECT_EQ(view.X(103), 2);  // 1.5
  EXPECT_EQ(view.X(105), 2);  // 2.5
  EXPECT_EQ(view.X(97), -2);  // -1.5
  EXPECT_EQ(view.X(95), -2);  // -2.5
  EXPECT_EQ(view.X(94), -3);
  EXPECT_EQ(view.Y(-49), 0);        // 0.5
  EXPECT_EQ(view.X(32767), 16334);  // 16333.5
  ViewTransform paper = view;
  paper.whole = false;
  EXPECT_EQ(paper.X(103), 1.5);
  EXPECT_EQ(view.Pen(1), 1);  // never thinner than a pixel
  EXPECT_EQ(view.Pen(7), 4);
}

TEST(ViewTransform, TurnsCounterClockwiseAsSeen) {
  const QPointF up = Turned({60, 50}, {50, 50}, 90);
  EXPECT_NEAR(up.x(), 50, 1e-9);
  EXPECT_NEAR(up.y(), 40, 1e-9);
}

}  // namespace
