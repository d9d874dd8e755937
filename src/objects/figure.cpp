#include "objects/figure.h"

#include <cmath>
#include <vector>

#include "objects/bezier.h"
#include "objects/clip.h"
#include "objects/hatch.h"
#include "objects/text_box.h"

namespace {

// A figure's outline in one of three forms, ready to be drawn several times.
struct Shape {
  enum class Form { Box, Ellipse, Polygon, Curve } form = Form::Box;
  QRectF box;                   // of Box and Ellipse, as the surface takes them
  std::vector<QPointF> points;  // of Polygon and Curve
  QRectF bounds;

  void Draw(Surface& surface) const {
    switch (form) {
      case Form::Box:
        surface.Box(box);
        break;
      case Form::Ellipse:
        surface.Ellipse(box);
        break;
      case Form::Polygon:
        surface.Polygon(points);
        break;
      case Form::Curve:
        surface.Bezier(points, true);
        break;
    }
  }

  std::vector<QPointF> Flat() const;
};

// Four pieces of a curve that follow an ellipse, turned about its centre.
std::vector<QPointF> Ellipse_Curve(QPointF centre, double rx, double ry, double angle) {
  constexpr double k = 0.5522847498;  // handle length that comes nearest to a quarter circle
  const QPointF unit[] = {{1, 0},   {1, k},   {k, 1},  {0, 1},  {-k, 1}, {-1, k}, {-1, 0},
                          {-1, -k}, {-k, -1}, {0, -1}, {k, -1}, {1, -k}, {1, 0}};
  std::vector<QPointF> curve;
  for (const QPointF& point : unit)
    curve.push_back(Turned(centre + QPointF(point.x() * rx, point.y() * ry), centre, angle));
  return curve;
}

std::vector<QPointF> Shape::Flat() const {
  std::vector<QPointF> flat;
  if (form == Form::Box) {
    flat = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
  } else if (form == Form::Ellipse) {
    Flatten_Bezier(Ellipse_Curve(box.center(), box.width() / 2, box.height() / 2, 0), flat);
  } else if (form == Form::Curve) {
    Flatten_Bezier(points, flat);
  } else {
    flat = points;
  }
  return flat;
}

QRectF Bounds_Of(const std::vector<QPointF>& points) {
  if (points.empty()) return {};
  double x1 = points[0].x(), x2 = x1, y1 = points[0].y(), y2 = y1;
  for (const QPointF& point : points) {
    x1 = std::min(x1, point.x()), x2 = std::max(x2, point.x());
    y1 = std::min(y1, point.y()), y2 = std::max(y2, point.y());
  }
  return {x1, y1, x2 - x1, y2 - y1};
}

void Round_All(const ViewTransform& view, std::vector<QPointF>& points) {
  for (QPointF& point : points) point = {view.Round(point.x()), view.Round(point.y())};
}

// Ellipse and circle lie by their radius q, half the longer side (the circle: the height) + 1, which reaches
// 2 pixels over the upper left of the box.
QRectF Ellipse_Box(const QRectF& box, bool circle, const ViewTransform& view) {
  double rx = 0, ry = 0;
  if (circle) {
    rx = ry = box.height() / 2 + 1;
  } else if (box.height() > box.width()) {
    ry = box.height() / 2 + 1;
    rx = ry * box.width() / box.height();
  } else if (box.width() > 0) {
    rx = box.width() / 2 + 1;
    ry = rx * box.height() / box.width();
  }
  return {box.left() - 2, box.top() - 2, view.Round(2 * rx + 1), view.Round(2 * ry + 1)};
}

// The middle of the pen that draws a box's rim from within: turned shapes are drawn along it.
QRectF Middle_Line(const QRectF& box, double width) {
  const double inset = (width - 1) / 2;
  // The last pixels lie at width and height less 1.
  return box.adjusted(inset, inset, -1 - inset, -1 - inset);
}

// The box of a rectangle as the surface takes it. On the screen its last column of pixels stands at its width; on paper
// a pixel has no size of its own.
QRectF Rim_Of(const DrawContext& context, const QRectF& box) {
  return context.view.whole ? box.adjusted(0, 0, 1, 1) : box;
}

// `rim`: width of the pen that draws it, 0 without one.
Shape Box_Shape(const DrawContext& context, const QRectF& box, double angle, double width, double rim) {
  Shape shape;
  if (angle == 0) {
    // Edges beyond the window may lie anywhere beyond it.
    const double margin = Clip_Margin(width);
    shape.box = box.intersected(context.window.adjusted(-margin, -margin, margin, margin));
    shape.bounds = box;
    return shape;
  }
  shape.form = Shape::Form::Polygon;
  const QPointF centre = box.center();
  const QRectF corners =
      context.view.whole ? Middle_Line(box, width) : box.adjusted(rim / 2, rim / 2, -rim / 2, -rim / 2);
  for (const QPointF& corner : {corners.topLeft(), corners.topRight(), corners.bottomRight(), corners.bottomLeft()})
    shape.points.push_back(Turned(corner, centre, angle));
  Round_All(context.view, shape.points);
  shape.bounds = Bounds_Of(shape.points);
  Cut_Far(shape.points, Far_Limit(context), true);
  return shape;
}

Shape Ellipse_Shape(const DrawContext& context, const QRectF& box, double angle, double width) {
  Shape shape;
  shape.form = Shape::Form::Ellipse;
  shape.box = shape.bounds = box;
  const bool far = !Far_Limit(context).contains(box);
  if (angle == 0 && !far) return shape;
  shape.form = Shape::Form::Curve;
  const QRectF line = Middle_Line(box, width);
  shape.points = Ellipse_Curve(line.center(), line.width() / 2, line.height() / 2, angle);
  shape.bounds = Bounds_Of(shape.points);
  if (far) {
    // A curve of such a size is drawn as a polygon of many corners, cut far from the window.
    const QPointF centre = line.center();
    constexpr int corners = 2048;
    shape.form = Shape::Form::Polygon;
    shape.points.clear();
    for (int i = 0; i < corners; ++i) {
      const double t = i * 2 * 3.14159265358979323846 / corners;
      const QPointF point(line.width() / 2 * std::cos(t), line.height() / 2 * std::sin(t));
      shape.points.push_back(Turned(centre + point, centre, angle));
    }
    Cut_Far(shape.points, Far_Limit(context), true);
  }
  return shape;
}

Shape Free_Shape(const DrawContext& context, std::span<const QPoint> vertices, QPointF centre, double angle,
                 bool rounded, double width) {
  Shape shape;
  std::vector<QPointF> turned;
  turned.reserve(vertices.size());
  for (const QPoint& vertex : vertices) {
    const QPointF point = context.view.Point(vertex);
    turned.push_back(angle == 0 ? point : Turned(point, centre, angle));
  }
  Round_All(context.view, turned);
  shape.bounds = Bounds_Of(turned);
  std::vector<QPointF> kept;
  const double margin = Clip_Margin(width);
  Clip_Outline(turned, context.window.adjusted(-margin, -margin, margin, margin), rounded, kept);
  const bool far = Beyond(kept, Far_Limit(context));
  shape.form = rounded && !far ? Shape::Form::Curve : Shape::Form::Polygon;
  if (!rounded) {
    shape.points = kept;
  } else {
    Bezier_Points(kept, shape.points);
    if (far) Flatten_Bezier(std::vector<QPointF>(shape.points), shape.points);
  }
  if (far) Cut_Far(shape.points, Far_Limit(context), true);
  return shape;
}

void Fill_Figure(DrawContext& context, const Shape& shape, FillCode code, const EntryColors& colors, double width) {
  Surface& surface = context.surface;
  surface.pen.mode = code.Transparent() ? DrawMode::NotXor : DrawMode::Copy;
  surface.pen.pen = PenStyle::None;
  surface.pen.fill = FillStyle::Solid;
  surface.pen.FillColor = code.InForeground() ? colors.VG : colors.HG;
  shape.Draw(surface);
  if (!code.Hatched()) return;
  if (width <= 1) {
    // Twice, in HG and in VG: in the NotXor mode the first pass takes the ground back under the lines.
    surface.pen.fill = code.Hatch();
    if (code.Transparent()) shape.Draw(surface);
    surface.pen.FillColor = colors.VG;
    shape.Draw(surface);
  } else {
    surface.pen.ForeColor = colors.VG;
    Draw_Hatch(context, shape.Flat(), code.Hatch(), width);
  }
}

void Draw_Passes(DrawContext& context, const EntryRow& row, const EntryColors& colors, const Shape& shape,
                 double width) {
  Surface& surface = context.surface;
  PenState& pen = surface.pen;
  if (!FillCode::IsFill(row.Schrift)) {
    pen = {.ForeColor = colors.VG, .DrawWidth = width};
    return shape.Draw(surface);
  }
  const FillCode code = FillCode::FromSchrift(row.Schrift);
  const FrameWord frame = FrameWord::Parse(row.RA);
  if (!code.None()) Fill_Figure(context, shape, code, colors, width);
  if (!frame.framed) return;
  pen = {.ForeColor = colors.RA, .DrawWidth = width, .pen = Frame_Pattern(frame)};
  shape.Draw(surface);
}

// The entry's box in surface pixels, as large as its drawn shape counts.
QRectF Entry_Box(const ViewTransform& view, const EntryRow& row) {
  const EntryBox box = entry_box(row);
  return {view.X(box.x), view.Y(box.y), view.Length(box.width), view.Length(box.height)};
}

Shape Make_Shape(const DrawContext& context, EntryKind kind, const QRectF& box, double angle,
                 std::span<const QPoint> vertices, double width, double rim) {
  switch (kind) {
    case EntryKind::Rectangle:
    case EntryKind::Square:
      return Box_Shape(context, Rim_Of(context, box), angle, width, rim);
    case EntryKind::Ellipse:
      return Ellipse_Shape(context, Ellipse_Box(box, false, context.view), angle, width);
    case EntryKind::Circle:
      return Ellipse_Shape(context, Ellipse_Box(box, true, context.view), angle, width);
    case EntryKind::FreeFigure:
    case EntryKind::FreeFigureRound:
      return Free_Shape(context, vertices, box.center(), angle, kind == EntryKind::FreeFigureRound, width);
    default: {
      const QSizeF size(std::max(1.0, box.width()), std::max(1.0, box.height()));
      return Box_Shape(context, QRectF(box.topLeft(), size), 0, width, rim);
    }
  }
}

QPolygonF Turned_Box(const QRectF& box, double angle) {
  QPolygonF polygon;
  for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})
    polygon << Turned(corner, box.center(), angle);
  return polygon;
}

}  // namespace

FigureShown Draw_Figure(DrawContext& context, const EntryRow& row, EntryKind kind, std::span<const QPoint> vertices,
                        const EntryColors& colors) {
  const bool free = kind == EntryKind::FreeFigure || kind == EntryKind::FreeFigureRound;
  if (free && vertices.size() < 2) return {};
  const bool filled = FillCode::IsFill(row.Schrift);
  const double angle = filled ? std::fmod(FillCode::AngleOf(row.Schrift), 360) : 0;
  // A bare outline has a pen of 2 pixels, 1 when the map is reduced.
  const double width = filled ? context.view.Pen(FrameWord::Parse(row.RA).width) : context.view.Zoom > 1.0 ? 1 : 2;
  const double margin = Clip_Margin(width);
  FigureShown shown;
  shown.box = Entry_Box(context.view, row);
  const double rim = !filled || FrameWord::Parse(row.RA).framed ? width : 0;
  const Shape shape = Make_Shape(context, kind, shown.box, angle, vertices, width, rim);

  const QRectF seen = context.window.adjusted(-margin, -margin, margin, margin);
  const QRectF bounds = shape.bounds;
  if (bounds.right() < seen.left() || bounds.left() > seen.right() || bounds.bottom() < seen.top() ||
      bounds.top() > seen.bottom() || (shape.form == Shape::Form::Polygon && shape.points.size() < 2))
    return {};

  const KeepPen keep(context.surface);
  Draw_Passes(context, row, colors, shape, width);
  shown.drawn = true;
  if (free) {
    const std::vector<QPointF> flat = shape.Flat();
    shown.region = QPolygonF(QList<QPointF>(flat.begin(), flat.end()));
    shown.box = bounds;
    return shown;
  }
  QRectF box = shown.box;
  if (box.width() < 1) box.setWidth(3);
  if (box.height() < 1) box.setHeight(3);
  if (angle == 0) {
    shown.region = box;
  } else {
    const QPolygonF turned = Turned_Box(box, angle);
    shown.box = turned.boundingRect();
    shown.region = turned;
  }
  return shown;
}
