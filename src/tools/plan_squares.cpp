#include "tools/plan_squares.h"

#include <algorithm>
#include <memory>

#include "hand/activation.h"
#include "plansquares/plan_labels.h"
#include "plansquares/plan_map.h"
#include "plansquares/raster_rows.h"
#include "plansquares/raster_texts.h"
#include "platform/for_now.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "tools/map_tool.h"
#include "view/overlay.h"
#include "view/redraw.h"

namespace {

std::optional<RasterPreview> preview;
const OnReset fresh(preview);

}  // namespace

// Preview ------------------------------------------------------------------------------------------------------------

void Show_Raster_Preview(std::optional<RasterPreview> wanted) {
  if (!preview && !wanted) return;
  preview = std::move(wanted);
  Map_Redraw();
}

bool Raster_Preview_Shown() { return preview.has_value(); }

namespace {

void Draw_Preview(DrawContext& context) {
  if (!preview) return;
  const RasterPlan& plan = preview->plan;
  Surface& surface = context.surface;
  const ViewTransform& view = context.view;
  const double width = view.Zoom > 1 ? 1 : 2;
  const double top = view.Y(plan.edgeY.front()), bottom = view.Y(plan.edgeY.back());
  const double left = view.X(plan.edgeX.front()), right = view.X(plan.edgeX.back());
  // Where the lines of the squares will lie.
  const QRgb color = Color_Of(preview->design.VG);
  for (const int x : plan.edgeX)
    surface.FilledBox(QRectF(view.X(x), top, width, bottom - top + width) & context.window, color);
  for (const int y : plan.edgeY)
    surface.FilledBox(QRectF(left, view.Y(y), right - left + width, width) & context.window, color);
  if (preview->design.field == RasterField::Free) return;
  PlanLabels labels;
  labels.Set_Design(preview->design);
  for (const PlanSquare& square : plan.squares) {
    const QRectF box(
        QPointF(view.X(square.box.x()), view.Y(square.box.y())),
        QPointF(view.X(square.box.x() + square.box.width()), view.Y(square.box.y() + square.box.height())));
    labels.Add_Square(square.name, square.name, box, box.intersects(context.window));
  }
  labels.Print(context);
}

const Overlay shownPreview(OverlayLayer::Preview, Draw_Preview);

}  // namespace

// The field on the map -----------------------------------------------------------------------------------------------

namespace {

const QString toolName = QStringLiteral("Raster");

class FieldTool final : public MapTool {
 public:
  FieldTool(std::function<void(QRect)> heard, std::function<void()> gone)
      : taken(std::move(heard)), dropped(std::move(gone)) {}
  QString Name() const override { return toolName; }
  QString Status() const override { return raster_texts::dragField; }
  void Press(QPoint window, MouseKeys) override {
    from = to = Map_At(window);
    dragging = true;
  }
  void Move(QPoint window, bool leftDown) override {
    if (dragging && leftDown) to = Map_At(window);
  }
  void Release(QPoint window) override {
    if (!dragging) return;
    dragging = false;
    to = Map_At(window);
    const QRect field(QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
                      QSize(std::abs(to.x() - from.x()), std::abs(to.y() - from.y())));
    if (field.isEmpty()) return;  // a click is no field: the drag is still to come
    const auto heard = taken;
    End_Map_Tool();
    heard(field);
  }
  OverPaint Paint_Over() const override {
    QPainterPath path;
    if (dragging)
      path.addRect(QRectF(QPointF(Window_X(from.x()), Window_Y(from.y())), QPointF(Window_X(to.x()), Window_Y(to.y())))
                       .normalized());
    return Dashed(path);
  }
  void Dropped() override {
    if (dropped) dropped();
  }

 private:
  static QPoint Map_At(QPoint window) {
    return {std::clamp(Map_X(window.x()), 0, MapWidthPx), std::clamp(Map_Y(window.y()), 0, MapHeightPx)};
  }
  std::function<void(QRect)> taken;
  std::function<void()> dropped;
  QPoint from, to;  // map pixels
  bool dragging = false;
};

}  // namespace

void Take_Bereich(std::function<void(QRect)> taken, std::function<void()> dropped) {
  Use_Map_Tool(std::make_unique<FieldTool>(std::move(taken), std::move(dropped)));
}

// Switches -----------------------------------------------------------------------------------------------------------

void Toggle_Raster_Active() {
  Set_Raster_Active(!Raster_Active());
  Map_Redraw();
}

void Toggle_Raster_Visible() {
  const bool show = !frmMDI.RasterShown;
  if (show) Set_Raster_Active(true);
  Show_Raster(show);
}

void mnuRasterDelete_Click() { Delete_Raster(); }

namespace {

// Writes the raster; its key if it is a free square, else 1. 0 if nothing was written.
qint64 Write_Raster(const RasterPreview& wanted) {
  // Its rows are the first thing the redraw at the end shall find active, without the preview that they replace.
  const ForNow withoutPreview(preview, std::optional<RasterPreview>());
  const ForNow active(frmMDI.RasterActive, true);
  frmMDI.HasPlanSquares = true;
  const bool free = wanted.design.field == RasterField::Free;
  const qint64 key = free                                      ? Take_Free_Square(wanted.design, wanted.plan)
                     : Take_Raster(wanted.design, wanted.plan) ? 1
                                                               : 0;
  // A redraw on the way, without squares, has switched it off.
  if (key != 0 && !Raster_Active()) Set_Raster_Active(true), Map_Redraw();
  return key;
}

}  // namespace

bool Take_Raster_On_Map(const RasterPreview& wanted) {
  if (Entry_In_Hand() && !End_Entry()) return false;
  const qint64 key = Write_Raster(wanted);
  if (key == 0) {
    Map_Redraw();
    return false;
  }
  preview.reset();
  Set_Raster_Active(true);
  if (wanted.design.field == RasterField::Free) Take_Entry(QString::number(key));
  return true;
}

void Connect_Plan_Squares() {
  static int closed = 0;
  Reconnect(events.MapClosed, closed, [] {
    Show_Raster_Preview({});
    Set_Raster_Active(false);
  });
}
