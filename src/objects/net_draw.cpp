#include "objects/net_draw.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "coordinates/net_clip.h"
#include "platform/message_box.h"
#include "state/global_state.h"

namespace {

constexpr double labelEdge = 2;  // of the labels from the edge of the view, surface pixels
constexpr double labelAir = 2;   // between a label and the start of its line
const QString labelFont = QStringLiteral("Courier New");
constexpr double labelSize = 8;

struct NetFamily {
  const std::vector<std::vector<NetPt>>& lines;
  const std::vector<NetLabel>& labels;
  bool across;  // parallels and Hochwert lines: labels on the left
  double step;  // between samples, map pixels
};

bool Is_Gap(NetPt point) { return point.X == netGap && point.Y == netGap; }

// The part of the map that is seen, a little wider.
struct MapWindow {
  int left, top, right, bottom;

  static MapWindow Of(const DrawContext& context) {
    const ViewTransform& view = context.view;
    const auto map_x = [&](double x) { return (x - view.originX) * view.Zoom + view.Left; };
    const auto map_y = [&](double y) { return (y - view.originY) * view.Zoom + view.Top; };
    const QRectF& window = context.window;
    constexpr int margin = 1;
    return {static_cast<int>(std::floor(map_x(window.left()))) - margin,
            static_cast<int>(std::floor(map_y(window.top()))) - margin,
            static_cast<int>(std::ceil(map_x(window.right()))) + margin,
            static_cast<int>(std::ceil(map_y(window.bottom()))) + margin};
  }
  bool May_Show(NetPt a, NetPt b) const {
    return !Is_Gap(a) && !Is_Gap(b) && (a.X >= left || b.X >= left) && (a.X <= right || b.X <= right) &&
           (a.Y >= top || b.Y >= top) && (a.Y <= bottom || b.Y <= bottom);
  }
};

// Collects neighbouring segments and draws them as one line; middle points of level and upright runs are left out.
class LineRun {
 public:
  explicit LineRun(Surface& target) : surface(target) {}
  ~LineRun() { Flush(); }
  LineRun(const LineRun&) = delete;
  LineRun& operator=(const LineRun&) = delete;

  void Add(QPointF from, QPointF to) {
    if (points.empty() || points.back() != from) {
      Flush();
      points.push_back(from);
    }
    if (to == points.back()) return;
    if (points.size() > 1 && Straight_On(points[points.size() - 2], points.back(), to))
      points.back() = to;
    else
      points.push_back(to);
  }
  void Flush() {
    if (points.size() > 1) surface.Polyline(points);
    points.clear();
  }

 private:
  static bool Straight_On(QPointF a, QPointF b, QPointF c) {
    return (a.y() == b.y() && b.y() == c.y() && (a.x() < b.x()) == (b.x() < c.x())) ||
           (a.x() == b.x() && b.x() == c.x() && (a.y() < b.y()) == (b.y() < c.y()));
  }

  Surface& surface;
  std::vector<QPointF> points;
};

// Places the labels of one family and prints them. What they cover is told, so that no other one is put there.
class LabelRow {
 public:
  LabelRow(DrawContext& drawing, const CoordinateState& net, std::vector<QRectF>& covered)
      : context(drawing), state(net), taken(covered) {}

  // The area taken by the label of the line whose first visible segment is a-b; empty if it is not shown.
  QRectF Print(const QString& text, QPointF a, QPointF b, bool across) {
    if (text.isEmpty()) return {};
    Surface& surface = context.surface;
    const QRectF& window = context.window;
    const double width = surface.TextWidth(text), height = surface.TextHeight(QStringLiteral("A"));
    QRectF box(window.left() + labelEdge, window.top() + labelEdge, width, height);
    if (across) {
      if (a.x() == b.x()) return {};
      const double y = a.y() + (window.left() - a.x()) * (b.y() - a.y()) / (b.x() - a.x());
      box.moveTop(context.view.Round(y - height / 2));
      if (box.bottom() <= window.top() || box.top() >= window.bottom()) return {};
    } else {
      if (a.y() == b.y()) return {};
      const double x = a.x() + (window.top() - a.y()) * (b.x() - a.x()) / (b.y() - a.y());
      box.moveLeft(context.view.Round(x - width / 2));
      if (box.right() <= window.left() || box.left() >= window.right()) return {};
    }
    for (const QRectF& other : taken)
      if (other.intersects(box)) return {};
    taken.push_back(box);
    if (!state.NetTransp) surface.FilledBox(box, Color_Of(state.GridHG));
    surface.Print(box.topLeft(), text);
    return box;
  }

 private:
  DrawContext& context;
  const CoordinateState& state;
  std::vector<QRectF>& taken;
};

// From the label on, where there is one: else the line would strike it out.
void Add_Segment(LineRun& run, QPointF a, QPointF b, const QRectF& label, bool across, const DrawContext& context) {
  if (!label.isEmpty()) {
    QRectF rest(-1e6, -1e6, 2e6, 2e6);
    across ? rest.setLeft(label.right() + labelAir) : rest.setTop(label.bottom() + labelAir);
    if (!rest.contains(a) || !rest.contains(b)) {
      if (!Clip_Segment(a, b, rest)) return;
      a = {context.view.Round(a.x()), context.view.Round(a.y())};
      b = {context.view.Round(b.x()), context.view.Round(b.y())};
    }
  }
  run.Add(a, b);
}

// How a line is walked at a zoom: where its samples stand closer than the eye can tell, several at a time.
class Stride {
 public:
  Stride(double zoom, double step)
      : samples(wanted * zoom < 2 * step ? 1 : 2 * static_cast<size_t>(std::min(wanted * zoom / step, 64.0) / 2)),
        slack(2 * std::max(1, static_cast<int>(zoom / 2))) {}

  // The end of the next segment from sample k on.
  size_t Next(const std::vector<NetPt>& line, size_t k) const {
    const size_t end = std::min(k + samples, line.size() - 1);
    return end == k + samples && samples > 1 && Straight(line[k], line[k + samples / 2], line[end]) ? end : k + 1;
  }

 private:
  bool Straight(NetPt a, NetPt middle, NetPt b) const {
    return !Is_Gap(a) && !Is_Gap(middle) && !Is_Gap(b) && std::abs(a.X + b.X - 2 * middle.X) <= slack &&
           std::abs(a.Y + b.Y - 2 * middle.Y) <= slack;
  }

  static constexpr double wanted = 12;  // surface pixels
  size_t samples;                       // 1 or even, so that there is a middle one
  int slack;
};

// The end of a piece of the line from point k on that is long enough to show its slope: neighbouring points may fall
// together on the surface.
QPointF Slope_End(const DrawContext& context, const std::vector<NetPt>& line, size_t k, bool across) {
  constexpr double longEnough = 40;  // surface pixels
  const auto at = [&](size_t i) { return context.view.Point(QPointF(line[i].X, line[i].Y)); };
  const QPointF from = at(k);
  QPointF to = from;
  for (size_t i = k + 1; i < line.size() && line[i] != NetPt{netGap, netGap}; ++i) {
    to = at(i);
    if (std::abs(across ? to.x() - from.x() : to.y() - from.y()) >= longEnough) break;
  }
  return to;
}

void Draw_Line(DrawContext& context, const MapWindow& seen, const Stride& stride, const std::vector<NetPt>& line,
               const QString& text, bool across, LabelRow& labels) {
  LineRun run(context.surface);
  QRectF label;
  bool first = true;
  for (size_t k = 0, next = 0; k + 1 < line.size(); k = next) {
    next = stride.Next(line, k);
    if (!seen.May_Show(line[k], line[next])) continue;
    const QPointF a = context.view.Point(QPointF(line[k].X, line[k].Y)),
                  b = context.view.Point(QPointF(line[next].X, line[next].Y));
    if (first) label = labels.Print(text, a, Slope_End(context, line, k, across), across);
    first = false;
    Add_Segment(run, a, b, label, across, context);
  }
}

void Draw_Family(DrawContext& context, const CoordinateState& state, const NetFamily& family, LabelRow& labels) {
  const MapWindow seen = MapWindow::Of(context);
  const Stride stride(context.view.Zoom, std::abs(family.step));  // a file may tell it backward
  const size_t count = std::min(family.lines.size(), family.labels.size());
  for (size_t i = 0; i < count; ++i) {
    const QString text = state.NetLabelEvery >= 1 ? family.labels[i].Text.trimmed() : QString();
    Draw_Line(context, seen, stride, family.lines[i], text, family.across, labels);
  }
}

PenStyle Net_Style(int number) {
  return number >= 0 && number <= static_cast<int>(PenStyle::None) ? static_cast<PenStyle>(number) : PenStyle::Solid;
}

}  // namespace

void Net_Font(Surface& surface, const CoordinateState& state) {
  surface.SetFont({labelFont, labelSize});
  surface.pen.mode = DrawMode::Copy;
  surface.pen.fill = FillStyle::None;
  surface.pen.ForeColor = Color_Of(state.GridVG);
  surface.pen.FillColor = Color_Of(state.GridHG);
  surface.pen.DrawWidth = state.NetLnBreite >= 1 && state.NetLnBreite <= 19 ? state.NetLnBreite : 1;
  surface.pen.pen = Net_Style(state.NetLnStil);
}

void Draw_Net(DrawContext& context, const CoordinateState& state) {
  try {
    const KeepPen keep(context.surface);
    Net_Font(context.surface, state);
    context.surface.pen.DrawWidth = std::clamp(state.GridLnBreite, 1, 10);
    context.surface.pen.pen = Net_Style(state.GridLnStil);
    std::vector<QRectF> taken;
    LabelRow labels(context, state, taken);
    if (state.NetB[1].Step != 0 && state.NetB[1].Count >= 1)
      Draw_Family(context, state, {state.NetBLines, state.NetBLabels, true, static_cast<double>(state.NetB[1].Step)},
                  labels);
    if (state.NetL[1].Step != 0 && state.NetL[1].Count >= 1)
      Draw_Family(context, state, {state.NetLLines, state.NetLLabels, false, static_cast<double>(state.NetL[1].Step)},
                  labels);
  } catch (const Error&) {
    Message_Box(QStringLiteral("Ein Fehler ist aufgetreten beim Zeichnen der Koordinaten"), MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Fehler: Koordinatennetz zeichnen"));
  }
}
