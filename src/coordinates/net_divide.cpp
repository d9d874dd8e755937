#include <QRegularExpression>
#include <QSizeF>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "coordinates/degree_text.h"
#include "coordinates/net_build.h"
#include "coordinates/net_clip.h"
#include "platform/error.h"
#include "platform/message_box.h"
#include "platform/text.h"

// Geographic nets: lines between the three measured parallels and the three measured meridians.

namespace {

constexpr int wrongKind = 5000, tooManyLines = 5010, wrongTables = 5020;
constexpr size_t maxLines = 500;
constexpr int labelLength = 15;
constexpr double straightPercent = 2;  // spacings that differ by no more count as equal

// The decimal number the float was read from: 49.8F is 49.8, not 49.79999924.
double As_Written(float value) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  double number = 0;
  std::from_chars(text, end, number);
  return number;
}

QString Shortest_Text(float value) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr;
  return QString::fromLatin1(text, static_cast<qsizetype>(end - text));
}

int Decimals_Of(const QString& text) {
  qsizetype end = text.indexOf(QRegularExpression(QStringLiteral("[.,]")));
  if (end < 0) return 0;
  const qsizetype point = end++;
  while (end < text.size() && text[end].isDigit()) ++end;
  return static_cast<int>(end - point - 1);
}

// Parallels or meridians, seen the same way: "across" is the coordinate that grows from line to line.
struct Family {
  const CoordinateState& state;
  bool parallels;
  const std::array<NetLine, 4>& lines;
  const std::array<std::vector<std::int16_t>, 4>& samples;
  std::array<int, 3> inner;  // reference points along which the spacing is measured
  std::array<int, 3> middle;

  double Across(int point) const {
    const RefPoint& ref = state.RefPoints[static_cast<size_t>(point)];
    return parallels ? ref.Y : ref.X;
  }
  double Degree(size_t line) const { return As_Written(lines[line].Deg); }
  QPointF Map_Point(double along, double across) const {
    return parallels ? QPointF(along, across) : QPointF(across, along);
  }
};

Family Family_Of(const CoordinateState& state, char letter) {
  if (letter == 'B') return {state, true, state.NetB, state.NetBPix, {1, 4, 7}, {2, 5, 8}};
  return {state, false, state.NetL, state.NetLPix, {4, 5, 6}, {4, 5, 6}};
}

double Quotient(double above, double below) {
  if (below == 0) Raise(errors::divisionByZero);
  return above / below;
}

// Where a degree value lies, and where it stands between the outer lines.
struct Spread {
  int mode;
  double perDegree;
  Circle circle;
  double firstDegree, middleDegree;
  double first, last, middle;
  double sign;  // +1: degrees grow with the pixels

  // Nothing where the circle ends.
  std::optional<double> Place(double degree) const {
    if (mode == 1) return first + sign * (degree - firstDegree) * perDegree;
    // The circle's equation from its middle point: far circles keep their digits.
    const double square =
        (middle - circle.y) * (middle - circle.y) + (degree - middleDegree) * (2 * circle.x - degree - middleDegree);
    if (square < 1) return std::nullopt;
    return middle < circle.y ? circle.y - std::sqrt(square) : circle.y + std::sqrt(square);
  }
  double Rel(double place) const { return Quotient(place - first, last - first); }
};

Spread Spread_Of(const Family& family, int mode, double perDegree) {
  const auto& points = mode == 2 ? family.middle : family.inner;
  Spread spread{mode,
                perDegree,
                {},
                family.Degree(1),
                family.Degree(2),
                family.Across(points[0]),
                family.Across(points[2]),
                family.Across(points[1]),
                family.parallels ? -1.0 : 1.0};
  if (mode == 2)
    spread.circle =
        Calc_Circle(family.Degree(1), spread.first, family.Degree(2), spread.middle, family.Degree(3), spread.last);
  return spread;
}

double Run_Start(const NetLine& line) { return std::abs(line.Kind) == 2 ? 1 : line.Start; }

struct BuiltLine {
  std::vector<NetPt> points;
  NetLabel label;
  bool onMap = false;
};

NetPt Rounded(QPointF point) { return {To_Int16(point.x()), To_Int16(point.y())}; }

// Points outside become gaps; next to the map they move to where the line crosses its edge.
BuiltLine Cut_To_Map(const std::vector<QPointF>& curve, QSizeF size) {
  constexpr double slack = 1e-3;  // a line on the very edge is on the map
  const QRectF map = QRectF(QPointF(0, 0), size).adjusted(-slack, -slack, slack, slack);
  BuiltLine line;
  line.points.assign(curve.size(), NetPt{netGap, netGap});
  for (size_t k = 1; k < curve.size(); ++k) {
    QPointF a = curve[k - 1], b = curve[k];
    if (!Clip_Segment(a, b, map)) continue;
    if (!line.onMap) {
      line.label.X = static_cast<float>(a.x());
      line.label.Y = static_cast<float>(a.y());
      line.onMap = true;
    }
    if (line.points[k - 1].X == netGap) line.points[k - 1] = Rounded(a);
    line.points[k] = Rounded(b);
  }
  return line;
}

// The line at `rel` between the measured lines 1 and 3.
BuiltLine Line_At(const Family& family, double rel) {
  const NetLine &one = family.lines[1], &three = family.lines[3];
  const auto &from = family.samples[1], &to = family.samples[3];
  const size_t count = static_cast<size_t>(std::min(one.Count, three.Count));
  const double start = Run_Start(one) + rel * (Run_Start(three) - Run_Start(one));
  std::vector<QPointF> curve(count);
  for (size_t k = 1; k <= count; ++k) {
    const double along = start + static_cast<double>(k - 1) * static_cast<double>(one.Step);
    curve[k - 1] = family.Map_Point(along, from[k] + rel * (to[k] - from[k]));
  }
  BuiltLine line = Cut_To_Map(curve, QSizeF(family.state.MapWidthPx, family.state.MapHeightPx));
  line.label.Rel = static_cast<float>(rel);
  return line;
}

BuiltLine Measured_Line(const Family& family, size_t n) {
  const NetLine& measured = family.lines[n];
  std::vector<QPointF> curve(static_cast<size_t>(measured.Count));
  for (size_t k = 1; k <= curve.size(); ++k) {
    const double along = Run_Start(measured) + static_cast<double>(k - 1) * static_cast<double>(measured.Step);
    curve[k - 1] = family.Map_Point(along, family.samples[n][k]);
  }
  BuiltLine line = Cut_To_Map(curve, QSizeF(family.state.MapWidthPx, family.state.MapHeightPx));
  line.label.Text = measured.Label;
  line.label.Deg = measured.Deg;
  line.label.Rel = static_cast<float>(n - 1) / 2;
  return line;
}

// Steps in degrees. One that is written with a cut fraction ("0.0166667") means whole minutes or seconds: else the
// lines would run away from the round values of the labels.
double Net_Step(const CoordinateState& state) {
  const double step = Val_Comma(state.NetDivText);
  const int decimals = Decimals_Of(state.NetDivText);
  if (state.format != DegreeFormat::Gms || decimals < 4) return step;
  const double seconds = step * 3600, slack = 0.5001 * std::pow(10, -decimals) * 3600;
  for (const double unit : {60.0, 1.0, 0.1, 0.01}) {
    const double whole = std::nearbyint(seconds / unit) * unit;
    if (whole >= unit && std::abs(whole - seconds) <= slack) return whole / 3600;
  }
  return step;
}

QString Number_Label(double value, int decimals) {
  QString pattern = QStringLiteral("###");
  if (decimals > 0) pattern += u'.' + QStringLiteral("0#######").left(decimals);
  QString text = Format(value, pattern);
  if (text.isEmpty() || text.startsWith(u',')) text.prepend(u'0');
  return text;
}

QString Line_Label(const CoordinateState& state, bool parallels, double degree) {
  const double value = std::abs(degree);
  const QString letter = parallels ? QStringLiteral("B") : QStringLiteral("L");
  const QString minus = degree < 0 ? QStringLiteral("-") : QString();
  QString text;
  if (state.NetPKG) {
    text = minus + Number_Label(value, Decimals_Of(state.NetDivText)) +
           (parallels ? QStringLiteral("H") : QStringLiteral("R"));
  } else if (state.format == DegreeFormat::Dec) {
    text = Number_Label(value, Decimals_Of(state.NetDivText)) + u'\u00B0' + minus + letter;
  } else {
    const QString number = QString::number(value, 'f', 10);
    text = GMS_Short(Dec_To_GMS((parallels ? u'y' : u'x') + number)) + minus + letter;
  }
  return text.left(labelLength);
}

void Check_Family(const Family& family) {
  for (size_t n = 1; n <= 3; ++n) {
    const NetLine& line = family.lines[n];
    const int kind = std::abs(line.Kind);
    if (kind != 1 && kind != 2)
      Raise(wrongKind, family.parallels ? QStringLiteral("fehlerhafte Teilung der Breitengrade.")
                                        : QStringLiteral("fehlerhafte Teilung der Längengrade."));
    if (line.Count < 1 || line.Step <= 0 || family.samples[n].size() <= static_cast<size_t>(line.Count))
      Raise(wrongTables, QStringLiteral("fehlerhafte Dimensionierung der Breiten- und Längengrade."));
  }
}

// The tables one family fills.
struct Tables {
  std::vector<std::vector<NetPt>>& lines;
  std::vector<NetLabel>& labels;

  void Add(BuiltLine line) {
    lines.push_back(std::move(line.points));
    labels.push_back(line.label);
  }
  void Turn() {
    std::reverse(lines.begin(), lines.end());
    std::reverse(labels.begin(), labels.end());
  }
  void Label_Every(int every) {
    if (every <= 1) return;
    for (size_t i = 0; i < labels.size(); ++i)
      if (i % static_cast<size_t>(every) != 0) labels[i].Text.clear();
  }
};

// One pass over the multiples of the step, from number `i` on, until a line does not meet the map. False if there are
// too many lines.
bool Walk(const Family& family, const Spread& spread, Tables& tables, long long i, int direction) {
  const double step = Net_Step(family.state);
  const double bound = family.state.NetPKG ? 1e9 : family.parallels ? 90 : 180;
  for (;; i += direction) {
    const double degree = static_cast<double>(i) * step;
    if (std::abs(degree) > bound + step / 1e6) return true;
    const auto place = spread.Place(degree);
    if (!place) return true;
    BuiltLine line = Line_At(family, spread.Rel(*place));
    if (!line.onMap) return true;
    if (tables.lines.size() >= maxLines) return false;
    line.label.Deg = static_cast<float>(degree);
    line.label.Text = Line_Label(family.state, family.parallels, degree);
    tables.Add(std::move(line));
  }
}

void Divide(const Family& family, Tables& tables, int mode, double perDegree) {
  Check_Family(family);
  bool complete = true;
  if (mode == 0) {
    for (size_t n = 1; n <= 3; ++n) tables.Add(Measured_Line(family, n));
  } else {
    const Spread spread = Spread_Of(family, mode, perDegree);
    // Away from the first measured line to both sides; the table runs from north to south and from west to east.
    const double number = std::ceil(spread.firstDegree / Net_Step(family.state));
    const auto first = static_cast<long long>(number);
    const int outward = family.parallels ? 1 : -1;
    complete = Walk(family, spread, tables, outward > 0 ? first : first - 1, outward);
    tables.Turn();
    complete = complete && Walk(family, spread, tables, outward > 0 ? first - 1 : first, -outward);
  }
  tables.Label_Every(family.state.NetLabelEvery);
  if (!complete) Raise(tooManyLines, QStringLiteral("Fehler: zuviele Teillinien"));
}

void Divide_Breite(CoordinateState& state, int mode, double perDegree) {
  Tables tables{state.NetBLines, state.NetBLabels};
  Divide(Family_Of(state, 'B'), tables, mode, perDegree);
}

void Divide_Laenge(CoordinateState& state, int mode, double perDegree) {
  Tables tables{state.NetLLines, state.NetLLabels};
  Divide(Family_Of(state, 'L'), tables, mode, perDegree);
}

QString Fault_Title(const Error& error, char letter) {
  if (error.number != wrongKind && error.number != tooManyLines)
    return QStringLiteral("Fehler: geografische Koordinaten unterteilen");
  return letter == 'B' ? QStringLiteral("Fehler: geogr. Breitengrade unterteilen")
                       : QStringLiteral("Fehler: geogr. Längengrade unterteilen");
}

}  // namespace

Circle Calc_Circle(double x1, double y1, double x2, double y2, double x3, double y3) {
  constexpr double instead = 0.1;  // of a zero to divide by
  const double mx1 = (x1 + x2) / 2, my1 = (y1 + y2) / 2, dx1 = x2 - x1;
  const double mx2 = (x2 + x3) / 2, my2 = (y2 + y3) / 2, dx2 = x3 - x2;
  const double dy1 = y2 == y1 ? instead : -(y2 - y1), dy2 = y3 == y2 ? instead : -(y3 - y2);
  double det = dy1 * dx2 - dx1 * dy2;
  if (det == 0) det = instead;
  Circle circle;
  circle.x = (my1 * dy1 * dy2 + mx2 * dy1 * dx2 - mx1 * dx1 * dy2 - my2 * dy1 * dy2) / det;
  circle.y = (circle.x - mx1) * dx1 / dy1 + my1;
  circle.r = std::hypot(circle.x - x1, circle.y - y1);
  if (!std::isfinite(circle.r))
    Raise(errors::overflow, QStringLiteral("Kreisbogen der Koordinaten kann nicht berechnet werden."));
  return circle;
}

int Teilmodus(const CoordinateState& state, char letter, double& perDegree) {
  perDegree = 0;
  if (state.NetDiv <= 0) return 0;
  const Family family = Family_Of(state, letter);
  const double sign = family.parallels ? -1 : 1;
  const auto spacing = [&](size_t n) {
    return Quotient(family.Across(family.inner[n]) - family.Across(family.inner[n - 1]),
                    sign * (family.Degree(n + 1) - family.Degree(n)));
  };
  const double p1 = spacing(1), p2 = spacing(2);
  const double percent = std::abs(Quotient(p1 - p2, p1)) * 100;
  constexpr double noise = 1e-7;
  if (percent > straightPercent + noise) return 2;
  perDegree = (p1 + p2) / 2;
  return 1;
}

void Net_Divide(CoordinateState& state) {
  state.NetLLines.clear();
  state.NetBLines.clear();
  state.NetLLabels.clear();
  state.NetBLabels.clear();
  if (static_cast<float>(Val_Comma(state.NetDivText)) != state.NetDiv) state.NetDivText = Shortest_Text(state.NetDiv);
  for (const char letter : {'B', 'L'}) {
    try {
      double perDegree = 0;
      const int mode = Teilmodus(state, letter, perDegree);
      letter == 'B' ? Divide_Breite(state, mode, perDegree) : Divide_Laenge(state, mode, perDegree);
    } catch (const Error& error) {
      if (Message_Box(error.text, MsgButtons::OkCancel, MsgIcon::Information, Fault_Title(error, letter)) ==
          MsgAnswer::Cancel)
        return;
    }
  }
}
