#pragma once
#include "bench_map.h"
#include "state/coordinate_state.h"

// A map without entries on which coordinates can be found, for the imports.

inline constexpr int netMapWidth = 3000, netMapHeight = 2200;

// UTM, zone 32, its grid turned a little.
inline void Set_Net_Coordinates() {
  Coord = {};
  Coord.Grid = gridUtm;
  Coord.MapWidthPx = netMapWidth;
  Coord.MapHeightPx = netMapHeight;
  Coord.Xmap = 701;
  Coord.Ymap = 1486;
  Coord.GridR = 646000;
  Coord.GridH = 5512000;
  Coord.Inclin = 0.02120933;
  Coord.MeterPerPix = 2.1161907;
  Coord.ZoneNumber = 32;
  Coord.GridDatum = QStringLiteral("WGS-84");
}

class NetBenchMap : public BenchMap {
 public:
  NetBenchMap() : BenchMap(BenchSize{0, 0, 0, netMapWidth, netMapHeight}) { Set_Net_Coordinates(); }
};
