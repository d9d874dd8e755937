#include "tools/area_trace.h"

#include <QPainter>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

constexpr QRgb paper = qRgb(250, 245, 230), green = qRgb(120, 180, 90);

static QImage Sheet(int width = 300, int height = 200) {
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(paper);
  return picture;
}

template <class Draw>
QImage With(QImage picture, Draw draw) {
  QPainter painter(&picture);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(green));
  draw(painter);
  return picture;
}

static double Area_Of(const std::vector<QPoint>& outline) {
  double twice = 0;
  for (size_t i = 0; i < outline.size(); ++i) {
    const QPoint a = outline[i], b = outline[(i + 1) % outline.size()];
    twice += static_cast<double>(a.x()) * b.y() - static_cast<double>(b.x()) * a.y();
  }
  return std::abs(twice) / 2;
}

// The greatest distance of a point from the nearest side of the outline.
static double Off(const std::vector<QPoint>& outline, QPointF point) {
  double nearest = 1e9;
  for (size_t i = 0; i < outline.size(); ++i) {
    const QPointF a = outline[i], line = QPointF(outline[(i + 1) % outline.size()]) - a, there = point - a;
    const double length = QPointF::dotProduct(line, line);
    const double along = length == 0 ? 0 : std::clamp(QPointF::dotProduct(line, there) / length, 0.0, 1.0);
    const QPointF away = there - along * line;
    nearest = std::min(nearest, std::hypot(away.x(), away.y()));
  }
  return nearest;
}

TEST(AreaTrace, RingsColoursAndDistances) {
  std::vector<size_t> counts;
  for (int radius = 1; radius <= 5; ++radius) {
    counts.push_back(Digi_Ring(radius).size());
    for (size_t i = 0; i < Digi_Ring(radius).size(); ++i) {
      const QPoint at = Digi_Ring(radius)[i];
      EXPECT_NEAR(std::hypot(at.x(), at.y()), radius, 0.75);
      if (i > 0) {
        EXPECT_LE((at - Digi_Ring(radius)[i - 1]).manhattanLength(), 3);
      }
    }
  }
  EXPECT_THAT(counts, ElementsAre(13U, 25U, 31U, 49U, 61U));
  EXPECT_EQ(GetRGB(0x332211, 1) * 65536 + GetRGB(0x332211, 2) * 256 + GetRGB(0x332211, 3), 0x112233);
  EXPECT_EQ(GetRGB(-1, 1) + GetRGB(0x1000000, 2) + GetRGB(5, 4) + GetRGB(5, 0), -4);
  EXPECT_EQ(Entfernung(3, 4), 5);
  EXPECT_EQ(Entfernung(-7, 0), -7) << "as it stands";
  EXPECT_EQ(Entfernung(0, -2), -2);
}

TEST(AreaTrace, ARectangleIsAHandfulOfPoints) {
  const QImage picture = With(Sheet(), [](QPainter& painter) { painter.drawRect(60, 50, 120, 80); });
  int steps = 0;
  const TraceResult result = Digi_Trace_RGB({picture, {120, 90}, 10, [&steps](QPoint at) {
                                               ++steps;
                                               return QRect(59, 49, 122, 82).contains(at);
                                             }});
  ASSERT_TRUE(result.Found()) << result.fault;
  EXPECT_EQ(steps, result.edgePoints);
  EXPECT_GT(result.edgePoints, 300) << "one pixel a step on an even colour";
  EXPECT_LT(result.outline.size(), 15U);
  EXPECT_NEAR(Area_Of(result.outline), 120 * 80, 500);
  EXPECT_EQ(result.sampled.size(), Digi_Ring(1).size() + Digi_Ring(2).size());
  const TraceResult stopped = Digi_Trace_RGB({picture, {120, 90}, 10, [](QPoint) { return false; }});
  EXPECT_EQ(std::tuple(stopped.Found(), stopped.fault), std::tuple(false, QString()));
}

// Grain, a print screen, a thin line across: wider rings step over them.
TEST(AreaTrace, ItStepsOverGrain) {
  QImage picture = With(Sheet(), [](QPainter& painter) { painter.drawEllipse(60, 30, 150, 140); });
  for (int y = 0; y < 200; ++y)
    for (int x = y % 2; x < 300; x += 3) picture.setPixel(x, y, QColor(picture.pixel(x, y)).lighter(104).rgb());
  const TraceResult result = Digi_Trace_RGB({picture, {135, 100}, 30, {}});
  ASSERT_TRUE(result.Found()) << result.fault;
  EXPECT_NEAR(Area_Of(result.outline) / (M_PI * 75 * 70), 1, 0.08);
}

TEST(AreaTrace, FaultsAreTold) {
  const auto fault = [](const QImage& picture, QPoint click, int tolerance) {
    const TraceResult result = Digi_Trace_RGB({picture, click, tolerance, {}});
    EXPECT_TRUE(result.outline.empty());
    return result.fault.toStdString();
  };
  const QImage high = With(Sheet(), [](QPainter& painter) { painter.drawRect(60, 0, 80, 80); });
  EXPECT_THAT(fault(high, {100, 1}, 10), HasSubstr("über den oberen Fensterrand hinaus"));
  EXPECT_THAT(fault(high, {100, 40}, 10), HasSubstr("über den oberen Fensterrand hinaus"));
  EXPECT_THAT(fault(Sheet(), {100, 100}, 10), HasSubstr("über den oberen Fensterrand hinaus")) << "a white sheet";
  EXPECT_THAT(fault(Sheet(), {900, -700}, 10), HasSubstr("Fensterrand"));
}

TEST(AreaFill, RunsAlongThePixelSides) {
  const QImage box = With(Sheet(), [](QPainter& painter) { painter.drawRect(60, 50, 120, 80); });
  EXPECT_THAT(Digi_Fill({box, {120, 90}, 10, {}}).outline,
              UnorderedElementsAre(QPoint(60, 50), QPoint(180, 50), QPoint(180, 130), QPoint(60, 130)));
  const QImage all = With(Sheet(), [](QPainter& painter) { painter.drawRect(0, 0, 300, 200); });
  EXPECT_EQ(Area_Of(Digi_Fill({all, {0, 199}, 10, {}}).outline), 60000) << "it fills the whole map";
}

// The slider means the same for both ways: a wood on paper is found by either at 25 %, and by none at 90 %.
TEST(AreaFill, TheToleranceIsThatOfTheFollower) {
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(qRgb(249, 245, 235));
  QPainter painter(&picture);
  painter.fillRect(60, 50, 120, 80, QColor(197, 223, 165));
  painter.end();
  for (const int tolerance : {5, 15, 25}) {
    EXPECT_NEAR(Area_Of(Digi_Fill({picture, {120, 90}, tolerance, {}}).outline), 9600, 1) << tolerance;
    EXPECT_NEAR(Area_Of(Digi_Trace_RGB({picture, {120, 90}, tolerance, {}}).outline), 9600, 500) << tolerance;
  }
  EXPECT_EQ(Area_Of(Digi_Fill({picture, {120, 90}, 90, {}}).outline), 60000);
  EXPECT_FALSE(Digi_Trace_RGB({picture, {120, 90}, 90, {}}).Found());
}

// A pale meadow, its grain and that of the paper nearly meet: single grains are no bridge.
TEST(AreaFill, AMeadowDoesNotRunIntoThePaper) {
  QImage picture = Sheet();
  unsigned random = 1;
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 300; ++x) {
      const bool meadow = QRect(60, 50, 120, 80).contains(x, y);
      random = random * 1103515245U + 12345U;
      const int grain = static_cast<int>(random >> 16) % 7 - 3;
      picture.setPixel(x, y,
                       meadow ? qRgb(241 + grain, 246 + grain, 226 + grain) : qRgb(249 + grain, 246, 235 + grain));
    }
  for (const int tolerance : {0, 5, 10})
    EXPECT_NEAR(Digi_Fill({picture, {120, 90}, tolerance, {}}).part, 9600 / 60000.0, 0.005) << tolerance;
  EXPECT_GT(Digi_Fill({picture, {120, 90}, 60, {}}).part, 0.9);
}

// Whatever the shape: the pixel sides of its edge lie within 0.7 pixels of the outline, and straight edges are few.
TEST(AreaFill, StaysWithinSevenTenthsOfAPixel) {
  const std::vector<QPolygonF> shapes = {
      QPolygonF({{20, 30}, {260, 60}, {200, 180}, {90, 150}}),
      QPolygonF({{20, 20}, {60, 20}, {150, 100}, {240, 20}, {280, 20}, {180, 180}, {120, 180}}),
      QPolygonF({{10, 100}, {290, 99}, {290, 110}, {10, 130}})};
  for (const QPolygonF& shape : shapes) {
    const QImage picture = With(Sheet(), [&](QPainter& painter) { painter.drawPolygon(shape); });
    QPoint click;
    const auto inside = [&](int x, int y) { return picture.valid(x, y) && picture.pixel(x, y) == green; };
    for (int y = 0; y < 200; ++y)
      for (int x = 0; x < 300; ++x)
        if (inside(x, y) && inside(x - 4, y) && inside(x + 4, y) && inside(x, y + 4)) click = {x, y};
    const TraceResult result = Digi_Fill({picture, click, 10, {}});
    ASSERT_TRUE(result.Found()) << result.fault;
    EXPECT_LT(result.outline.size(), 20U);
    double worst = 0;
    // The tip of a cleft is narrower than the gaps that are closed.
    const auto tip = [](int x, int y) { return std::abs(x - 150) < 8 && std::abs(y - 100) < 4; };
    for (int y = 1; y < 199; ++y)
      for (int x = 1; x < 299; ++x) {
        if (!inside(x, y)) continue;
        if (!inside(x + 1, y) && !tip(x, y)) worst = std::max(worst, Off(result.outline, {x + 1.0, y + 0.5}));
        if (!inside(x, y + 1) && !tip(x, y)) worst = std::max(worst, Off(result.outline, {x + 0.5, y + 1.0}));
      }
    EXPECT_LE(worst, 0.7 + 1e-9);
  }
}

// Lines of a net across the patch, tree symbols, dots of a print screen: it is one patch with no holes.
TEST(AreaFill, ClosesSmallGaps) {
  QImage picture = With(Sheet(), [](QPainter& painter) {
    painter.drawRect(60, 50, 120, 80);
    painter.fillRect(0, 88, 300, 3, Qt::black);
    painter.fillRect(110, 0, 4, 200, Qt::black);
    painter.fillRect(130, 60, 15, 15, Qt::darkGreen);
  });
  const TraceResult closed = Digi_Fill({picture, {70, 60}, 10, {}});
  EXPECT_NEAR(Area_Of(closed.outline), 120 * 80, 60);
  // Five pixels part it.
  QPainter(&picture).fillRect(108, 0, 5, 200, Qt::black);
  EXPECT_LT(Area_Of(Digi_Fill({picture, {70, 60}, 10, {}}).outline), 50 * 80);
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) picture.setPixel(x, y, (x + y) % 2 == 0 ? 0xff000000 : 0xffffffff);
  EXPECT_THAT(Digi_Fill({picture, {10, 10}, 5, {}}).fault.toStdString(), HasSubstr("größere Farbunterschiede"));
  EXPECT_THAT(Digi_Fill({picture, {-1, 20}, 5, {}}).fault.toStdString(), HasSubstr("neben die Karte"));
}
