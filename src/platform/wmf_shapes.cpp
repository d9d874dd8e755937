#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "platform/wmf_player.h"

namespace wmf {

// Polygon and chain of lines alike.
void Player::Play_Chain(bool closed, const Words& words) {
  Take_Pen_And_Brush(closed);
  const QPolygonF points(Points(words, 1, words.Unsigned(0)));
  Pay_For_Outline({points.constData(), static_cast<size_t>(points.size())});
  if (!closed) {
    painter.drawPolyline(points);
    return;
  }
  Pay_For_Edges({points.constData(), static_cast<size_t>(points.size())});
  Pay_For_Fill(points.boundingRect());
  painter.drawPolygon(points, state.winding ? Qt::WindingFill : Qt::OddEvenFill);
}

void Player::Poly_Polygon(const Words& words) {
  Take_Pen_And_Brush(true);
  const int rings = words.Unsigned(0);
  qint64 at = 1 + rings;
  QPainterPath path;
  path.setFillRule(state.winding ? Qt::WindingFill : Qt::OddEvenFill);
  for (int ring = 0; ring < rings && words.Has(at); ++ring) {
    const int count = words.Unsigned(1 + ring);
    const QPolygonF points(Points(words, at, count));
    Pay_For_Edges({points.constData(), static_cast<size_t>(points.size())});
    Pay_For_Outline({points.constData(), static_cast<size_t>(points.size())});
    path.addPolygon(points);
    path.closeSubpath();
    at += 2 * static_cast<qint64>(count);
  }
  Pay_For_Fill(path.boundingRect());
  painter.drawPath(path);
}

// Start and end are directions from the middle of the box, walked counter-clockwise.
void Player::Arc(quint16 number, const Words& words) {
  const QRectF box = Box(words, 4);
  const auto angle = [&](qint64 first) {
    const QPointF d = Place(words.Signed(first + 1), words.Signed(first)) - box.center();
    return std::atan2(-d.y(), d.x()) * 180 / M_PI;
  };
  const double start = angle(2), end = angle(0);
  const double span = end > start ? end - start : end - start + 360;
  const int start16 = qRound(start * 16), span16 = qRound(span * 16);
  Pay_For_Box(box);
  if (number == recPie)
    painter.drawPie(box, start16, span16);
  else if (number == recChord)
    painter.drawChord(box, start16, span16);
  else
    painter.drawArc(box, start16, span16);
}

void Player::Play_Box(quint16 number, const Words& words) {
  Take_Pen_And_Brush(true);
  const bool rounded = number == recRoundRect;
  const QRectF box = Box(words, rounded ? 2 : 0).adjusted(0, 0, -1, -1);
  Pay_For_Box(box);
  if (rounded)
    painter.drawRoundedRect(box, std::abs(words.Signed(1) * ScaleX() / 2), std::abs(words.Signed(0) * ScaleY() / 2));
  else if (number == recRectangle)
    painter.drawRect(box);
  else
    painter.drawEllipse(box);
}

void Player::Pattern_Fill(const Words& words) {
  Take_Pen_And_Brush(true);
  const QRectF box = Sized_Box(words, 2);
  Pay_For_Fill(box);
  const int operation = words.Unsigned(1);  // 0x42 blackness, 0x62 whiteness, else the brush
  if (operation == 0x42 || operation == 0x62)
    painter.fillRect(box, operation == 0x42 ? Qt::black : Qt::white);
  else
    painter.fillRect(box, painter.brush());
}

bool Player::Play_Shape(quint16 number, const Words& words) {
  switch (number) {
    case recMoveTo:
      state.position = {words.Signed(1), words.Signed(0)};
      return true;
    case recLineTo: {
      Take_Pen_And_Brush(false);
      const QPoint to(words.Signed(1), words.Signed(0));
      const QPointF ends[] = {Place(state.position.x(), state.position.y()), Place(to.x(), to.y())};
      Pay_For_Outline(ends);
      painter.drawLine(ends[0], ends[1]);
      state.position = to;
      return true;
    }
    case recRectangle:
    case recRoundRect:
    case recEllipse:
      Play_Box(number, words);
      return true;
    case recArc:
    case recPie:
    case recChord:
      Take_Pen_And_Brush(number != recArc);
      Arc(number, words);
      return true;
    case recPolyline:
    case recPolygon:
      Play_Chain(number == recPolygon, words);
      return true;
    case recPolyPolygon:
      Poly_Polygon(words);
      return true;
    case recSetPixel:
      Take_Pen_And_Brush(false);
      painter.fillRect(QRectF(Place(words.Signed(3), words.Signed(2)), QSizeF(1, 1)), QColor::fromRgb(words.Color(0)));
      return true;
    case recPatBlt:
      Pattern_Fill(words);
      return true;
    default:
      return false;
  }
}

}  // namespace wmf
