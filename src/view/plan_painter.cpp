#include "view/plan_painter.h"

#include <utility>

#include "objects/figure.h"
#include "plansquares/plan_map.h"
#include "plansquares/raster_rows.h"

namespace {

// Neighbours share the pixels of the line between them, at every zoom.
QRectF Square_Box(const ViewTransform& view, const EntryBox& box) {
  return {QPointF(view.X(box.x), view.Y(box.y)), QPointF(view.X(box.x + box.width), view.Y(box.y + box.height))};
}

}  // namespace

PlanPainter::PlanPainter(DrawPass& drawPass) : pass(drawPass) {
  if (!pass.onMap) return;
  Map.PlanLabels.clear();
  Map.lblPLQ.Visible = false;  // until the mouse moves over a square again
}

void PlanPainter::Note(const Recordset& rows, const PaintedRow& row, DrawCounts& counts) {
  const EntryRow entry = Read_Entry(rows);
  ++counts.planRows;
  if (!row.type.hidden) ++counts.planShown;
  if (row.type.Kind() == EntryKind::PlanDesign) {
    const RasterDesign design = Design_Of(entry);
    planMode = static_cast<int>(design.labels) * (row.type.hidden ? -1 : 1);
    labels.Set_Design(design);
    return;
  }
  Square square;
  square.box = Square_Box(pass.context.view, entry_box(entry));
  square.inactive = EntryId::StoredIsInactive(row.id);
  square.label.key = pass.context.key;
  square.label.name = Plan_Name(row.id);
  const QString text = Shown_Text(entry.Eintrag);
  square.label.text = row.type.mark == Mark::None ? square.label.name : text;
  if (square.label.text.isEmpty()) square.label.text = text;
  if (row.type.hidden) square.label.text.clear();
  square.label.offsetX = static_cast<int>(square.box.x());
  square.label.offsetY = static_cast<int>(square.box.y());
  const bool inWindow = square.box.intersects(pass.context.window);
  if (!row.type.hidden) labels.Add_Square(square.label.name, text, square.box, inWindow);
  if (pass.onMap && inWindow) squares.push_back(std::move(square));
}

void PlanPainter::Draw(const Recordset& rows, const PaintedRow& row) {
  EntryRow entry = Read_Entry(rows);
  const ViewTransform& view = pass.context.view;
  const QRectF box = Square_Box(view, entry_box(entry));
  // A wider frame counts like that of a figure.
  const double width = row.frame.width > 1 ? view.Pen(row.frame.width) : view.Zoom > 1.0 ? 1 : 2;
  const QRectF seen = pass.context.window.adjusted(-2 * width, -2 * width, 2 * width, 2 * width);
  const QRectF outline = box.adjusted(0, 0, width, width) & seen;
  if (outline.isEmpty()) return;
  const bool filled = FillCode::IsFill(entry.Schrift);
  if (filled) {
    entry.RA = Frame_Switched(entry.RA, false);
    Draw_Figure(pass.context, entry, row.type.Kind(), {}, row.colors);
  }
  if (!filled || row.frame.framed) {
    const KeepPen keep(pass.surface);
    pass.surface.pen = {};
    pass.surface.pen.ForeColor = row.colors.RA;
    pass.surface.pen.DrawWidth = width;
    pass.surface.Box(outline);
  }
  pass.Draw_Marks(row, box);
}

void PlanPainter::Finish() {
  labels.Print(pass.context);
  if (pass.onMap) Add_Regions();
}

// A square that was hidden by itself keeps its place: it can be found there and shown again.
void PlanPainter::Add_Regions() {
  const bool active = Raster_Active() && planMode >= 0;
  for (Square& square : squares) {
    const bool hidden = square.label.text.isEmpty();
    RegionSet* const regions = pass.context.regions;
    if (active && regions && !square.inactive) regions->Add(square.box, square.label.key, planRegion);
    if (Map.PlanLabels.empty() && !hidden && !Map.lblPLQ.Visible) Map.lblPLQ.Text = square.label.text;
    if (!hidden || active) Map.PlanLabels.push_back(std::move(square.label));
  }
}
