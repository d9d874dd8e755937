#include "coordinates/geometry.h"

#include <cmath>

namespace {
double Twice_Area(QPointF a, QPointF b, QPointF c) {
  return (b.x() - a.x()) * (c.y() - a.y()) - (c.x() - a.x()) * (b.y() - a.y());
}
}  // namespace

int Line_Intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4, double& x,
                   double& y) {
  const double den = (x4 - x3) * (y2 - y1) - (y4 - y3) * (x2 - x1);
  if (den == 0) return 0;
  const double t = ((y3 - y1) * (x2 - x1) + (x1 - x3) * (y2 - y1)) / den;
  const double u = ((y1 - y3) * (x4 - x3) + (x3 - x1) * (y4 - y3)) / -den;
  if (!(t >= 0 && t <= 1 && u >= 0 && u <= 1)) return 0;
  x = u * (x2 - x1) + x1;
  y = u * (y2 - y1) + y1;
  return -1;
}

bool Area2(QPointF a, QPointF b, QPointF c) { return Twice_Area(a, b, c) >= 0; }

int Area2Sign(QPointF a, QPointF b, QPointF c) {
  const double area = std::nearbyint(Twice_Area(a, b, c));  // halves to the even neighbour
  return (area > 0 ? 1 : 0) - (area < 0 ? 1 : 0);
}

bool Seg_Cross(QPointF a, QPointF b, QPointF c, QPointF d) {
  return Area2(a, b, c) != Area2(a, b, d) && Area2(c, d, a) != Area2(c, d, b);
}

bool Point_On_Map(double x, double y, QSize map) { return x >= 0 && x <= map.width() && y >= 0 && y <= map.height(); }

bool Seg_Cross_Frame(QPointF a, QPointF b, QSize map) {
  const QPointF upperLeft(0, 0), upperRight(map.width(), 0), lowerLeft(0, map.height()),
      lowerRight(map.width(), map.height());
  return Seg_Cross(a, b, upperLeft, upperRight) || Seg_Cross(a, b, upperLeft, lowerLeft) ||
         Seg_Cross(a, b, lowerLeft, lowerRight) || Seg_Cross(a, b, upperRight, lowerRight);
}

double Slope_Of(double x1, double y1, double x2, double y2) {
  if (x2 == x1) return 10000;
  if (y2 == y1) return 0;
  return -(y2 - y1) / (x2 - x1);
}
