#include <QPainter>

#include "calibration/calibration_sheet.h"
#include "calibration/crossing.h"

namespace {

// Two lines through a place, drawn as a scanner sees them.
QImage Scan(QPointF at, double turn, double width, QColor ink, unsigned seed) {
  QImage picture(120, 120, QImage::Format_RGB32);
  picture.fill(QColor(250, 246, 235));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, width));
  painter.translate(at + QPointF(0.5, 0.5));  // whole numbers are the middle of a pixel
  painter.rotate(turn);
  painter.drawLine(QPointF(-200, 0), QPointF(200, 0));
  painter.drawLine(QPointF(0, -200), QPointF(0, 200));
  painter.end();
  std::mt19937 random(seed);
  std::normal_distribution<double> noise(0, 6);
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      const int grey = static_cast<int>(noise(random));
      const QColor was = picture.pixelColor(x, y);
      const auto moved = [grey](int value) { return std::clamp(value + grey, 0, 255); };
      picture.setPixelColor(x, y, QColor(moved(was.red()), moved(was.green()), moved(was.blue())));
    }
  return picture;
}

double Off(QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

}  // namespace

TEST(Crossing, IsFoundToPartsOfAPixel) {
  std::mt19937 random(7);
  const auto between = [&random](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
  for (int round = 0; round < 30; ++round) {
    const QPointF at(between(50, 70), between(50, 70)), click = at + QPointF(between(-7, 7), between(-7, 7));
    const double turn = between(-10, 10), width = between(1, 4);
    const int ink = static_cast<int>(between(0, 130));
    const auto found = Find_Crossing(Scan(at, turn, width, QColor(ink, ink, ink), static_cast<unsigned>(round)), click);
    EXPECT_LT(found ? Off(*found, at) : 1e9, 0.35)
        << "round " << round << ", turn " << turn << ", width " << width << ", ink " << ink;
  }
}

TEST(Crossing, IsNotInventedWhereThereIsNone) {
  const auto none_with = [](const auto& draw) {
    QImage picture(120, 120, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    draw(painter);
    painter.end();
    return !Find_Crossing(picture, {60, 60});
  };
  EXPECT_FALSE(Find_Crossing(QImage(), {60, 60}));
  EXPECT_TRUE(none_with([](QPainter&) {}));
  EXPECT_TRUE(none_with([](QPainter& painter) { painter.drawLine(60, 0, 60, 119); })) << "one line is no crossing";
  EXPECT_TRUE(none_with([](QPainter& painter) { painter.fillRect(60, 0, 60, 120, Qt::black); }))
      << "an edge is no line";
  EXPECT_FALSE(Find_Crossing(Scan({20, 20}, 0, 2, Qt::black, 1), {60, 60}));
}

TEST(CalibrationSheet, WhatWasDoneGoesBackStepByStep) {
  CalibrationSheet sheet;
  std::vector<ControlPoints> states = {sheet.Points()};
  const auto done = [&] { states.push_back(sheet.Points()); };
  sheet.Add({{10, 10}, {1, 1}}), done();
  sheet.Add({{50, 10}, {2, 1}}), done();
  sheet.Move(0, {12, 11}), done();
  sheet.Switch(1, false), done();
  sheet.Set_Place(1, {3, 1}), done();
  sheet.Remove(0), done();
  sheet.Switch(0, false);  // is so already: no step
  sheet.Remove(7);
  EXPECT_TRUE(sheet.Changed());
  for (size_t i = states.size() - 1; i-- > 0;) {
    ASSERT_TRUE(sheet.Can_Undo());
    sheet.Undo();
    EXPECT_EQ(sheet.Points(), states[i]) << i;
  }
  EXPECT_FALSE(sheet.Can_Undo() || sheet.Changed());
  for (size_t i = 1; i < states.size(); ++i) sheet.Redo();
  EXPECT_EQ(sheet.Points(), states.back());
  EXPECT_FALSE(sheet.Can_Redo());
  // The nearer of two within reach.
  sheet.Begin_With({{{10, 10}, {}}, {{18, 10}, {}}});
  for (const auto& [x, point] : {std::pair(13, std::optional<size_t>(0)), {15, 1}, {40, std::nullopt}})
    EXPECT_EQ(sheet.Point_At(QPointF(x, 10), 10), point) << x;
}
