#pragma once
#include <QStringList>
#include <functional>
#include <vector>

#include "analysis/assigned_entries.h"
#include "analysis/map_input.h"
#include "analysis/species.h"

// Population parameters of the areas of a map.

struct AreaPopulation {
  int row = 0;  // number of the area's row
  ShapeSize size;
  int assigned = 0;  // entries assigned to it
  SpeciesList species;
  // Entries per area and area per entry, in the natural unit; none for an area without size or entries.
  std::optional<Density> density, inverse;
};

struct Population {
  std::vector<AreaPopulation> areas;
  int leftOut = 0;          // marked or hidden areas, which are not in it
  bool digitsSeen = false;  // in any area
  QStringList tooLarge;     // texts with a number beyond the bound
};

// An area: kind 4 or 40, "Fl" in its name, not assigned to anything.
bool Is_Area_Row(const EntryRow& row, const EntryId& id);
// Figures of kind 20 to 25, not assigned to anything.
bool Is_Figure_Row(const EntryRow& row, const EntryId& id);
// Lines, straight and rounded.
bool Is_Line_Row(const EntryRow& row, const EntryId& id);

// Number of the first row whose ID begins with "Fl"; -1 if there is none: the map has no area.
int First_Area_Row(std::span<const EntryRow> rows);

// Number of the first row that is an area; -1 if there is none. Hidden and marked ones count.
int First_Area(std::span<const EntryRow> rows);

// Species, density and sizes of what is given by its row; for areas and figures.
AreaPopulation Population_Of(const MapInput& input, int row, const AssignedEntries& assigned);

// From the row `first` on to the end of the table. The first may be marked or hidden, of the others those that are
// neither are taken. Nothing if `first` is no area. `step` is called once per row of the table; false ends the work
// with an empty result.
std::optional<Population> Calc_Population_Values(const MapInput& input, int first,
                                                 const std::function<bool()>& step = {});
