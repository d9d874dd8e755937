#include "coordinates/conversions.h"

#include "coordinates/geometry.h"
#include "support/nets.h"

namespace {

CoordinateState Metric_Net(double inclination) {
  CoordinateState state = Utm_Net({3000, 2200}, {701, 1486}, 472.5472F, inclination);
  state.Yline = 400;
  return state;
}

// Lines that are turned and bent: `place` gives the other pixel coordinate of line n at a place of its run.
template <typename Place>
void Sample(NetLine& line, std::vector<std::int16_t>& pixels, int n, int count, Place place) {
  line.Start = -5;
  line.Step = 5;
  line.Count = static_cast<std::int16_t>(count);
  line.Kind = 1;
  pixels.assign(static_cast<size_t>(count) + 1, 0);
  for (int k = 1; k <= count; ++k)
    pixels[static_cast<size_t>(k)] = static_cast<std::int16_t>(std::lround(place(n, -5 + (k - 1) * 5.0)));
}

CoordinateState Bent_Net() {
  CoordinateState state;
  state.Grid = gridGeographic;
  state.MapWidthPx = 900;
  state.MapHeightPx = 700;
  for (int n = 1; n <= 3; ++n) {
    const auto i = static_cast<size_t>(n);
    state.NetB[i].Deg64 = 49.8 - 0.05 * n * n;
    state.NetL[i].Deg64 = 11 + 0.1 * n;
    state.NetB[i].Deg = static_cast<float>(state.NetB[i].Deg64);
    state.NetL[i].Deg = static_cast<float>(state.NetL[i].Deg64);
    Sample(state.NetB[i], state.NetBPix[i], n, 183,
           [](int line, double x) { return 80.0 * line * line - 40 + x * 0.1 + 15 * std::sin(x / 280); });
    Sample(state.NetL[i], state.NetLPix[i], n, 143,
           [](int line, double y) { return 250.0 * line - 100 - y * 0.08 + 12 * std::cos(y / 250 + line); });
  }
  return state;
}

TEST(Conversions, MetricPlacesComeBackExactlyAndOthersTellTheSide) {
  for (const double inclination : {0.0, 0.02120933, -0.3}) {
    const CoordinateState state = Metric_Net(inclination);
    for (int y = 0; y <= state.MapHeightPx; y += 37)
      for (int x = 0; x <= state.MapWidthPx; x += 37) {
        const QPointF place = Pixel_To_Koord(state, x, y);
        int backX = -1, backY = -1;
        ASSERT_EQ(Koord_To_Pixel(state, static_cast<int>(std::lround(place.x())),
                                 static_cast<int>(std::lround(place.y())), backX, backY),
                  onMap);
        ASSERT_EQ(QPoint(backX, backY), QPoint(x, y)) << inclination;
      }
  }
  const CoordinateState state = Metric_Net(0);
  EXPECT_EQ(Pixel_To_Koord(state, 701, 1486), QPointF(646000, 5512000));
  int x = -7, y = -7;
  EXPECT_EQ(Koord_To_Pixel(state, 647000, 5512000, x, y), onMap);  // Yline has no say
  EXPECT_EQ(QPoint(x, y), QPoint(1174, 1486));
  const QPointF right = Pixel_To_Koord(state, 3000, 0);
  EXPECT_EQ(Koord_To_Pixel(state, static_cast<int>(right.x()), static_cast<int>(right.y()), x, y), onMap);
  EXPECT_EQ(x, 3000);
  x = y = -7;
  EXPECT_EQ(Koord_To_Pixel(state, 640000, 5520000, x, y), tooFarUp);
  EXPECT_EQ(QPoint(x, y), QPoint(-7, -7));
  EXPECT_EQ(Koord_To_Pixel(state, 640000, 5512000, x, y), tooFarLeft);
  EXPECT_EQ(Koord_To_Pixel(state, 660000, 5512000, x, y), tooFarRight);
  EXPECT_EQ(Koord_To_Pixel(state, 647000, 5500000, x, y), tooFarDown);
  EXPECT_EQ(Error_Of([&] { Koord_To_Pixel(state, INT32_MIN, 0, x, y); }), errors::overflow);
}

TEST(Conversions, EveryPixelOfABentNetComesBackAndLinesHaveTheirDegrees) {
  const CoordinateState state = Bent_Net();
  double longitude = 0, latitude = 0;
  for (int y = 0; y <= state.MapHeightPx; y += 3)
    for (int x = 0; x <= state.MapWidthPx; x += 3) {
      double backX = -1, backY = -1;
      ASSERT_EQ(Pixel_To_Grad(state, x, y, longitude, latitude), 1);
      ASSERT_EQ(Grad_To_Pixel(state, longitude, latitude, backX, backY), onMap) << x << ' ' << y;
      ASSERT_LE(std::max(std::abs(backX - x), std::abs(backY - y)), 1) << x << ' ' << y;
    }
  // Sample 50 of the second meridian lies at y = 240, sample 100 of the second parallel at x = 490.
  ASSERT_EQ(Pixel_To_Grad(state, state.NetLPix[2][50], 240, longitude, latitude), 1);
  EXPECT_DOUBLE_EQ(longitude, 11.2);
  ASSERT_EQ(Pixel_To_Grad(state, 490, state.NetBPix[2][100], longitude, latitude), 1);
  EXPECT_DOUBLE_EQ(latitude, 49.6);
}

TEST(Conversions, PlacesBesideABentNetTellTheSide) {
  const CoordinateState state = Bent_Net();
  const std::tuple<int, int, int> cases[] = {{-3, 350, tooFarLeft},  {903, 350, tooFarRight}, {450, -3, tooFarUp},
                                             {450, 703, tooFarDown}, {-3, -3, tooFarUp},      {903, 703, tooFarDown},
                                             {-200, 40, tooFarLeft}, {1100, 660, tooFarRight}};
  double longitude = 0, latitude = 0, x = 0, y = 0;
  for (const auto& [left, top, code] : cases) {
    ASSERT_EQ(Pixel_To_Grad(state, left, top, longitude, latitude), 1);
    EXPECT_EQ(Grad_To_Pixel(state, longitude, latitude, x, y), code) << left << ' ' << top;
  }
  EXPECT_GE(Grad_To_Pixel(state, -170, 49, x, y), tooFarLeft);
  EXPECT_GE(Grad_To_Pixel(state, 1e300, 49.6, x, y), tooFarLeft);
}

TEST(Conversions, NetsWithoutCurvesOrDegrees) {
  double a = 0, b = 0;
  EXPECT_EQ(Pixel_To_Grad(CoordinateState{}, 10, 10, a, b), 0);
  CoordinateState state = Bent_Net();
  for (NetLine& line : state.NetL) line.Deg64 = 11;
  MessageScript script;
  const QString title = QStringLiteral("Fehler: Grad->Pixel");
  script.Expect(title, MsgAnswer::Cancel).Expect(QStringLiteral("Division durch Null"));
  EXPECT_EQ(Grad_To_Pixel(state, 11, 49.6, a, b), conversionCancelled);
  EXPECT_NE(Grad_To_Pixel(state, 11, 49.6, a, b), conversionCancelled);
}

TEST(Conversions, TextsOfAPlace) {
  CoordinateState state = Bent_Net();
  const auto texts = [&state](double longitude, double latitude) {
    const auto [first, second] = Grad_Texts(state, longitude, latitude);
    return first + u'|' + second;
  };
  EXPECT_EQ(texts(11.5, -49.75), " Länge Ost: 011°30'00,00¨| Breite Süd:  -49°45'00,00¨");
  EXPECT_EQ(Grad_Texts(state, 181, 49).first, "");
  state.NetDec = true;
  EXPECT_EQ(texts(-11.5, 49.75), " Länge West:  -11,500000°| Breite Nord: 49,750000°");
  state.NetPKG = true;
  state.PkgR = 4400000;
  EXPECT_EQ(texts(32.25, 7.125), " Rechtswert:  4432 250m| Hochwert:  7 125m");
}

TEST(Geometry, SegmentsAndSides) {
  double x = -1, y = -1;
  EXPECT_EQ(Line_Intersect(0, 0, 10, 0, 10, 0, 10, 8, x, y), -1);  // ends meet
  EXPECT_EQ(QPointF(x, y), QPointF(10, 0));
  EXPECT_EQ(Line_Intersect(0, 0, 4, 4, 0, 10, 10, 0, x, y), 0);
  EXPECT_EQ(Area2Sign({0, 0}, {0, 10}, {-3, 5}), 1);
  EXPECT_EQ(Area2Sign({0, 0}, {0, 1}, {0.4, 5}), 0);
}

}  // namespace
