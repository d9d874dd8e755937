#include "tools/drawn_points.h"

#include "state/events.h"

void DrawnPoints::Add(QPoint point) {
  const bool known = Can_Take_Back() && !Can_Bring_Again();
  points.push_back(point);
  taken.clear();
  if (!known) events.StateChanged.Emit();
}

void DrawnPoints::Keep_Last(size_t count) {
  const bool known = points.size() <= count && taken.empty();
  if (points.size() > count) points.erase(points.begin(), points.end() - static_cast<std::ptrdiff_t>(count));
  taken.clear();
  if (!known) events.StateChanged.Emit();
}

void DrawnPoints::Take_Back() { Pass(points, taken); }
void DrawnPoints::Bring_Again() { Pass(taken, points); }

void DrawnPoints::Pass(std::vector<QPoint>& from, std::vector<QPoint>& to) {
  if (from.empty()) return;
  to.push_back(from.back());
  from.pop_back();
  if (walked) walked();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}
