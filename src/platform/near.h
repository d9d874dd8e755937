#pragma once
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <algorithm>
#include <cmath>

// Coordinates come from stored numbers. Beyond this they can only be a slip: integers would overflow, and a line with
// gaps would have no end.
inline constexpr double farthestPlace = 1e6;

// Within that reach; 0 for what is no number.
inline double Near(double value) { return std::isfinite(value) ? std::clamp(value, -farthestPlace, farthestPlace) : 0; }
inline QPointF Near(QPointF point) { return {Near(point.x()), Near(point.y())}; }
// With positive width and height.
inline QRectF Near(const QRectF& box) {
  return QRectF(QPointF(Near(box.left()), Near(box.top())), QPointF(Near(box.right()), Near(box.bottom())))
      .normalized();
}
// The same rounded to whole numbers, halves away from 0.
inline int Whole(double value) { return static_cast<int>(std::lround(Near(value))); }
inline QPoint Whole(QPointF point) { return {Whole(point.x()), Whole(point.y())}; }
// Place and size rounded each by itself; with positive width and height.
inline QRect Whole(const QRectF& box) {
  const QRectF b = box.normalized();
  return {Whole(b.x()), Whole(b.y()), Whole(b.width()), Whole(b.height())};
}
