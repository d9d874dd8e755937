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

// On paper small ticks stand out where the lines of squares meet, from 1 mm before the place to 3 mm behind it.
void Draw_Ticks(Surface& surface, const QRectF& box, QRgb color) {
  const KeepPen keep(surface);
  surface.pen = {};
  surface.pen.ForeColor = color;
  constexpr double before = 1.0 * pixelsPerMm, behind = 3.0 * pixelsPerMm;
  for (const QPointF& at : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()}) {
    surface.Line(at - QPointF(before, 0), at + QPointF(behind, 0));
    surface.Line(at - QPointF(0, before), at + QPointF(0, behind));
  }
}

}  // namespace

// The design stands behind its squares, at the end of most tables; a hidden one hides them all. Asked once a pass.
int PlanPainter::Plan_Mode() {
  if (planMode) return *planMode;
  planMode = 0;
  if (!rsEntries || rsEntries->RecordCount() < 2) return 0;
  const KeepCurrentRow keep;
  for (rsEntries->MoveLast(); rsEntries->Position() > 0; rsEntries->MovePrevious()) {
    const EntryType type = Type_Here();
    if (type.Kind() != EntryKind::PlanDesign) continue;
    const std::optional<EntryRow> design = Read_Sound_Entry();
    if (!design) continue;
    planMode = static_cast<int>(Design_Of(*design).labels) * (type.hidden ? -1 : 1);
    break;
  }
  return *planMode;
}

PlanPainter::PlanPainter(DrawPass& drawPass) : pass(drawPass) {
  if (!pass.onMap) return;
  Map.PlanLabels.clear();
  Map.lblPLQ.Visible = false;  // until the mouse moves over a square again
}

void PlanPainter::Note(const Recordset& rows, const PaintedRow& row, DrawCounts& counts) {
  const EntryRow entry = Read_Entry(rows);
  noted = true;
  ++counts.planRows;
  if (row.type.mark == Mark::None) {
    ++counts.planUnmarked;
    if (!row.type.hidden) ++counts.planShown;
  }
  if (row.type.Kind() == EntryKind::PlanDesign) {
    labels.Set_Design(Design_Of(entry));
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
  // Marks keep a square from being hidden by the menu; it goes from sight with the others all the same.
  if (Plan_Mode() < 0 && !row.type.hidden) return;
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
  if (pass.surface.IsPaper()) Draw_Ticks(pass.surface, box, row.colors.RA);
  pass.Draw_Marks(row, box);
}

void PlanPainter::Finish() {
  if (!noted) return;  // without a raster nobody looks for its design
  if (Plan_Mode() >= 0) labels.Print(pass.context);
  if (pass.onMap) Add_Regions();
}

// A square that was hidden by itself keeps its place: it can be found there and shown again.
void PlanPainter::Add_Regions() {
  const bool active = Raster_Active() && Plan_Mode() >= 0;
  for (Square& square : squares) {
    const bool hidden = square.label.text.isEmpty();
    RegionSet* const regions = pass.context.regions;
    if (active && regions && !square.inactive) regions->Add(square.box, square.label.key, planRegion);
    if (Map.PlanLabels.empty() && !hidden && !Map.lblPLQ.Visible) Map.lblPLQ.Text = square.label.text;
    if (!hidden || active) Map.PlanLabels.push_back(std::move(square.label));
  }
}
