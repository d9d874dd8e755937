#include "objects/clip.h"

#include "objects/bezier.h"
#include "objects/drawing.h"

namespace {

using Points = std::vector<QPointF>;

Points Clipped(const Points& points, const QRectF& area, bool rounded = false) {
  Points out;
  Clip_Outline(points, area, rounded, out);
  return out;
}

TEST(ClipSegment, MeetsAnEdgeOrNot) {
  const std::tuple<QLineF, QLineF, int, QPointF> cases[] = {
      {{0, 0, 10, 10}, {5, -5, 5, 20}, -1, {5, 5}},  // through an upright edge
      {{0, 0, 10, 5}, {-5, 4, 20, 4}, -1, {8, 4}},   // through a level edge
      {{10, 5, 0, 0}, {-5, 4, 20, 4}, -1, {8, 4}},   // the same backward
      {{0, 0, 5, 0}, {5, -5, 5, 5}, -1, {5, 0}},     // ends on it
      {{0, 0, 4, 0}, {5, -5, 5, 5}, 0, {}},          // ends before it
      {{0, 6, 10, 6}, {5, -5, 5, 5}, 0, {}},         // passes the edge's end
      {{0, 0, 10, 0}, {0, 3, 10, 3}, 0, {}},         // parallel
      {{0, 0, 0, 0}, {5, -5, 5, 5}, 0, {}},          // no segment
  };
  for (const auto& [line, edge, result, cross] : cases) {
    double x = 0, y = 0;
    EXPECT_EQ(
        Clip_Segment(line.x1(), line.y1(), line.x2(), line.y2(), edge.x1(), edge.y1(), edge.x2(), edge.y2(), x, y),
        result);
    EXPECT_EQ(QPointF(x, y), cross);
  }
}

TEST(ClipOutline, KeepsFewOfManyVertices) {
  // A circle of 10,000 vertices that only grazes the window, in whole map pixels.
  std::vector<QPoint> circle;
  for (int i = 0; i < 10000; ++i) {
    const double t = i * 2 * 3.14159265358979 / 10000;
    circle.emplace_back(qRound(9000 * std::cos(t)), qRound(9000 * std::sin(t)));
  }
  Points kept;
  Clip_Outline(circle, QRectF(8900, -50, 200, 100), false, kept);
  EXPECT_TRUE(kept.size() > 10 && kept.size() < 30) << kept.size();
  // A vertex on the edge counts as inside.
  EXPECT_EQ(Clipped({{0, 0}, {-5, 50}, {-2, 200}}, {0, 0, 100, 100}).size(), 3U);
}

TEST(CutFar, AddsCornersOfTheLimit) {
  const QRectF limit(0, 0, 100, 100);
  Points inside{{1, 1}, {50, 1}, {50, 50}};
  Cut_Far(inside, limit, true);
  EXPECT_EQ(inside.size(), 3U);
  Points around{{-1000, -1000}, {5000, -1000}, {5000, 5000}, {-1000, 5000}};
  Cut_Far(around, limit, true);
  ASSERT_EQ(around.size(), 4U);
  for (const QPointF corner : {limit.topLeft(), limit.topRight(), limit.bottomLeft(), limit.bottomRight()})
    EXPECT_EQ(std::count(around.begin(), around.end(), corner), 1);
  // An open line is cut at both ends and not closed.
  Points line{{-100, 50}, {200, 50}};
  Cut_Far(line, limit, false);
  EXPECT_EQ(line, (Points{{0, 50}, {100, 50}}));
  Points away{{-100, 50}, {-200, 90}};
  Cut_Far(away, limit, true);
  EXPECT_TRUE(away.empty());
}

QImage Drawn(const Points& points, bool closed, bool rounded, double width) {
  Drawing drawing(160, 120);
  drawing.surface->pen = {
      .ForeColor = blue, .FillColor = yellow, .DrawWidth = width, .fill = closed ? FillStyle::Solid : FillStyle::None};
  Points curve;
  if (rounded) {
    closed ? Bezier_Points(points, curve) : Bezier_Points_Open(points, curve);
    drawing.surface->Bezier(curve, closed);
  } else {
    closed ? drawing.surface->Polygon(points) : drawing.surface->Polyline(points);
  }
  return drawing.image.copy();
}

// What is drawn of the shortened outline is, inside the window, to the pixel what is drawn of the whole one.
TEST(ClipOutline, NothingVisibleChanges) {
  std::mt19937 random(4711);
  int shortened = 0;
  for (int round = 0; round < 1200; ++round) {
    const bool closed = round % 4 < 2, rounded = round % 8 < 4;
    const int reach = round % 3 == 0 ? 200 : round % 3 == 1 ? 800 : 3000;
    std::uniform_int_distribution<int> place(-reach, reach), count(2, 40);
    Points points;
    QPointF walk(place(random), place(random));
    const bool walking = round % 2 == 0;  // small steps make long runs outside, leaps make many crossings
    for (int i = count(random); i >= 0; --i) {
      walk = walking ? walk + QPointF(place(random) / 5, place(random) / 5) : QPointF(place(random), place(random));
      points.push_back(walk);
    }
    const double width = round % 5 == 0 ? 7 : 1;
    const double margin = Clip_Margin(width);
    const Points kept = Clipped(points, QRectF(0, 0, 160, 120).adjusted(-margin, -margin, margin, margin), rounded);
    shortened += kept.size() < points.size();
    ASSERT_EQ(Drawn(kept, closed, rounded, width), Drawn(points, closed, rounded, width)) << "round " << round;
  }
  EXPECT_GT(shortened, 400);
}

}  // namespace
