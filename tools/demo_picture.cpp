#include <QPainter>
#include <QPainterPath>

#include "demo_sets.h"

// Drawn without smoothing: the same bytes on every machine.
QImage Draw_Bird() {
  QImage picture(150, 120, QImage::Format_RGB32);
  picture.fill(qRgb(226, 240, 246));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(Qt::NoPen);

  painter.setBrush(QColor(150, 198, 230));  // water
  painter.drawRect(0, 100, 150, 20);
  painter.setBrush(QColor(110, 80, 50));  // branch
  painter.drawPolygon(QPolygon({{0, 92}, {150, 78}, {150, 84}, {0, 99}}));

  painter.setBrush(QColor(20, 110, 170));  // back and tail
  painter.drawPolygon(QPolygon({{52, 34}, {84, 40}, {104, 66}, {124, 98}, {108, 92}, {84, 80}, {60, 62}}));
  painter.setBrush(QColor(225, 120, 40));  // breast
  painter.drawEllipse(46, 38, 46, 44);
  painter.setBrush(QColor(20, 110, 170));  // wing
  painter.drawPolygon(QPolygon({{66, 40}, {92, 48}, {110, 78}, {84, 74}}));
  painter.setBrush(QColor(30, 140, 190));  // head
  painter.drawEllipse(36, 16, 38, 32);
  painter.setBrush(QColor(225, 120, 40));  // cheek
  painter.drawEllipse(46, 32, 13, 9);
  painter.setBrush(QColor(250, 250, 245));  // throat and neck
  painter.drawEllipse(46, 41, 14, 7);
  painter.drawEllipse(62, 34, 8, 8);
  painter.setBrush(QColor(40, 40, 45));  // bill
  painter.drawPolygon(QPolygon({{40, 28}, {6, 35}, {40, 37}}));
  painter.setBrush(Qt::white);  // eye
  painter.drawEllipse(44, 25, 7, 7);
  painter.setBrush(Qt::black);
  painter.drawEllipse(45, 26, 5, 5);
  painter.setPen(QPen(QColor(200, 60, 40), 3));  // feet
  painter.drawLine(66, 80, 66, 87);
  painter.drawLine(76, 79, 76, 86);

  painter.setPen(QColor(90, 130, 90));  // reed
  for (const int x : {122, 130, 137, 143}) painter.drawLine(x, 112, x + 3, 40 + x % 7 * 4);
  return picture;
}
