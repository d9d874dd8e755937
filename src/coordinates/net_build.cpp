#include "coordinates/net_build.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "coordinates/net_clip.h"
#include "platform/error.h"
#include "platform/surface.h"
#include "platform/text.h"

namespace {

constexpr int tooManyLines = 5000, noLineFromLeft = 6000, noLineFromRight = 6010, noLineAcross = 6020;
constexpr int maxLines = 500;
constexpr int maxSearch = 100;  // lines tried before one meets the map
constexpr int labelLength = 15;

// One family of the net: a line from edge to edge and its repetitions.
struct Family {
  QPointF from, to;  // line 0
  QPointF step;      // to the next line
  QRectF map;
  double first = 0, perLine = 0;  // metres of line 0, and added a line
  char16_t letter = u'R';

  bool Meets(int k) const {
    QPointF a = from + k * step, b = to + k * step;
    // The last column and row of the clip lie beyond the map.
    return Clip_Segment(a, b, map.adjusted(0, 0, -1, -1));
  }
  double Lowest(int k) const {
    const QPointF a = from + k * step, b = to + k * step;
    return letter == u'R' ? std::max(a.x(), b.x()) : std::max(a.y(), b.y());
  }
};

// The first line (lowest k) that meets the map.
std::optional<int> First_Line(const Family& family) {
  const bool before = family.Lowest(0) < 0;
  const int direction = before ? 1 : -1;
  int k = 0;
  while (!family.Meets(k)) {
    // Past the map, or too far from it.
    if ((family.Lowest(k) < 0) != before || std::abs(k) >= maxSearch) return std::nullopt;
    k += direction;
  }
  while (!before && k > -2 * maxLines && family.Meets(k - 1)) --k;
  return k;
}

NetPt Rounded(QPointF point) { return {To_Int16(point.x()), To_Int16(point.y())}; }

// True if more lines meet the map than there may be: the first ones are kept.
bool Build_Family(const Family& family, int first, std::vector<std::vector<NetPt>>& lines,
                  std::vector<NetLabel>& labels) {
  for (int k = first; family.Meets(k); ++k) {
    if (lines.size() == maxLines) return true;
    QPointF a = family.from + k * family.step, b = family.to + k * family.step;
    Clip_Segment(a, b, family.map);
    lines.push_back({Rounded(a), Rounded(b)});
    const double value = family.first + static_cast<double>(k) * family.perLine;
    NetLabel label;
    label.X = static_cast<float>(a.x());
    label.Y = static_cast<float>(a.y());
    label.Deg = static_cast<float>(value);
    label.Text = (QString(family.letter) + Format(value, QStringLiteral("# ### ##0"))).left(labelLength);
    labels.push_back(label);
  }
  return false;
}

// Labels that would lie over the one before, or for which the map has no room, lose their text.
void Fit_Labels(std::vector<NetLabel>& labels, bool across, double room, int every) {
  QImage scratch = Make_Canvas(1, 1);
  const auto surface = Make_Surface(scratch);
  surface->SetFont({QStringLiteral("Arial"), 8});
  double end = 0;
  for (size_t i = 0; i < labels.size(); ++i) {
    NetLabel& label = labels[i];
    const int size = across ? surface->TextHeight(label.Text) : surface->TextWidth(label.Text);
    const double start =
        std::clamp(static_cast<double>(across ? label.Y : label.X) - size / 2.0, 0.0, std::max(0.0, room - size));
    if ((every > 1 && i % static_cast<size_t>(every) != 0) || start < end || start + size > room)
      label.Text.clear();
    else
      end = start + size;
  }
}

Family Vertical_Family(const CoordinateState& state, const QRectF& map) {
  const double t = state.Inclin;
  return {{std::nearbyint(state.Xmap + state.Ymap * t), 0},
          {std::nearbyint(state.Xmap + (state.Ymap - map.height()) * t), map.height()},
          {static_cast<double>(state.Xline), 0},
          map,
          static_cast<double>(state.GridR),
          static_cast<double>(state.Gwidth),
          u'R'};
}

Family Horizontal_Family(const CoordinateState& state, const QRectF& map) {
  const double t = state.Inclin;
  return {{0, std::nearbyint(state.Ymap - state.Xmap * t)},
          {map.width(), std::nearbyint(state.Ymap - (state.Xmap - map.width()) * t)},
          {0, static_cast<double>(state.Yline)},
          map,
          static_cast<double>(state.GridH),
          -static_cast<double>(state.Gwidth),
          u'H'};
}

// The number of the error that is to be raised, 0 for none.
int Build(const Family& family, bool goodStep, int every, std::vector<std::vector<NetPt>>& lines,
          std::vector<NetLabel>& labels) {
  const bool across = family.letter == u'H';
  const auto first = goodStep ? First_Line(family) : std::nullopt;
  if (!first) return across ? noLineAcross : family.Lowest(0) < 0 ? noLineFromLeft : noLineFromRight;
  const bool tooMany = Build_Family(family, *first, lines, labels);
  Fit_Labels(labels, across, across ? family.map.height() : family.map.width(), every);
  return tooMany ? tooManyLines : 0;
}

}  // namespace

void Build_Metric_Net(CoordinateState& state) {
  state.NetLLines.clear();
  state.NetBLines.clear();
  state.NetLLabels.clear();
  state.NetBLabels.clear();
  const QRectF map(0, 0, state.MapWidthPx + 1, state.MapHeightPx + 1);
  for (NetLine* line : {&state.NetB[1], &state.NetL[1]}) {
    line->Step = static_cast<float>(std::hypot(state.MapWidthPx, state.MapHeightPx));
    line->Count = 1;
    line->Kind = 1;
  }
  // Both families are built before a fault is told: who goes on has as much of the net as there is.
  const int vertical =
      Build(Vertical_Family(state, map), state.Xline > 0, state.NetLabelEvery, state.NetLLines, state.NetLLabels);
  const int horizontal =
      Build(Horizontal_Family(state, map), state.Yline > 0, state.NetLabelEvery, state.NetBLines, state.NetBLabels);
  const int number = vertical != 0 ? vertical : horizontal;
  if (number == tooManyLines)
    Raise(number, vertical == number ? QStringLiteral("fehlerhafte Teilung der Längengrade.")
                                     : QStringLiteral("fehlerhafte Teilung der Breitengrade."));
  if (number != 0) Raise(number);
}
