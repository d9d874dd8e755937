#pragma once
#include <QStringList>

#include "analysis/map_input.h"
#include "analysis/neighbours.h"

// The report "Distanz.erg".
struct NeighbourReport {
  bool detailed = false;  // name and distance of every neighbour; else the distances alone
};
// Lines without their ends. Distances in the map's unit.
QStringList Neighbour_Text(std::span<const NeighbourEntry> entries, const Neighbours& neighbours,
                           const MapMeasure& measure, NeighbourReport report);
