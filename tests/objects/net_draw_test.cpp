#include "objects/net_draw.h"

#include "coordinates/net_build.h"
#include "objects/net_print.h"
#include "support/nets.h"
#include "support/pixels.h"

namespace {

// Kilometre lines at x = 50, 150, 250 and y = 30, 130.
CoordinateState Plain_Net() {
  CoordinateState state = Utm_Net({300, 200}, {50, 130}, 100);
  state.GridVG = 12;
  Build_Metric_Net(state);
  return state;
}

// One line that is no line of a net.
CoordinateState One_Line(const std::vector<NetPt>& line) {
  CoordinateState state = Plain_Net();
  state.NetLLines.clear();
  state.NetLLabels.clear();
  state.NetBLabels.resize(1);
  state.NetBLabels[0].Text.clear();
  state.NetBLines = {line};
  return state;
}

QImage Drawn(const CoordinateState& state, const ViewTransform& view, int width = 300, int height = 200) {
  QImage image = Make_Canvas(width, height);
  const auto surface = Make_Surface(image);
  DrawContext context{*surface, view, QRectF(0, 0, width, height)};
  Draw_Net(context, state);
  return image;
}

bool Is_Red(QRgb color) { return color == red; }
void Expect_Lines(const QImage& image, const std::vector<QPoint>& on, const std::vector<QPoint>& beside) {
  for (const QPoint at : on) Expect_Pixels(image, {{at.x(), at.y(), red}});
  for (const QPoint at : beside) Expect_Pixels(image, {{at.x(), at.y(), white}});
}
int Red_In(const QImage& image, const QRect& area) { return Count_Pixels(image, area, Is_Red); }

class NetDrawing : public FluraxTest {};

}  // namespace

TEST_F(NetDrawing, LinesAndLabelsByZoomAndScroll) {
  const CoordinateState state = Plain_Net();
  const QImage whole = Drawn(state, {});
  Expect_Lines(whole, {{50, 100}, {150, 199}, {200, 30}, {299, 130}}, {{100, 100}, {200, 31}});
  // Labels at the left and upper edge; their line begins behind them.
  EXPECT_GT(Count_Pixels(whole, {2, 124, 60, 12}, Is_Ink), 100);
  EXPECT_GT(Count_Pixels(whole, {120, 2, 60, 12}, Is_Ink), 100);
  // Twice as large from (100, 100) on: x = 150 comes to 100, y = 130 to 60; its label stays at the edge.
  const QImage large = Drawn(state, {.Left = 100, .Top = 100, .Zoom = 0.5});
  Expect_Lines(large, {{100, 150}, {200, 60}}, {{200, 61}});
  EXPECT_GT(Count_Pixels(large, {2, 54, 60, 12}, Is_Ink), 100);
  // Where lines come too close their labels are left out, not printed over each other.
  const QImage small = Drawn(state, {.Zoom = 10}, 30, 20);
  EXPECT_EQ(small.pixel(5, 19) | black, red);
}

TEST_F(NetDrawing, WidthStyleAndGround) {
  CoordinateState state = Plain_Net();
  state.GridLnBreite = 12;  // 10 at most
  state.NetTransp = false;
  state.GridHG = 14;
  const QImage wide = Drawn(state, {});
  int reds = 0;
  for (int x = 80; x < 220; ++x) reds += Is_Red(wide.pixel(x, 180) | black);
  EXPECT_EQ(reds, 10);
  EXPECT_GT(Count_Pixels(wide, {2, 124, 60, 12}, [](QRgb color) { return color == yellow; }), 100);
  state.GridLnBreite = 1;
  state.GridLnStil = 1;
  const int dashed = Red_In(Drawn(state, {}), {150, 60, 1, 60});
  EXPECT_GT(dashed, 10);
  EXPECT_LT(dashed, 55);
  state.NetLabelEvery = 0;
  EXPECT_EQ(Red_In(Drawn(state, {}), {2, 2, 40, 12}), 0);
}

// Curves begin with two points at one place, and reduced ones may have many.
TEST_F(NetDrawing, CurvesHaveTheirLabelGapsAndSlants) {
  CoordinateState state = Plain_Net();
  state.NetLLines = {{{150, 0}, {150, 0}, {150, 2}, {151, 4}, {152, 200}}};
  state.NetLLabels = {state.NetLLabels[1]};
  for (const double zoom : {1.0, 4.0}) {
    const QImage image = Drawn(state, {.Zoom = zoom});
    EXPECT_GT(Count_Pixels(image, {static_cast<int>(150 / zoom) - 30, 2, 60, 12}, Is_Ink), 100) << zoom;
  }
  const std::vector<NetPt> line{{0, 20},   {50, 20},   {100, 20},       {netGap, netGap},
                                {150, 60}, {200, 110}, {netGap, netGap}};
  const QImage image = Drawn(One_Line(line), {});
  Expect_Lines(image, {{0, 20}, {99, 20}, {150, 60}, {175, 85}}, {{125, 40}, {202, 112}});
  EXPECT_EQ(Red_In(image, image.rect()), 150);
}

// Zoomed out, close samples are drawn several at a time; kinks and gaps stay.
TEST_F(NetDrawing, ReducedCurvesKeepTheirShape) {
  std::vector<NetPt> line;
  for (int x = 0; x <= 1200; x += 5) {
    const int y = x < 400 ? 100 : 100 + x - 400;  // a bend of 45 degrees at 400
    const bool gap = x > 600 && x < 700;
    line.push_back(gap ? NetPt{netGap, netGap} : NetPt{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)});
  }
  CoordinateState state = One_Line(line);
  for (const float step : {5.0F, -5.0F}) {  // from a file it may run either way
    state.NetB[1].Step = step;
    Expect_Lines(Drawn(state, {.Zoom = 4}), {{50, 25}, {99, 25}, {110, 35}, {148, 73}, {180, 105}, {220, 145}},
                 {{160, 85}});
  }
}

TEST_F(NetDrawing, SheetsCarryLabelsInTheirMargins) {
  const CoordinateState state = Plain_Net();
  const auto printed = [&](const QMarginsF& margins) {
    QImage image = Make_Canvas(400, 300);
    const auto surface = Make_Surface(image);
    DrawContext context{*surface, {.originX = 50, .originY = 50}, QRectF(0, 0, 400, 300)};
    Print_Net(context, state, QRectF(50, 50, 240, 200), margins);
    return image;
  };
  const QImage sheet = printed({40, 40, 40, 40});
  // The line at x = 250 lies beyond the printed area, its label with it.
  Expect_Lines(sheet, {{100, 60}, {200, 240}, {280, 180}}, {{300, 130}});
  const auto extent = [&](const QRect& area) {
    return Extent_Of(sheet.copy(area), [](QRgb color) { return color != white; });
  };
  const QRect top = extent({70, 0, 60, 50}), left = extent({0, 150, 50, 70}), right = extent({291, 150, 109, 60});
  EXPECT_GT(top.width(), 3 * top.height());
  EXPECT_NEAR(top.center().x(), 30, 4);
  EXPECT_GT(left.height(), 3 * left.width());
  EXPECT_NEAR(left.center().y(), 30, 4);
  EXPECT_GT(right.height(), 3 * right.width());
  EXPECT_GT(Count_Pixels(sheet, {50, 265, 200, 30}, Is_Ink), 100);  // what net it is
  const QImage narrow = printed({});
  EXPECT_EQ(Extent_Of(narrow, Is_Ink), QRect(50, 50, 240, 200));
}
