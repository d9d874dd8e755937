#include "view/hit_test.h"

#include "plansquares/plan_map.h"
#include "state/map_state.h"

int Hit_Entry(QPoint window) {
  const QPointF point(window);
  // The union answers most moves over empty map at once.
  if (!Map.EntryRegions.AnyAt(point)) return 0;
  const int top = Map.EntryRegions.TopAt(point);
  const EntryRegion& square = Map.EntryRegions.Row(top);
  if (square.kind != planRegion) return top;
  // What lies in a plan square and is smaller than it is still meant by a click on it.
  const auto smaller = [&square](const EntryRegion& other) {
    return other.bounds.width() < square.bounds.width() && other.bounds.height() < square.bounds.height();
  };
  for (int below = Map.EntryRegions.NextBelow(point, top); below > 0; below = Map.EntryRegions.NextBelow(point, below))
    if (smaller(Map.EntryRegions.Row(below))) return below;
  return top;
}
