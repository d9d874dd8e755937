#include "objects/rotated_text.h"

#include <cmath>
#include <numbers>
#include <span>

namespace {

QRectF Bounds_Of(const std::array<QPointF, 4>& corners) {
  QRectF bounds(corners[0], QSizeF());
  for (const QPointF& corner : corners) {
    bounds.setLeft(std::min(bounds.left(), corner.x()));
    bounds.setRight(std::max(bounds.right(), corner.x()));
    bounds.setTop(std::min(bounds.top(), corner.y()));
    bounds.setBottom(std::max(bounds.bottom(), corner.y()));
  }
  return bounds;
}

// Does the point lie within the turned box? Left of or on every edge, all one way round.
bool Within(const std::array<QPointF, 4>& corners, QPointF point) {
  for (size_t i = 0; i < 4; ++i) {
    const QPointF edge = corners[(i + 1) % 4] - corners[i], to = point - corners[i];
    if (edge.x() * to.y() - edge.y() * to.x() < 0) return false;
  }
  return true;
}

void Draw_Box(Surface& surface, std::span<const QPointF> corners, const TextLook& look) {
  if (Veiled(look)) surface.Veil(corners, look.colors.HG);
  if ((look.transparent || Veiled(look)) && !look.frame.framed) return;
  surface.pen = {.ForeColor = look.frame.framed ? look.colors.RA : look.colors.HG,
                 .FillColor = look.colors.HG,
                 .mode = look.frame.framed && look.frame.notXor ? DrawMode::NotXor : DrawMode::Copy,
                 .DrawWidth = look.frame.framed ? static_cast<double>(look.frame.width) : 1.0,
                 .pen = look.frame.framed ? Frame_Pattern(look.frame) : PenStyle::Solid,
                 .fill = look.transparent || Veiled(look) ? FillStyle::None : FillStyle::Solid};
  surface.Polygon(corners);
}

}  // namespace

std::array<QPointF, 4> Rotated_Box(QPointF at, QSizeF size, double angle, double out) {
  const QPointF corners[] = {
      {-out, -out}, {size.width() + out, -out}, {size.width() + out, size.height() + out}, {-out, size.height() + out}};
  std::array<QPointF, 4> turned;
  for (size_t i = 0; i < 4; ++i) turned[i] = Turned(at + corners[i], at, angle);
  return turned;
}

QPointF Nearest_Corner(const std::array<QPointF, 4>& corners, QPointF point) {
  return *std::min_element(corners.begin(), corners.end(), [&](QPointF a, QPointF b) {
    return (a - point).manhattanLength() < (b - point).manhattanLength();
  });
}

QPointF Sample_Origin(double angle, double width, double height) {
  if (angle < 0) angle += 360;
  const double turn = angle * std::numbers::pi / 180;
  if (angle < 90) return {0, height * std::sin(turn)};
  if (angle < 180) return {-std::cos(turn) * width, height};
  if (angle < 270) return {width, -std::sin(turn) * height};
  return {std::cos(turn) * width, 0};
}

QRectF Draw_Rotated_Text(DrawContext& context, const QString& text, double angle, QPointF at,
                         std::optional<QPointF> foot, const TextLook& look, const ReferenceLook& reference) {
  if (angle < 0) angle += 360;
  Surface& surface = context.surface;
  const QSizeF size(surface.TextWidth(text), surface.TextHeight(text));
  std::array<QPointF, 4> corners = Rotated_Box(at, size, angle);
  for (QPointF& corner : corners) corner = {context.view.Round(corner.x()), context.view.Round(corner.y())};
  const QRectF bounds = Bounds_Of(corners);
  const bool seen = bounds.intersects(context.window);

  const KeepPen keep(surface);
  if (seen) {
    Draw_Box(surface, corners, look);
    surface.pen.mode = DrawMode::Copy;
    surface.pen.ForeColor = look.colors.VG;
    surface.PrintRotated(at, text, angle);
  }
  if (foot && !Within(corners, *foot)) Draw_Reference_From(context, Nearest_Corner(corners, *foot), *foot, reference);
  if (!seen) return {};
  context.Add_Region(QPolygonF(QList<QPointF>(corners.begin(), corners.end())));
  return bounds;
}
