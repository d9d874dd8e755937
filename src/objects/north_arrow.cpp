#include "objects/north_arrow.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include "platform/database.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/anchor.h"
#include "store/transaction.h"

namespace {

// Tip of the arrow in map pixels: told by the row, else straight above the foot.
QPointF Tip_Of(const EntryRow& row) {
  const QPointF foot(row.Xmap, row.Ymap);
  if ((row.Xline != 0 || row.Yline != 0) && (row.Xline != row.Xmap || row.Yline != row.Ymap))
    return {static_cast<double>(row.Xline), static_cast<double>(row.Yline)};
  const double points = row.Groesse == 0 ? 8 : std::abs(row.Groesse);
  return foot - QPointF(0, northArrowLength * points / 8);
}

// A slim kite with a notch at its foot, its left half dark and its right half light.
struct ArrowShape {
  std::array<QPointF, 3> leftHalf, rightHalf;
  std::array<QPointF, 4> rim;
};

ArrowShape Shape_Of(QPointF foot, QPointF tip, const ViewTransform& view) {
  const QPointF axis = tip - foot;
  const QPointF side = QPointF(-axis.y(), axis.x()) * 0.2;  // to the right, seen toward the tip
  const auto Whole = [&](QPointF point) { return QPointF(view.Round(point.x()), view.Round(point.y())); };
  const QPointF notch = Whole(foot + axis * 0.2), right = Whole(foot + side), left = Whole(foot - side);
  return {{tip, notch, left}, {tip, right, notch}, {tip, right, notch, left}};
}

bool Is_North_Arrow(const EntryRow& row) {
  return EntryType::Parse(row.Typ).Kind() == EntryKind::NorthArrow && EntryId::Parse(row.ID).IsNorthArrow();
}

void Delete_North_Arrows() {
  For_Each_Entry([] {
    if (!Is_North_Arrow(Read_Entry(*rsEntries))) return Walk::On;
    rsEntries->Delete();
    return Walk::RowGone;
  });
  Promote_Anchor();
}

}  // namespace

EntryRow Make_North_Arrow(QPoint foot, int curVG, int curHG, double slope) {
  EntryRow row;
  row.ID = QStringLiteral("Np");
  row.Eintrag = QStringLiteral("Nordpfeil");
  row.Schrift = QStringLiteral("Arial");
  row.Groesse = -8;
  row.VG = curVG == 15 ? 8 : curVG;
  row.HG = curHG == row.VG ? 15 - row.VG : curHG;
  row.Xmap = foot.x();
  row.Ymap = foot.y();
  // Up the net's Hochwert lines: `slope` pixels to the right for each one upward.
  const double up = northArrowLength / std::hypot(1, slope);
  row.Xline = foot.x() + static_cast<int>(std::lround(up * slope));
  row.Yline = foot.y() - static_cast<int>(std::lround(up));
  row.Typ = -static_cast<int>(EntryKind::NorthArrow);
  return row;
}

void Add_North_Arrow(QPoint foot) {
  if (!rsEntries || !dbEntries) return;
  {
    const KeepCurrentRow keep;
    In_Transaction([foot] {
      Delete_North_Arrows();
      Append_Entry(Make_North_Arrow(foot, CurVG, CurHG, Coord.Metric() ? Coord.Inclin : 0));
    });
  }
  events.TableChanged.Emit();
  events.RedrawWanted.Emit();
}

void Add_North_Arrow() {
  constexpr double fromEdge = 40;  // window pixels
  const double zoom = Map.Zoom;
  const int x = static_cast<int>(Map.ViewLeft + (Map.ViewWidth - fromEdge) * zoom);
  const int y = static_cast<int>(Map.ViewTop + fromEdge * zoom) + northArrowLength;
  Add_North_Arrow(QPoint(std::max(x, 0), y));
}

QRectF Draw_North_Arrow(DrawContext& context, const EntryRow& row, const EntryColors& colors) {
  const QPointF foot = context.view.Point({static_cast<double>(row.Xmap), static_cast<double>(row.Ymap)});
  const QPointF tip = context.view.Point(Tip_Of(row));
  const double length = std::hypot(tip.x() - foot.x(), tip.y() - foot.y());
  if (length < 1) return {};
  const double reach = length + 30 / context.view.Zoom;  // arrow and letter, however it is turned
  const QRectF seen = context.window.adjusted(-reach, -reach, reach, reach);
  if (!seen.contains(foot)) return {};

  Surface& surface = context.surface;
  const KeepPen keep(surface);
  const ArrowShape shape = Shape_Of(foot, tip, context.view);
  surface.pen = {.ForeColor = colors.VG, .FillColor = colors.HG, .fill = FillStyle::Solid};
  surface.Polygon(shape.rightHalf);
  surface.pen.FillColor = colors.VG;
  surface.Polygon(shape.leftHalf);
  surface.pen.fill = FillStyle::None;
  surface.Polygon(shape.rim);

  const QString letter = QStringLiteral("N");
  FontKey font;
  font.points = std::max(5.0, length * 0.2);
  font.bold = true;
  surface.SetFont(font);
  const double width = surface.TextWidth(letter), height = surface.TextHeight(letter);
  const QPointF middle = tip + (tip - foot) * ((height / 2 + 1) / length);
  const QPointF at(context.view.Round(middle.x() - width / 2), context.view.Round(middle.y() - height / 2));
  surface.Print(at, letter);

  QRectF box(at, QSizeF(width, height));
  for (const QPointF& point : shape.rim) {
    box.setLeft(std::min(box.left(), point.x()));
    box.setRight(std::max(box.right(), point.x() + 1));
    box.setTop(std::min(box.top(), point.y()));
    box.setBottom(std::max(box.bottom(), point.y() + 1));
  }
  return box;
}
