#include "objects/net_print.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <vector>

#include "coordinates/geometry.h"
#include "coordinates/net_clip.h"
#include "objects/net_draw.h"
#include "platform/message_box.h"

namespace {

constexpr double labelGap = 2;  // between the printed area and its labels, surface pixels
constexpr double wordGap = 4;   // between neighbouring labels
const FontKey labelFont{QStringLiteral("Arial"), 8};

// The margins "links", "rechts", "oben", "unten".
enum class Side { Left, Right, Top, Bottom };
constexpr std::array sides{Side::Left, Side::Right, Side::Top, Side::Bottom};

struct Span {
  double from, to;
};

class Sheet {
 public:
  Sheet(DrawContext& drawing, const CoordinateState& net, const QRectF& printedArea, const QMarginsF& frame)
      : context(drawing), state(net), area(printedArea), margins(frame) {}

  void Print_Title();
  void Print_Line(const std::vector<NetPt>& line, const QString& label);

 private:
  QPointF Place(NetPt point) const { return context.view.Point(QPointF(point.X, point.Y)); }
  double Margin(Side side) const;
  std::pair<QPointF, QPointF> Edge(Side side) const;
  bool Take(Side side, double from, double to);
  void Print_Label(Side side, QPointF at, const QString& text);

  DrawContext& context;
  const CoordinateState& state;
  QRectF area;
  QMarginsF margins;
  std::array<std::vector<Span>, 4> taken;
};

double Sheet::Margin(Side side) const {
  switch (side) {
    case Side::Left:
      return margins.left();
    case Side::Right:
      return margins.right();
    case Side::Top:
      return margins.top();
    default:
      return margins.bottom();
  }
}

std::pair<QPointF, QPointF> Sheet::Edge(Side side) const {
  switch (side) {
    case Side::Left:
      return {area.topLeft(), area.bottomLeft()};
    case Side::Right:
      return {area.topRight(), area.bottomRight()};
    case Side::Top:
      return {area.topLeft(), area.topRight()};
    default:
      return {area.bottomLeft(), area.bottomRight()};
  }
}

// Reserves a stretch along a margin; false if something stands there.
bool Sheet::Take(Side side, double from, double to) {
  auto& spans = taken[static_cast<size_t>(side)];
  for (const Span& span : spans)
    if (from < span.to + wordGap && to > span.from - wordGap) return false;
  spans.push_back({from, to});
  return true;
}

void Sheet::Print_Label(Side side, QPointF at, const QString& text) {
  Surface& surface = context.surface;
  const double width = surface.TextWidth(text), height = surface.TextHeight(text);
  if (text.isEmpty() || Margin(side) < height + labelGap) return;
  const bool upright = side == Side::Left || side == Side::Right;
  const double middle = upright ? at.y() : at.x();
  if (!Take(side, middle - width / 2, middle + width / 2)) return;
  switch (side) {
    case Side::Left:
      return surface.PrintRotated({area.left() - labelGap - height, middle + width / 2}, text, 90);
    case Side::Right:
      return surface.PrintRotated({area.right() + labelGap + height, middle - width / 2}, text, 270);
    case Side::Top:
      return surface.Print({middle - width / 2, area.top() - labelGap - height}, text);
    default:
      return surface.Print({middle - width / 2, area.bottom() + labelGap}, text);
  }
}

void Sheet::Print_Line(const std::vector<NetPt>& line, const QString& label) {
  std::vector<QPointF> run;
  const auto flush = [&] {
    if (run.size() > 1) context.surface.Polyline(run);
    run.clear();
  };
  std::array<bool, 4> labelled{};
  for (size_t k = 1; k < line.size(); ++k) {
    if (line[k - 1].X == netGap || line[k].X == netGap) continue;
    const QPointF from = Place(line[k - 1]), to = Place(line[k]);
    QPointF a = from, b = to;
    if (!Clip_Segment(a, b, area)) continue;
    if (run.empty() || run.back() != a) {
      flush();
      run.push_back(a);
    }
    run.push_back(b);
    for (const Side side : sides) {
      const auto [start, end] = Edge(side);
      double x = 0, y = 0;
      if (labelled[static_cast<size_t>(side)] ||
          Line_Intersect(from.x(), from.y(), to.x(), to.y(), start.x(), start.y(), end.x(), end.y(), x, y) == 0)
        continue;
      labelled[static_cast<size_t>(side)] = true;
      Print_Label(side, {x, y}, label);
    }
  }
  flush();
}

// Beside the labels of the margin, in a second row where there is room for one.
void Sheet::Print_Title() {
  QStringList words{Grid_Type_Text(state).trimmed()};
  const QString zone = state.NetPKG ? state.PkgZone.trimmed() : state.Geographic() ? QString() : state.ZoneText;
  if (!zone.isEmpty()) words << QStringLiteral("Zone: ") + zone;
  if (!state.GridDatum.isEmpty()) words << QStringLiteral("Datum: ") + state.GridDatum;
  const QString text = words.join(QStringLiteral("   "));
  Surface& surface = context.surface;
  const double row = surface.TextHeight(text) + labelGap;
  const FontKey font{Font_Installed(state.NetFont) && !state.NetFont.isEmpty() ? state.NetFont : labelFont.family,
                     std::clamp(static_cast<double>(state.NetFontSize), 6.0, 24.0)};
  surface.SetFont(font);
  const double width = surface.TextWidth(text), height = surface.TextHeight(text);
  const Side side = margins.bottom() >= height + labelGap ? Side::Bottom : Side::Top;
  const double margin = Margin(side);
  if (margin >= height + labelGap) {
    const bool twoRows = margin >= row + height + labelGap;
    if (!twoRows) Take(side, area.left(), area.left() + width);
    const double off = (twoRows ? row : 0) + labelGap;
    surface.Print({area.left(), side == Side::Bottom ? area.bottom() + off : area.top() - off - height}, text);
  }
  surface.SetFont(labelFont);
}

}  // namespace

void Print_Net(DrawContext& context, const CoordinateState& state, const QRectF& printedArea,
               const QMarginsF& margins) {
  try {
    const KeepPen keep(context.surface);
    Net_Font(context.surface, state);
    context.surface.pen.DrawWidth = std::clamp(state.GridLnBreite, 1, 10);
    context.surface.SetFont(labelFont);
    Sheet sheet(context, state, printedArea, margins);
    sheet.Print_Title();
    const auto print = [&](const auto& lines, const auto& labels) {
      for (size_t i = 0; i < std::min(lines.size(), labels.size()); ++i)
        sheet.Print_Line(lines[i], labels[i].Text.trimmed());
    };
    print(state.NetBLines, state.NetBLabels);
    print(state.NetLLines, state.NetLLabels);
  } catch (const Error&) {
    Message_Box(QStringLiteral("Ein Fehler ist aufgetreten beim Zeichnen der Koordinaten"), MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Fehler: Koordinatennetz zeichnen"));
  }
}
