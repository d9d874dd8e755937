#include "plansquares/plan_labels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plansquares/raster_rows.h"
#include "state/global_state.h"

namespace {

constexpr double smallestFont = 5, firstFont = 6;
constexpr double paperFont = 10, smallestOnPaper = 8, largestOnPaper = 15;  // points
constexpr int edgeLetters = 3;

// What stands along an edge already.
class RoomAlong {
 public:
  explicit RoomAlong(size_t most) { taken.reserve(most); }
  // False where it would lie over another one.
  bool Take(double at, double size) {
    const auto covers = [=](const std::pair<double, double>& it) { return at < it.second && it.first < at + size; };
    if (std::any_of(taken.begin(), taken.end(), covers)) return false;
    taken.emplace_back(at, at + size);
    return true;
  }

 private:
  std::vector<std::pair<double, double>> taken;
};

}  // namespace

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

double PlanLabels::Widest(Surface& surface) const {
  double widest = 0;
  const auto take = [&](const QString& text) { widest = std::max<double>(widest, surface.TextWidth(text)); };
  if (design->labels == LabelPlace::Centre)
    for (const Label& label : labels) take(label.text);
  else
    for (const PlanEdge& edge : PlanCols) take(edge.Text);
  return widest;
}

// On paper labels are in Arial, as large as the factor of the print fonts makes them, and never too small to be read.
void PlanLabels::Set_Paper_Font(DrawContext& context) {
  FontKey font;
  font.points = paperFont * context.fontScale;
  context.surface.SetFont(font);
  for (; font.points > smallestOnPaper && Widest(context.surface) > width; context.surface.SetFont(font)) --font.points;
  font.points = std::clamp(font.points, smallestOnPaper, largestOnPaper);
  context.surface.SetFont(font);
}

// The largest size at which the widest text fits into a square; 5 points at least. False if not even they do.
bool PlanLabels::Fit_Font(DrawContext& context) {
  FontKey font;
  font.family = design->font.isEmpty() ? QStringLiteral("Arial") : design->font;
  const double scale = context.fontScale > 0 ? context.fontScale : 1 / context.view.Zoom;
  const double largest = std::max(smallestFont, (design->fontSize > 0 ? design->fontSize : firstFont) * scale);
  const auto fits = [&](int less) {
    font.points = std::max(smallestFont, largest - less);
    context.surface.SetFont(font);
    return Widest(context.surface) <= width && context.surface.TextHeight(QStringLiteral("0")) <= height;
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
  const bool paper = context.fontScale > 0;
  const bool fits = paper || Fit_Font(context);
  if (paper) Set_Paper_Font(context);
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
  // Where squares are narrower than their labels every second or third one stands there.
  RoomAlong across(PlanCols.size()), down(PlanRows.size());
  if (which != EdgePart::Rows)
    for (const PlanEdge& edge : PlanCols) {
      const double size = context.surface.TextWidth(edge.Text), at = middle(edge.Pos, width, size);
      if (across.Take(at, size)) Print_Edge(context, {at, top}, edge.Text);
    }
  if (which == EdgePart::Columns) return;
  for (const PlanEdge& edge : PlanRows) {
    const QString text = edge.Text.trimmed();
    // Numbers stand under each other by their last digit.
    const double indent = std::max(0.0, room - context.surface.TextWidth(text)), at = middle(edge.Pos, height, line);
    if (down.Take(at, line)) Print_Edge(context, {left + indent, at}, text);
  }
}

void PlanLabels::Print_Centred(DrawContext& context) {
  Surface& surface = context.surface;
  std::vector<QRectF> printed;
  for (const Label& label : labels) {
    const QSizeF size(surface.TextWidth(label.text), surface.TextHeight(label.text));
    const QPointF at = label.box.center() - QPointF(size.width() / 2, size.height() / 2);
    const QRectF place(at, size);
    // On paper they may be larger than their squares.
    if (context.fontScale > 0) {
      if (std::any_of(printed.begin(), printed.end(), [&](const QRectF& it) { return it.intersects(place); })) continue;
      printed.push_back(place);
    }
    surface.Print({context.view.Round(at.x()), context.view.Round(at.y())}, label.text);
  }
}
