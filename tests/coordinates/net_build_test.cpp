#include "coordinates/net_build.h"

#include "support/nets.h"

namespace {

// A map of 3000 x 2200 pixels whose kilometre net is turned a little.
CoordinateState Turned_Utm() {
  CoordinateState state = Utm_Net({3000, 2200}, {701, 1486}, 472.5472F, 0.02120933);
  state.Yline = 472.8572F;
  return state;
}

CoordinateState Small_Utm(int xmap, int ymap, float distance, double slope = 0) {
  return Utm_Net({300, 200}, {xmap, ymap}, distance, slope);
}

using MetricNet = FluraxTest;

}  // namespace

TEST_F(MetricNet, LinesRunFromEdgeToEdge) {
  CoordinateState state = Turned_Utm();
  Build_Metric_Net(state);
  ASSERT_EQ(state.NetLLines.size(), 6U);
  ASSERT_EQ(state.NetBLines.size(), 5U);
  // Worked out by hand: 701 + 1486 t = 732.5 at the top, 701 - 715 t = 685.8 at the bottom.
  const NetPt top{733, 0}, bottom{686, 2201};
  EXPECT_EQ(std::tuple(state.NetLLines[1][0], state.NetLLines[1][1]), std::tuple(top, bottom));
  EXPECT_EQ(std::tuple(state.NetLLines[0][0].X, state.NetLLines[5][1].X), std::tuple(260, 2576));
  const NetPt left{0, 52}, right{3001, 116};
  EXPECT_EQ(std::tuple(state.NetBLines[0][0], state.NetBLines[0][1]), std::tuple(left, right));
  EXPECT_EQ(state.NetBLines[4][0].Y, 1944);
  EXPECT_EQ(std::tuple(state.NetLLabels[0].Text, state.NetBLabels[0].Text, state.NetBLabels[4].Text),
            std::tuple("R 645 000", "H5 515 000", "H5 511 000"));
  EXPECT_NEAR(state.NetB[1].Step, 3720.2, 0.1);
  EXPECT_EQ(state.NetB[1].Count, 1);
}

TEST_F(MetricNet, FindsTheMapFromAReferencePointOutsideAndEndsLinesAtItsSides) {
  for (const int xmap : {-9950, 10250}) {
    CoordinateState state = Small_Utm(xmap, 100, 100);
    Build_Metric_Net(state);
    ASSERT_EQ(state.NetLLines.size(), 3U) << xmap;
    EXPECT_EQ(state.NetLLines[0][0].X, 50);
    EXPECT_FLOAT_EQ(state.NetLLabels[0].Deg, static_cast<float>(646000 + (50 - xmap) * 10));
  }
  CoordinateState state = Small_Utm(30, 0, 100, -0.5);  // the line through the reference point leads to (130, 201)
  Build_Metric_Net(state);
  ASSERT_EQ(state.NetLLines.size(), 4U);
  const NetPt left{0, 141}, right{301, 143};
  EXPECT_EQ(std::tuple(state.NetLLines[0][0], state.NetLLines[3][1]), std::tuple(left, right));
  EXPECT_NEAR(state.NetLLabels[0].Y, 140.7, 0.01);
}

TEST_F(MetricNet, TellsWhyThereAreNoLinesAndWhichAreTooMany) {
  const std::tuple<int, int, float, int, size_t, size_t> cases[] = {
      {-20000, 150, 100, 6000, 0, 2}, {20000, 150, 100, 6010, 0, 2}, {50, 20000, 100, 6020, 3, 0},
      {-50, 100, 1000, 6000, 0, 1},   {50, 100, 0, 6010, 0, 0},      {50, 100, 0.5F, 5000, 500, 401},
      {50, 100, 0.602F, 0, 499, 333}};
  for (const auto& [xmap, ymap, distance, number, vertical, horizontal] : cases) {
    CoordinateState state = Small_Utm(xmap, ymap, distance);
    EXPECT_EQ(Error_Of([&] { Build_Metric_Net(state); }), number) << xmap << ' ' << ymap;
    EXPECT_EQ(std::pair(state.NetLLines.size(), state.NetBLines.size()), std::pair(vertical, horizontal))
        << xmap << ' ' << distance;
  }
  for (const bool vertical : {true, false}) {
    CoordinateState state = Small_Utm(50, 100, 100, 0.02120933);
    (vertical ? state.Xline : state.Yline) = 0.3F;
    EXPECT_EQ(Raised([&] { Build_Metric_Net(state); }).text,
              vertical ? "fehlerhafte Teilung der Längengrade." : "fehlerhafte Teilung der Breitengrade.");
  }
}

TEST_F(MetricNet, LabelsNeedRoom) {
  CoordinateState dense = Small_Utm(0, 0, 10);
  Build_Metric_Net(dense);
  const auto shown = std::count_if(dense.NetLLabels.begin(), dense.NetLLabels.end(),
                                   [](const NetLabel& label) { return !label.Text.isEmpty(); });
  EXPECT_TRUE(shown >= 2 && shown <= 8) << shown;  // a label is some 50 pixels wide
  CoordinateState every = Small_Utm(0, 0, 80);
  every.NetLabelEvery = 2;
  Build_Metric_Net(every);
  ASSERT_EQ(every.NetLLabels.size(), 4U);
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(every.NetLLabels[i].Text.isEmpty(), i == 1) << i;
}
