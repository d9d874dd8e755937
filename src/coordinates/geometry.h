#pragma once
#include <QPointF>
#include <QSize>

// Plane geometry of the nets. Positions are map pixels, y downward.

// Crossing of the segments 1-2 and 3-4: -1 and the point when they meet (ends included), else 0 and x, y untouched.
int Line_Intersect(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4, double& x,
                   double& y);
// (b.x-a.x)(c.y-a.y) - (c.x-a.x)(b.y-a.y) >= 0.
bool Area2(QPointF a, QPointF b, QPointF c);
// The sign of the same, rounded to a whole number: -1, 0, 1.
int Area2Sign(QPointF a, QPointF b, QPointF c);
// Do the segments a-b and c-d cross? Touching counts as Area2 has it.
bool Seg_Cross(QPointF a, QPointF b, QPointF c, QPointF d);
// On the map, both bounds included.
bool Point_On_Map(double x, double y, QSize map);
// Does the segment cross an edge of the map rectangle?
bool Seg_Cross_Frame(QPointF a, QPointF b, QSize map);
// -(y2-y1)/(x2-x1); 10000 for x2 = x1, 0 for y2 = y1.
double Slope_Of(double x1, double y1, double x2, double y2);
