#include "canvas/hit_test.h"

#include "canvas/map_state.h"

int Hit_Entry(QPoint window) {
  const QPointF point(window);
  // The union answers most moves over empty map at once.
  return Map.EntryRegions.AnyAt(point) ? Map.EntryRegions.TopAt(point) : 0;
}
