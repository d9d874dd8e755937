#include "tools/position_mark.h"

#include "state/map_state.h"
#include "view/overlay.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

void Draw_Position_Mark(DrawContext& context) {
  if (!Map.PositionMark) return;
  constexpr double radius = 9, arm = 16;
  const QPointF at = context.view.Point(*Map.PositionMark);
  const KeepPen keep(context.surface);
  context.surface.pen = {};
  for (const auto& [color, width] : {std::pair(QBColor(15), 3.0), std::pair(QBColor(12), 1.0)}) {
    context.surface.pen.ForeColor = color;
    context.surface.pen.DrawWidth = width;
    context.surface.Ellipse(QRectF(at.x() - radius, at.y() - radius, 2 * radius + 1, 2 * radius + 1));
    context.surface.Line(at - QPointF(arm, 0), at + QPointF(arm + 1, 0));
    context.surface.Line(at - QPointF(0, arm), at + QPointF(0, arm + 1));
  }
}

const Overlay mark(OverlayLayer::Mark, Draw_Position_Mark);

}  // namespace

void Show_Place(QPoint map) {
  Map.PositionMark = map;
  if (Map.HScroller.Visible || Map.VScroller.Visible)
    ScrollMap(map.x(), map.y());
  else
    Map_Redraw();
}

void Hide_Place() {
  if (!Map.PositionMark) return;
  Map.PositionMark.reset();
  Map_Redraw();
}
