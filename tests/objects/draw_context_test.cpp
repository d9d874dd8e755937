#include "objects/draw_context.h"

#include "objects/drawing.h"

TEST(ViewTransform, WholePixelsWithHalvesToEvenAndTurnsAsSeen) {
  const ViewTransform view{.Left = 100, .Top = -50, .Zoom = 2};
  const std::pair<double, double> cases[] = {{103, 2}, {105, 2}, {97, -2}, {95, -2}, {94, -3}, {32767, 16334}};
  for (const auto& [map, window] : cases) EXPECT_EQ(view.X(map), window) << map;
  EXPECT_EQ(view.Y(-49), 0);  // 0.5
  ViewTransform paper = view;
  paper.whole = false;
  EXPECT_EQ(paper.X(103), 1.5);
  EXPECT_EQ(view.Pen(1), 1);  // never thinner than a pixel
  EXPECT_EQ(view.Pen(7), 4);
  EXPECT_LT((Turned({60, 50}, {50, 50}, 90) - QPointF(50, 40)).manhattanLength(), 1e-9);
}
