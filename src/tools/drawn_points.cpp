#include "tools/drawn_points.h"

#include "state/events.h"

void DrawnPoints::Add(QPoint point) {
  const bool known = Can_Take_Back() && !Can_Bring_Again();
  points.push_back(point);
  taken.clear();
  if (!known) events.StateChanged.Emit();
}

void DrawnPoints::Take_Back() {
  if (points.empty()) return;
  taken.push_back(points.back());
  points.pop_back();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

void DrawnPoints::Bring_Again() {
  if (taken.empty()) return;
  points.push_back(taken.back());
  taken.pop_back();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}
