#include "state/map_state.h"

#include <cmath>

MapState Map;

namespace {
// In 32-bit floats, as Zoom is one: with a zoom of 0.7 the tenth pixel is 7, not 6.
int To_Map(double window, int view) {
  const float offset = static_cast<float>(window) * Map.Zoom;
  return static_cast<int>(static_cast<double>(offset) + view);
}
int To_Window(double map, int view) { return static_cast<int>(std::lrint(static_cast<float>(map - view) / Map.Zoom)); }
}  // namespace

int Map_X(double windowX) { return To_Map(windowX, Map.ViewLeft); }
int Map_Y(double windowY) { return To_Map(windowY, Map.ViewTop); }
int Window_X(double mapX) { return To_Window(mapX, Map.ViewLeft); }
int Window_Y(double mapY) { return To_Window(mapY, Map.ViewTop); }
