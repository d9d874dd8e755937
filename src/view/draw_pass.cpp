#include "view/draw_pass.h"

#include <utility>

#include "state/map_state.h"

namespace {

constexpr double overviewBox = 5;
constexpr double smallestRegion = 3;

}  // namespace

ReferenceStyle Set_Reference_Style() {
  return {static_cast<double>(Map.ReferenceWidth), Map.ReferenceCircle, Map.ReferenceArrow};
}

void DrawPass::Add_Region(const PaintedRow& row, const QRectF& box, RegionShape shape) {
  // A box without extent would never be hit.
  if (QRectF* plain = std::get_if<QRectF>(&shape))
    plain->setSize(
        {plain->width() < 1 ? smallestRegion : plain->width(), plain->height() < 1 ? smallestRegion : plain->height()});
  context.Add_Region(std::move(shape));
  Draw_Marks(row, box);
}

void DrawPass::Draw_Marks(const PaintedRow& row, const QRectF& box) {
  if (row.type.mark == Mark::None || !onMap) return;
  const KeepPen keep(surface);
  surface.pen = {};
  surface.pen.mode = DrawMode::Invert;
  surface.pen.pen = PenStyle::Dot;
  surface.Box(box.adjusted(-2, -2, 2, 2));
  if (row.type.mark == Mark::Last) surface.Box(box.adjusted(-5, -5, 5, 5));
}

void DrawPass::Draw_Overview_Box(const PaintedRow& row) {
  const QRectF box(row.at, QSizeF(overviewBox, overviewBox));
  if (!box.intersects(context.window)) return;
  surface.FilledBox(box, row.colors.VG);
  Add_Region(row, box, box);
}
