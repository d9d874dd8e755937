#include "objects/reference_line.h"

#include "objects/drawing.h"

namespace {

const QRectF box(40, 40, 20, 10);

TEST(ReferenceLine, LeavesTheBoxByEightZones) {
  const std::pair<QPointF, QPointF> cases[] = {{{10, 10}, {40, 40}}, {{50, 10}, {50, 40}}, {{90, 10}, {60, 40}},
                                               {{10, 45}, {40, 45}}, {{90, 45}, {60, 45}}, {{10, 90}, {40, 50}},
                                               {{55, 90}, {50, 50}}, {{90, 90}, {60, 50}}};
  for (const auto& [foot, start] : cases) EXPECT_EQ(Reference_Start(box, foot), start);
  for (const QPointF inside : {QPointF(50, 45), QPointF(40, 40), QPointF(60, 50)})
    EXPECT_FALSE(Reference_Start(box, inside).has_value());
  Drawing drawing;
  Draw_Reference(drawing.context, {50, 45}, box, {.color = red});
  EXPECT_EQ(drawing.Count(white), 10000);
}

TEST(ReferenceLine, ArrowEndsInATip) {
  const auto arrow = Arrow_Polygon({0, 0}, {100, 0}, 4, 20, 10);
  const std::array<QPointF, 7> wanted{QPointF(0, 2), {80, 1}, {80, 5}, {100, 0}, {80, -5}, {80, -1}, {0, -2}};
  EXPECT_EQ(arrow, wanted);
  EXPECT_EQ(Arrow_Polygon({0, 0}, {5, 0}, 4, 20, 10)[2], QPointF(0, 5));  // no longer than the line
  Drawing drawing;
  Draw_Reference(drawing.context, {50, 95}, box,
                 {.kind = EntryKind::TextArrow, .color = red, .style = {.arrow = 12}, .textHeight = 24});
  drawing.Expect({{50, 94, red}, {50, 30, white}});
  EXPECT_GE(drawing.Count(red, QRect(0, 84, 100, 1)), 11);  // the head's base
  EXPECT_LE(drawing.Count(red, QRect(0, 75, 100, 1)), 3);   // the shaft
}

TEST(ReferenceLine, PlainLineIsTwiceItsWidthAndACircleLeavesTheFootFree) {
  for (const auto& [zoom, width] : {std::pair(1, 4), {4, 1}}) {
    Drawing drawing;
    drawing.context.view.Zoom = zoom;
    Draw_Reference(drawing.context, {50, 90}, box, {.kind = EntryKind::TextLine, .color = red, .style = {.width = 2}});
    EXPECT_EQ(drawing.Count(red, QRect(30, 70, 40, 1)), width) << zoom;
  }
  Drawing drawing;
  Draw_Reference(drawing.context, {50, 80}, box,
                 {.kind = EntryKind::TextCircle, .color = red, .style = {.width = 0.5, .circle = 6}});
  drawing.Expect({{50, 80, white}, {50, 78, white}, {44, 80, red}, {56, 80, red}, {50, 86, red}, {50, 60, red}});
}

TEST(ReferenceLine, KindSevenRunsFromItsPosition) {
  Drawing drawing;
  Draw_Reference(drawing.context, {10, 40}, QRectF(40, 40, 5, 5),
                 {.kind = EntryKind::Reference, .color = blue, .style = {.width = 0.5}});
  EXPECT_EQ(drawing.Count(blue, QRect(0, 40, 100, 1)), 30);
  const QPolygonF flat = Reference_Strip({40, 40}, {10, 30}), steep = Reference_Strip({40, 40}, {30, 10});
  EXPECT_EQ(flat, QPolygonF({{40, 35}, {40, 45}, {10, 35}, {10, 25}, {40, 35}}));
  EXPECT_EQ(steep, QPolygonF({{45, 40}, {35, 40}, {25, 10}, {35, 10}, {45, 40}}));
}

TEST(ReferenceLine, FootPointCanBeGripped) {
  Drawing drawing;
  drawing.context.view.Zoom = 0.5;
  Draw_Reference(drawing.context, {50, 80}, box, {});
  ASSERT_EQ(drawing.regions.Count(), 1);
  EXPECT_EQ(drawing.regions.Row(1).kind, footRegion);
  EXPECT_TRUE(drawing.regions.AnyAt({59, 80}));  // 5 / Zoom
  EXPECT_FALSE(drawing.regions.AnyAt({58, 88}));
  drawing.context.inactive = true;
  Draw_Reference(drawing.context, {50, 80}, box, {});
  EXPECT_EQ(drawing.regions.Count(), 1);
}

}  // namespace
