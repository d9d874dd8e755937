#include "hand/turned_shape.h"

Turn Turn_Of(const EntryRow& row) {
  if (!EntryType::Parse(row.Typ).IsFigure() || !FillCode::IsFill(row.Schrift)) return {};
  const EntryBox box = entry_box(row);
  return {FillCode::AngleOf(row.Schrift), QPointF(box.x + box.width / 2.0, box.y + box.height / 2.0)};
}

QPointF Kept_In_Place(QPointF centre, QPointF newCentre, double angle) {
  return centre - newCentre + Turned(newCentre - centre, {0, 0}, angle);
}

QPolygonF Turned_Rect(const QRectF& box, double angle) {
  QPolygonF polygon;
  for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})
    polygon << (angle == 0 ? corner : Turned(corner, box.center(), angle));
  return polygon;
}
