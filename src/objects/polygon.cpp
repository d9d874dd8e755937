#include "objects/polygon.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include "objects/bezier.h"
#include "objects/clip.h"
#include "objects/hatch.h"
#include "objects/line_ends.h"
#include "store/stored_number.h"

namespace {

// One set of buffers for all entries, so that a redraw of thousands of outlines allocates nothing.
struct Buffers {
  std::vector<QPointF> kept;   // vertices to draw, surface pixels
  std::vector<QPointF> curve;  // the smooth curve through them
  std::vector<QPointF> flat;   // the curve as a polyline
};
thread_local Buffers buffers;

// The outline in hand: its vertices lie in buffers.kept; rounded ones have a curve as well.
class Outline {
 public:
  Outline(DrawContext& drawContext, bool isRounded, bool isClosed)
      : context(drawContext), rounded(isRounded), closed(isClosed) {
    for (QPointF& point : buffers.kept) point = context.view.Point(point);
    if (rounded) {
      if (closed)
        Bezier_Points(buffers.kept, buffers.curve);
      else
        Bezier_Points_Open(buffers.kept, buffers.curve);
    }
    const QRectF limit = Far_Limit(context);
    if (!Beyond(buffers.kept, limit)) return;
    if (rounded) {
      Flatten_Bezier(buffers.curve, buffers.kept);
      rounded = false;
    }
    Cut_Far(buffers.kept, limit, closed);
  }

  void Draw() const {
    if (rounded)
      context.surface.Bezier(buffers.curve, closed);
    else if (closed)
      context.surface.Polygon(buffers.kept);
    else
      context.surface.Polyline(buffers.kept);
  }

  // The same shape as straight pieces.
  const std::vector<QPointF>& Points() {
    if (!rounded) return buffers.kept;
    if (!flattened) Flatten_Bezier(buffers.curve, buffers.flat);
    flattened = true;
    return buffers.flat;
  }

 private:
  DrawContext& context;
  bool rounded, closed;
  bool flattened = false;
};

// Brings the vertices that matter into buffers.kept, map pixels. False if nothing can be seen.
bool Take_Vertices(const DrawContext& context, std::span<const QPoint> vertices, double penWidth, bool rounded,
                   bool all) {
  Clip_Outline(vertices, Map_Area(context, Clip_Margin(penWidth)), rounded, buffers.kept);
  if (!all) return buffers.kept.size() >= 2;
  if (buffers.kept.empty()) return false;
  buffers.kept.assign(vertices.begin(), vertices.end());
  return true;
}

void Draw_Handles(DrawContext& context, std::span<const QPoint> vertices, QRgb color) {
  for (const QPoint& vertex : vertices) {
    const QPointF at = context.view.Point(vertex);
    if (context.window.contains(at)) context.surface.FilledBox(QRectF(at.x() - 2, at.y() - 2, 4, 4), color);
  }
}

void Draw_Line(DrawContext& context, const EntryRow& row, const EntryId& id, std::span<const QPoint> vertices,
               const EntryColors& colors, const LineOptions& options, Outline& outline, double width) {
  const LineStyle style = Line_Style(row.Yline);
  PenState& pen = context.surface.pen;
  pen = {.ForeColor = colors.VG,
         .FillColor = colors.VG,
         .mode = style.transparent ? DrawMode::And : DrawMode::Copy,
         .DrawWidth = width,
         .pen = style.pen,
         .fill = FillStyle::None};
  if (options.inHand && options.highlighted) {
    pen.DrawWidth = 3;
    pen.mode = DrawMode::Copy;
    outline.Draw();
    pen.DrawWidth = 1;
    pen.mode = DrawMode::NotXor;
  }
  outline.Draw();
  if (id.ends) Draw_Line_Ends(context, *id.ends, vertices, options.rounded, colors.VG, width);
  if (context.regions && !context.inactive && !options.inHand)
    context.Add_Region(Hit_Strip(outline.Points(), 5 + width / 2));
}

void Fill_Area(DrawContext& context, FillCode code, const EntryColors& colors, Outline& outline, double width) {
  PenState& pen = context.surface.pen;
  pen.mode = code.Transparent() ? DrawMode::And : DrawMode::Copy;
  pen.pen = PenStyle::None;
  pen.fill = FillStyle::Solid;
  pen.FillColor = code.InForeground() ? colors.VG : colors.HG;
  outline.Draw();
  if (!code.Hatched()) return;
  pen.ForeColor = colors.VG;
  Draw_Hatch(context, outline.Points(), code.Hatch(), width);
}

void Draw_Area(DrawContext& context, const EntryRow& row, const EntryColors& colors, const LineOptions& options,
               Outline& outline, double width) {
  const FillCode code = FillCode::Parse(row.Yline);
  const bool inOneCall = code.Solid() && !code.Transparent();
  if (!code.None() && !inOneCall) Fill_Area(context, code, colors, outline, width);
  context.surface.pen = {.ForeColor = FrameWord::Parse(row.RA).framed ? colors.RA : colors.VG,
                         .FillColor = code.InForeground() ? colors.VG : colors.HG,
                         .mode = DrawMode::Copy,
                         .DrawWidth = width,
                         .pen = PenStyle::Solid,
                         .fill = inOneCall ? FillStyle::Solid : FillStyle::None};
  outline.Draw();
  if (context.regions && !context.inactive && !options.inHand) {
    const std::vector<QPointF>& points = outline.Points();
    context.Add_Region(QPolygonF(QList<QPointF>(points.begin(), points.end())));
  }
}

QPointF Across(QPointF from, QPointF to) {
  const double dx = to.x() - from.x(), dy = to.y() - from.y(), length = std::hypot(dx, dy);
  return {-dy / length, dx / length};
}

}  // namespace

LineStyle Line_Style(int stored) {
  static constexpr PenStyle styles[] = {PenStyle::Solid, PenStyle::Solid,   PenStyle::Dash,
                                        PenStyle::Dot,   PenStyle::DashDot, PenStyle::DashDotDot};
  const int number = std::abs(Stored_Number(stored));
  return {number <= 5 ? styles[number] : PenStyle::Solid, stored < 0};
}

QPolygonF Hit_Strip(std::span<const QPointF> points, double offset) {
  std::vector<QPointF> line;
  for (const QPointF& point : points)
    if (line.empty() || line.back() != point) line.push_back(point);
  const auto count = static_cast<qsizetype>(line.size());
  if (count < 2) return {};
  QPolygonF strip(2 * count);
  for (qsizetype i = 0; i < count; ++i) {
    const QPointF here = line[static_cast<size_t>(i)];
    const QPointF in =
        Across(i > 0 ? line[static_cast<size_t>(i - 1)] : here, i > 0 ? here : line[static_cast<size_t>(i + 1)]);
    const QPointF out = i + 1 < count ? Across(here, line[static_cast<size_t>(i + 1)]) : in;
    // At a bend both sides meet in one point; at a sharp one that point would run away, so it is held at twice the
    // offset.
    const double bend = std::max(0.5, 1 + QPointF::dotProduct(in, out));
    const QPointF side = (in + out) * (offset / bend);
    strip[i] = here + side;
    strip[2 * count - 1 - i] = here - side;
  }
  return strip;
}

bool Draw_Line_Entry(DrawContext& context, const EntryRow& row, const EntryId& id, std::span<const QPoint> vertices,
                     const EntryColors& colors, LineOptions options) {
  const bool line = id.IsLine();
  if (vertices.size() < 2 || (!line && !id.IsArea())) return false;
  const double width = context.view.Pen(row.Xline);
  // Dashes run on from vertex to vertex: a shortened line would show them elsewhere. Wide pens have none.
  const bool dashed = line && width <= 1 && Line_Style(row.Yline).pen != PenStyle::Solid;
  const bool all = options.keepAll || dashed;
  if (!Take_Vertices(context, vertices, width, options.rounded, all)) return false;

  const KeepPen keep(context.surface);
  Outline outline(context, options.rounded, !line);
  if (line)
    Draw_Line(context, row, id, vertices, colors, options, outline, width);
  else
    Draw_Area(context, row, colors, options, outline, width);
  if (options.inHand) Draw_Handles(context, vertices, colors.VG);
  return true;
}
