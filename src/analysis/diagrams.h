#pragma once
#include <QSize>
#include <QString>
#include <optional>
#include <vector>

#include "analysis/diversity.h"
#include "analysis/map_input.h"
#include "analysis/neighbours.h"
#include "analysis/species_matrix.h"

// The numbers behind the diagrams.

// Species by falling abundance (R. H. Whittaker, Science 147:250, 1965): the rank of a species is its place.
struct RankedSpecies {
  QString name;
  qint64 count = 0;
  bool operator==(const RankedSpecies&) const = default;
};
// Of one row of the matrix; without one of all areas, figures and lines together, of the groups only where there is
// nothing else. Equal numbers in the order of a German word list. Species without individuals are left out.
std::vector<RankedSpecies> Rank_Abundance(const SpeciesMatrix& matrix, std::optional<size_t> row = {});

struct AreaAccumulation {
  std::vector<QString> names;  // of the areas
  SpeciesAccumulation species;
};
// How the number of species grows over the areas and figures that have entries assigned to them, in table order.
AreaAccumulation Accumulate_Areas(const SpeciesMatrix& matrix);

// Distances from each entry to its nearest neighbour, in the map's unit, and what they tell. Each entry is one point,
// however many individuals it stands for.
struct NearestDistances {
  std::vector<double> distances;
  Histogram histogram;
  // Against points thrown at random into the area, its edge allowed for after Donnelly (Clark_Evans). None where no
  // area bounds the points: lines, groups.
  std::optional<ClarkEvans> pattern;
};
// Of texts, symbols and pictures that are not hidden: all of them, with the map's sheet (`sheet` pixels) as their area.
NearestDistances Nearest_On_Map(const MapInput& input, QSize sheet);
// Of those assigned to one row of the matrix, with its area. A circle is taken as it is drawn.
NearestDistances Nearest_In(const MapInput& input, const MatrixRow& row);

// What an index and its z value say at the level of 5 %: "gehäuft", "zufällig" or "gleichmäßig".
QString Pattern_Word(const ClarkEvans& pattern);
