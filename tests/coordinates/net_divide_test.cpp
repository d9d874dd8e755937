#include "coordinates/net_build.h"

namespace {

// Three parallels and three meridians, straight, at these pixels. The parallels rise by `tilt` pixels over the map.
struct GeoNet {
  int width = 600, height = 400;
  std::array<float, 3> latitudes{50.2F, 50.1F, 50.0F}, longitudes{11.0F, 11.1F, 11.2F};
  std::array<int, 3> rows{100, 200, 300}, columns{100, 300, 500};
  int tilt = 0;
  DegreeFormat format = DegreeFormat::Dec;
  QString division{};

  CoordinateState Make() const {
    constexpr int step = 10, start = -5;
    CoordinateState state;
    state.Grid = gridGeographic;
    state.MapWidthPx = width;
    state.MapHeightPx = height;
    state.format = format;
    state.NetDiv = division.toFloat();
    state.NetDivText = division;
    const auto fill = [&](NetLine& line, std::vector<std::int16_t>& samples, float degree, int at, int run, int bend) {
      line.StartF = start;
      line.Start = start;
      line.Step = step;
      line.Kind = 1;
      line.Deg = degree;
      line.Deg64 = static_cast<double>(degree);
      line.Label = QStringLiteral("gemessen");
      line.Count = static_cast<std::int16_t>(run / step + 3);
      samples.assign(static_cast<size_t>(line.Count) + 1, 0);
      for (int k = 1; k <= line.Count; ++k)
        samples[static_cast<size_t>(k)] =
            static_cast<std::int16_t>(std::lround(at - static_cast<double>(bend) * (start + (k - 1) * step) / run));
    };
    for (size_t n = 1; n <= 3; ++n) {
      fill(state.NetB[n], state.NetBPix[n], latitudes[n - 1], rows[n - 1], width, tilt);
      fill(state.NetL[n], state.NetLPix[n], longitudes[n - 1], columns[n - 1], height, 0);
      for (size_t m = 1; m <= 3; ++m) {
        RefPoint& point = state.RefPoints[3 * (n - 1) + m];
        point.X = columns[m - 1];
        point.Y = static_cast<int>(std::lround(rows[n - 1] - static_cast<double>(tilt) * point.X / width));
      }
    }
    return state;
  }
};

// Where line i crosses the middle of the map.
int Middle_Row(const CoordinateState& state, size_t i) { return state.NetBLines[i][31].Y; }
int Middle_Column(const CoordinateState& state, size_t i) { return state.NetLLines[i][21].X; }

QStringList Labels(const std::vector<NetLabel>& labels) {
  QStringList texts;
  for (const NetLabel& label : labels) texts << label.Text;
  return texts;
}

using GeographicNet = FluraxTest;

}  // namespace

TEST_F(GeographicNet, WithoutDivisionTheMeasuredLinesAlone) {
  CoordinateState state = GeoNet{.rows = {150, 200, 300}, .tilt = 120, .division = {}}.Make();
  Net_Divide(state);
  ASSERT_EQ(state.NetBLines.size(), 3U);
  ASSERT_EQ(state.NetLLines.size(), 3U);
  EXPECT_EQ(Labels(state.NetBLabels), QStringList(3, QStringLiteral("gemessen")));
  // Sample 1 lies 5 pixels left of the map: the line begins at the edge. The last ones are off the map.
  const NetPt edge{0, 150}, second{5, 149}, behind{netGap, netGap};
  const auto& line = state.NetBLines[0];
  ASSERT_EQ(line.size(), 63U);
  EXPECT_EQ(line[0], edge);
  EXPECT_EQ(line[1], second);
  EXPECT_EQ(line[61].X, 600);
  EXPECT_EQ(line[62], behind);
  EXPECT_NEAR(state.NetBLabels[0].X, 0, 0.01);
}

TEST_F(GeographicNet, LinesLieAtMultiplesOfTheDivision) {
  CoordinateState state = GeoNet{.tilt = 60, .division = QStringLiteral("0.05")}.Make();
  Net_Divide(state);
  // 1000 pixels a degree along the parallels, 2000 along the meridians; the tilt lifts the middle by 30.
  EXPECT_EQ(Labels(state.NetBLabels),
            QString("50,3°B 50,25°B 50,2°B 50,15°B 50,1°B 50,05°B 50,0°B 49,95°B 49,9°B 49,85°B").split(u' '));
  ASSERT_EQ(state.NetBLines.size(), 10U);  // the last one cuts the lower right corner alone
  EXPECT_EQ(Middle_Row(state, 9), netGap);
  for (size_t i = 1; i < 9; ++i) EXPECT_NEAR(Middle_Row(state, i), -30 + 50 * static_cast<int>(i), 1) << i;
  ASSERT_EQ(state.NetLLines.size(), 7U);
  for (size_t i = 0; i < 7; ++i) EXPECT_EQ(Middle_Column(state, i), 100 * static_cast<int>(i)) << i;
  EXPECT_FLOAT_EQ(state.NetBLabels[2].Rel, 0);
  EXPECT_FLOAT_EQ(state.NetBLabels[6].Rel, 1);
}

TEST_F(GeographicNet, MinutesWrittenAsACutFractionAreMinutes) {
  // The points of a map at 49°44' to 49°46' north, 11°01' to 11°05' east.
  const GeoNet map{.width = 3000,
                   .height = 2200,
                   .latitudes = {49.76667F, 49.75F, 49.73333F},
                   .longitudes = {11.01667F, 11.05F, 11.08333F},
                   .rows = {212, 1088, 1963},
                   .columns = {374, 1509, 2643},
                   .format = DegreeFormat::Gms,
                   .division = QStringLiteral("0.0166667")};
  CoordinateState state = map.Make();
  Net_Divide(state);
  EXPECT_EQ(Labels(state.NetBLabels), QString("49°46'B 49°45'B 49°44'B").split(u' '));
  EXPECT_EQ(Labels(state.NetLLabels), QString("011°01'L 011°02'L 011°03'L 011°04'L 011°05'L").split(u' '));
  for (size_t i = 0; i < 3; ++i) EXPECT_NEAR(state.NetBLines[i][100].Y, map.rows[i], 1);
  const int columns[] = {374, 941, 1509, 2076, 2643};
  for (size_t i = 0; i < 5; ++i) EXPECT_NEAR(state.NetLLines[i][100].X, columns[i], 1);
}

TEST_F(GeographicNet, SpacingsThatDifferByMoreThanTwoPercentAreBent) {
  double perDegree = 0;
  GeoNet net{.rows = {100, 200, 302}, .division = QStringLiteral("0.05")};
  EXPECT_EQ(Teilmodus(net.Make(), 'B', perDegree), 1);
  EXPECT_NEAR(perDegree, 1010, 1e-6);
  net.rows[2] = 303;
  EXPECT_EQ(Teilmodus(net.Make(), 'B', perDegree), 2);
  net.division = QStringLiteral("0");
  EXPECT_EQ(Teilmodus(net.Make(), 'B', perDegree), 0);
  EXPECT_TRUE(std::isfinite(Calc_Circle(0, 0, 1, 1, 2, 2).r)) << "three points on one line";
  // Bent either way: the lines go through the measured ones, and those between stand on the bend.
  for (const int middle : {180, 220}) {
    net = {.rows = {100, middle, 300}, .tilt = 60, .division = QStringLiteral("0.05")};
    CoordinateState state = net.Make();
    Net_Divide(state);
    size_t first = 0;
    while (first < state.NetBLabels.size() && state.NetBLabels[first].Text != QStringLiteral("50,2°B")) ++first;
    ASSERT_LE(first + 4, state.NetBLines.size() - 1) << middle;
    const int expected[] = {100, middle, 300};
    for (size_t n = 0; n < 3; ++n) EXPECT_NEAR(Middle_Row(state, first + 2 * n) + 30, expected[n], 1) << middle;
    const int upper = Middle_Row(state, first + 1) - Middle_Row(state, first),
              lower = Middle_Row(state, first + 4) - Middle_Row(state, first + 3);
    EXPECT_EQ(middle < 200, upper < lower) << upper << ' ' << lower;
  }
}

TEST_F(GeographicNet, TooManyLinesEndTheNetWithWhatThereIs) {
  for (const auto answer : {MsgAnswer::Ok, MsgAnswer::Cancel}) {
    CoordinateState state = GeoNet{.division = QStringLiteral("0.0005")}.Make();
    MessageScript script("Fehler: zuviele Teillinien", answer);
    if (answer == MsgAnswer::Ok) script.Expect("Fehler: zuviele Teillinien");
    Net_Divide(state);
    EXPECT_EQ(script.Seen()[0].title, "Fehler: geogr. Breitengrade unterteilen");
    EXPECT_EQ(state.NetBLines.size(), 500U);
    EXPECT_EQ(state.NetLLines.size(), answer == MsgAnswer::Ok ? 500U : 0U);
  }
}

TEST_F(GeographicNet, FaultsOfTheFileAreToldANetOffTheMapIsNone) {
  const std::tuple<const char*, const char*, std::function<void(CoordinateState&)>> cases[] = {
      {"fehlerhafte Teilung der Längengrade.", "Fehler: geogr. Längengrade unterteilen",
       [](CoordinateState& state) { state.NetL[2].Kind = 3; }},
      {"fehlerhafte Dimensionierung der Breiten- und Längengrade.", "Fehler: geografische Koordinaten unterteilen",
       [](CoordinateState& state) { state.NetLPix[3].resize(5); }},
      {"Division durch Null", "Fehler: geografische Koordinaten unterteilen",
       [](CoordinateState& state) { state.NetL[3].Deg = state.NetL[2].Deg; }}};
  for (const auto& [text, title, spoil] : cases) {
    CoordinateState state = GeoNet{.division = "0.05"}.Make();
    spoil(state);
    MessageScript script(text);
    Net_Divide(state);
    EXPECT_EQ(script.Seen()[0].title, title);
    EXPECT_EQ(state.NetBLines.size(), 9U);
    EXPECT_TRUE(state.NetLLines.empty());
  }
  CoordinateState state =
      GeoNet{.rows = {5100, 5200, 5300}, .columns = {7100, 7300, 7500}, .division = QStringLiteral("0.05")}.Make();
  Net_Divide(state);
  EXPECT_TRUE(state.NetBLines.empty());
  EXPECT_TRUE(state.NetLLines.empty());
}

TEST_F(GeographicNet, KilometresAndThinnedLabels) {
  GeoNet net{.latitudes = {5512, 5511, 5510}, .longitudes = {4432, 4433, 4434}, .division = QStringLiteral("1")};
  CoordinateState state = net.Make();
  state.NetPKG = true;
  state.NetLabelEvery = 2;
  Net_Divide(state);
  EXPECT_EQ(Labels(state.NetBLabels), QStringList({"5513H", "", "5511H", "", "5509H"}));
  EXPECT_EQ(Labels(state.NetLLabels), QStringList({"4432R", "", "4434R"}));
}
