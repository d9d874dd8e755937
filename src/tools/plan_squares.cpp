#include "tools/plan_squares.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "hand/activation.h"
#include "plansquares/raster_rows.h"
#include "plansquares/raster_texts.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"
#include "view/redraw.h"

namespace {

constexpr double smallestFont = 5, firstFont = 6;
constexpr int edgeLetters = 3;

std::optional<RasterPreview> preview;

}  // namespace

// Labels -------------------------------------------------------------------------------------------------------------

void PlanLabels::Set_Design(const RasterDesign& raster) { design = raster; }

void PlanLabels::Add_Square(const QString& name, const QString& label, const QRectF& box, bool shown) {
  QString columnText, rowText;
  if (!Split_Name(name, columnText, rowText)) return;
  firstLeft = any ? std::min(firstLeft, box.left()) : box.left();
  firstTop = any ? std::min(firstTop, box.top()) : box.top();
  any = true;
  if (!shown) return;
  width = labels.empty() ? box.width() : std::min(width, box.width());
  height = labels.empty() ? box.height() : std::min(height, box.height());
  labels.push_back({label, box});
  Plan_Edge_Collect(name, box.left(), box.top());
}

void PlanLabels::Plan_Edge_Collect(const QString& name, double x, double y) {
  const qsizetype dash = name.indexOf(u'-');
  if (dash < 0) return;
  const QString columnText = name.left(dash).left(edgeLetters), rowText = name.mid(dash + 1);
  if (!knownCols.contains(columnText)) {
    knownCols.insert(columnText);
    PlanCols.push_back({columnText, x});
  }
  if (knownRows.contains(rowText)) return;
  knownRows.insert(rowText);
  PlanRows.push_back({rowText.rightJustified(edgeLetters), y});
}

// The design's size, or as many whole points less as let the widest text fit into a square; 5 points at least. False if
// not even they do.
bool PlanLabels::Fit_Font(DrawContext& context) {
  FontKey font;
  font.family = design->font.isEmpty() ? QStringLiteral("Arial") : design->font;
  const double scale = context.fontScale > 0 ? context.fontScale : 1 / context.view.Zoom;
  const double largest = std::max(smallestFont, (design->fontSize > 0 ? design->fontSize : firstFont) * scale);
  const bool centred = design->labels == LabelPlace::Centre;
  const auto fits = [&](int less) {
    font.points = std::max(smallestFont, largest - less);
    context.surface.SetFont(font);
    double widest = 0;
    if (centred)
      for (const Label& label : labels) widest = std::max<double>(widest, context.surface.TextWidth(label.text));
    else
      for (const PlanEdge& edge : PlanCols) widest = std::max<double>(widest, context.surface.TextWidth(edge.Text));
    return widest <= width && context.surface.TextHeight(QStringLiteral("0")) <= height;
  };
  if (fits(0)) return true;
  // Halving the steps: each of them measures every label.
  int tooLarge = 0, good = static_cast<int>(std::ceil(largest - smallestFont));
  if (!fits(good)) return false;
  while (good - tooLarge > 1) {
    const int middle = (good + tooLarge) / 2;
    (fits(middle) ? good : tooLarge) = middle;
  }
  return fits(good);
}

void PlanLabels::Print(DrawContext& context) {
  if (!design || labels.empty() || design->labels == LabelPlace::None) return;
  const KeepPen keep(context.surface);
  const bool fits = Fit_Font(context);
  context.surface.pen = {};
  context.surface.pen.ForeColor = Color_Of(design->VG);
  if (design->labels != LabelPlace::Centre)
    Plan_Edge_Print(context, EdgePart::Both);
  else if (fits)
    Print_Centred(context);
}

void PlanLabels::Print_Edge(DrawContext& context, QPointF at, const QString& text) {
  Surface& surface = context.surface;
  const QPointF place(context.view.Round(at.x()), context.view.Round(at.y()));
  const QSizeF size(surface.TextWidth(text), surface.TextHeight(text));
  // On a ground of its own: it stands over whatever the map shows there.
  surface.FilledBox({place, size}, Color_Of(design->HG));
  surface.Print(place, text);
}

void PlanLabels::Plan_Edge_Print(DrawContext& context, EdgePart which) {
  const bool atSquares = design->labels == LabelPlace::SquareEdge;
  const double line = context.surface.TextHeight(QStringLiteral("0"));
  const double room = 2.0 * context.surface.TextWidth(QStringLiteral("0"));
  const double top = atSquares ? firstTop - line - 1 : context.window.top() + 1;
  const double left = atSquares ? firstLeft - room - 2 : context.window.left() + 1;
  const auto middle = [](double pos, double square, double text) { return pos + (square - text) / 2; };
  if (which != EdgePart::Rows)
    for (const PlanEdge& edge : PlanCols)
      Print_Edge(context, {middle(edge.Pos, width, context.surface.TextWidth(edge.Text)), top}, edge.Text);
  if (which == EdgePart::Columns) return;
  for (const PlanEdge& edge : PlanRows) {
    const QString text = edge.Text.trimmed();
    // Numbers stand under each other by their last digit.
    const double indent = std::max(0.0, room - context.surface.TextWidth(text));
    Print_Edge(context, {left + indent, middle(edge.Pos, height, line)}, text);
  }
}

void PlanLabels::Print_Centred(DrawContext& context) {
  Surface& surface = context.surface;
  for (const Label& label : labels) {
    const QSizeF size(surface.TextWidth(label.text), surface.TextHeight(label.text));
    const QPointF at = label.box.center() - QPointF(size.width() / 2, size.height() / 2);
    surface.Print({context.view.Round(at.x()), context.view.Round(at.y())}, label.text);
  }
}

// Preview ------------------------------------------------------------------------------------------------------------

void Show_Raster_Preview(std::optional<RasterPreview> wanted) {
  if (!preview && !wanted) return;
  preview = std::move(wanted);
  Map_Redraw();
}

bool Raster_Preview_Shown() { return preview.has_value(); }

void Draw_Raster_Preview(DrawContext& context) {
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

// The field on the map -----------------------------------------------------------------------------------------------

namespace {

const QString toolName = QStringLiteral("Raster");

class FieldTool : public MapTool {
 public:
  FieldTool(std::function<void(QRect)> heard, std::function<void()> gone)
      : taken(std::move(heard)), dropped(std::move(gone)) {}
  QString Name() const override { return toolName; }
  QString Status() const override { return raster_texts::dragField; }
  void Down(QPoint window, MouseKeys) override {
    from = to = Map_At(window);
    dragging = true;
  }
  void Move(QPoint window, bool leftDown) override {
    if (dragging && leftDown) to = Map_At(window);
  }
  void Up(QPoint window) override {
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
  QPainterPath Outline() const override {
    QPainterPath path;
    if (dragging)
      path.addRect(QRectF(QPointF(Window_X(from.x()), Window_Y(from.y())), QPointF(Window_X(to.x()), Window_Y(to.y())))
                       .normalized());
    return path;
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

bool Raster_Active() { return frmMDI.RasterActive; }

void Set_Raster_Active(bool active) {
  frmMDI.RasterActive = active;
  if (!active) Map.lblPLQ.Visible = false;
}

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

bool Take_Raster_On_Map(const RasterPreview& wanted) {
  if (Entry_In_Hand() && !End_Entry()) return false;
  const bool wasActive = Raster_Active();
  const std::optional<RasterPreview> shown = std::exchange(preview, std::nullopt);
  // Its rows are the first thing the redraw at the end shall find active.
  Set_Raster_Active(true);
  frmMDI.HasPlanSquares = true;
  qint64 key = 0;
  const bool free = wanted.design.field == RasterField::Free;
  const bool taken =
      free ? (key = Take_Free_Square(wanted.design, wanted.plan)) != 0 : Take_Raster(wanted.design, wanted.plan);
  if (taken) {
    if (!Raster_Active()) Set_Raster_Active(true), Map_Redraw();
    if (free) Take_Entry(QString::number(key));
    return true;
  }
  Set_Raster_Active(wasActive);
  preview = shown;
  Map_Redraw();
  return false;
}

// The square under the mouse -----------------------------------------------------------------------------------------

namespace {

const PlanLabel* Square_Of(int hit) {
  if (hit < 1) return nullptr;
  const EntryRegion& region = Map.EntryRegions.Row(hit);
  if (region.kind != planRegion) return nullptr;
  const auto found = std::find_if(Map.PlanLabels.begin(), Map.PlanLabels.end(),
                                  [&region](const PlanLabel& label) { return label.key == region.key; });
  return found == Map.PlanLabels.end() ? nullptr : &*found;
}

}  // namespace

bool Show_Plan_Label(int hit) {
  const PlanLabel* square = Square_Of(hit);
  LiveControl& label = Map.lblPLQ;
  if (!square) return std::exchange(label.Visible, false);
  constexpr int inset = 3, perLetter = 9, line = 18;
  const QString text = square->text.isEmpty() ? raster_texts::hiddenSquare : square->text;
  const int left = std::max(0, square->offsetX) + inset, top = std::max(0, square->offsetY) + inset;
  if (label.Visible && label.Text == text && label.Left == left && label.Top == top) return false;
  label.Visible = true;
  label.Text = text;
  label.Left = left;
  label.Top = top;
  label.Width = static_cast<int>(text.size()) * perLetter + 2 * inset;
  label.Height = line;
  return true;
}

bool Is_Raster_Square(int hit) {
  const PlanLabel* square = Square_Of(hit);
  QString columnText, rowText;
  return square && Split_Name(square->name, columnText, rowText);
}
