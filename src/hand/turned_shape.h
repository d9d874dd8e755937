#pragma once
#include <QPointF>
#include <QPolygonF>

#include "objects/draw_context.h"
#include "store/entry.h"

// Turned figures are seen elsewhere than the boxes and vertices they are stored with.

// By an angle about a point of the map, in map pixels.
struct Turn {
  double angle = 0;  // counter-clockwise
  QPointF centre;
  QPointF Seen(QPointF stored) const { return angle == 0 ? stored : Turned(stored, centre, angle); }
  QPointF Stored(QPointF seen) const { return angle == 0 ? seen : Turned(seen, centre, -angle); }
};
// How a figure is turned; every other row, and a figure that stands upright, is not.
Turn Turn_Of(const EntryRow& row);
// A turned box has got another centre: by how much it has to be shifted so that a point that keeps its stored place
// keeps the one where it is seen, too.
QPointF Kept_In_Place(QPointF centre, QPointF newCentre, double angle);
// A rectangle turned about its middle.
QPolygonF Turned_Rect(const QRectF& box, double angle);
