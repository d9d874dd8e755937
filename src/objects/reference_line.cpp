#include "objects/reference_line.h"

#include <cmath>

namespace {

// -1, 0, 1: before, within, behind the stretch.
int Zone(double value, double low, double high) { return value < low ? -1 : value > high ? 1 : 0; }

double Edge(int zone, double low, double high) { return zone < 0 ? low : zone > 0 ? high : (low + high) / 2; }

void Plain_Line(Surface& surface, QPointF from, QPointF to) { surface.Line(from, to); }

void Arrow_Line(DrawContext& context, QPointF start, QPointF foot, const ReferenceLook& look) {
  const double head = std::max(3.0, look.textHeight / 2);
  const double width = std::max(3.0, look.style.arrow / context.view.Zoom);
  auto arrow = Arrow_Polygon(start, foot, context.surface.pen.DrawWidth, head, width);
  for (QPointF& point : arrow) point = {context.view.Round(point.x()), context.view.Round(point.y())};
  context.surface.pen.DrawWidth = 1;
  context.surface.pen.fill = FillStyle::Solid;
  context.surface.Polygon(arrow);
}

void Circle_Line(DrawContext& context, QPointF start, QPointF foot, const ReferenceLook& look) {
  const double radius = std::max(2.0, context.view.Round(look.style.circle / context.view.Zoom));
  const double distance = std::hypot(foot.x() - start.x(), foot.y() - start.y());
  // The line ends at the rim: what stands at the foot point stays to be seen.
  if (distance > radius) {
    const QPointF rim = foot + (start - foot) * (radius / distance);
    Plain_Line(context.surface, start, QPointF(context.view.Round(rim.x()), context.view.Round(rim.y())));
  }
  context.surface.Ellipse(QRectF(foot.x() - radius, foot.y() - radius, 2 * radius + 1, 2 * radius + 1));
}

void Add_Foot_Region(const DrawContext& context, QPointF foot) {
  const double radius = 5.0 / context.view.Zoom;
  context.Add_Region(EllipseShape{QRectF(foot.x() - radius, foot.y() - radius, 2 * radius, 2 * radius)}, footRegion);
}

void Draw_Marked_Line(DrawContext& context, QPointF start, QPointF foot, const ReferenceLook& look) {
  const KeepPen keep(context.surface);
  double width = context.view.Round(2 * look.style.width / context.view.Zoom);
  if (width < 1 || width > 100) width = 1;
  context.surface.pen = {.ForeColor = look.color, .FillColor = look.color, .DrawWidth = width};
  switch (look.kind) {
    case EntryKind::TextArrow:
      Arrow_Line(context, start, foot, look);
      break;
    case EntryKind::TextCircle:
      Circle_Line(context, start, foot, look);
      break;
    default:
      Plain_Line(context.surface, start, foot);
      break;
  }
}

}  // namespace

std::optional<QPointF> Reference_Start(const QRectF& box, QPointF foot) {
  const int column = Zone(foot.x(), box.left(), box.right()), row = Zone(foot.y(), box.top(), box.bottom());
  if (column == 0 && row == 0) return std::nullopt;
  return QPointF(Edge(column, box.left(), box.right()), Edge(row, box.top(), box.bottom()));
}

std::array<QPointF, 7> Arrow_Polygon(QPointF start, QPointF tip, double shaft, double headLength, double headWidth) {
  const double dx = tip.x() - start.x(), dy = tip.y() - start.y(), length = std::hypot(dx, dy);
  const QPointF along = length > 0 ? QPointF(dx, dy) / length : QPointF(1, 0);
  const QPointF across(-along.y(), along.x());
  const QPointF neck = tip - along * std::min(headLength, length);
  // The shaft is a wedge: full width at the box, half of it at the head.
  return {start + across * (shaft / 2),    neck + across * (shaft / 4), neck + across * (headWidth / 2), tip,
          neck - across * (headWidth / 2), neck - across * (shaft / 4), start - across * (shaft / 2)};
}

void Draw_Reference(DrawContext& context, QPointF foot, const QRectF& box, const ReferenceLook& look) {
  if (look.kind == EntryKind::Reference) return Draw_Reference_From(context, box.topLeft(), foot, look);
  if (const std::optional<QPointF> start = Reference_Start(box, foot)) {
    const QPointF whole(context.view.Round(start->x()), context.view.Round(start->y()));
    Draw_Marked_Line(context, whole, foot, look);
  }
  Add_Foot_Region(context, foot);
}

void Draw_Reference_From(DrawContext& context, QPointF start, QPointF foot, const ReferenceLook& look) {
  Draw_Marked_Line(context, start, foot, look);
  Add_Foot_Region(context, foot);
}

QPolygonF Reference_Strip(QPointF entry, QPointF foot) {
  const bool flat = std::abs(foot.x() - entry.x()) > std::abs(foot.y() - entry.y());
  const double dx = flat ? 0 : 5, dy = flat ? 5 : 0;
  QPolygonF strip;
  strip << QPointF(entry.x() + dx, entry.y() - dy) << QPointF(entry.x() - dx, entry.y() + dy)
        << QPointF(foot.x() - dx, foot.y() + dy) << QPointF(foot.x() + dx, foot.y() - dy) << strip.front();
  return strip;
}
