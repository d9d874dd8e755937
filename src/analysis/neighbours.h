#pragma once
#include <QString>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "store/entry.h"

// The nearest neighbours of every entry, and how they are spread.

struct NeighbourEntry {
  QString name;      // the first 29 characters of the text
  int x = 0, y = 0;  // map pixels: the foot point of a reference line, else the entry's position
};
// Texts, symbols and pictures that are not hidden, in table order.
std::vector<NeighbourEntry> Neighbour_Entries(std::span<const EntryRow> rows);

// How many neighbours M entries can have at most: N, or M - 1 if M is not larger than N. Below 1 there are none.
int Reduced_Neighbours(int entries, int neighbours);

struct Neighbours {
  int perEntry = 0;
  // perEntry numbers of entries, and their distances in map pixels, for each entry in turn; the nearest first, of
  // equally near ones the earlier entry first.
  std::vector<int> entry;
  std::vector<double> distance;
  std::span<const int> Of(int number) const;               // numbers of the neighbours of that entry
  std::span<const double> Distances_Of(int number) const;  // how far they are, map pixels
};
// `perEntry` from 1 to the number of entries - 1. Through a k-d tree over the distinct positions (J. L. Bentley, Comm.
// ACM 18:509, 1975): grows like M log M however many entries lie at one place. `step` is called now and then with the
// number of entries that are done; false ends the work with nothing.
std::optional<Neighbours> Find_Neighbours(std::span<const NeighbourEntry> entries, int perEntry,
                                          const std::function<bool(int)>& step = {});

// P. J. Clark and F. C. Evans, Ecology 35:445 (1954): the mean distance to the nearest neighbour against the one that
// is expected of points thrown at random, 1 / (2 sqrt(density)); z by its standard error 0.26136 / sqrt(M density).
// Below 1 the entries are clumped, above 1 spread evenly.
struct ClarkEvans {
  double observed = 0, expected = 0, index = 0, z = 0;
};
// Distances to the nearest neighbour of M entries, in the length whose square `area` is given in. Nothing of fewer than
// two or without an area. With the perimeter of a simple area the edge is allowed for (K. P. Donnelly in Hodder (ed.),
// Simulation studies in archaeology, 1978).
std::optional<ClarkEvans> Clark_Evans(std::span<const double> nearest, double area,
                                      std::optional<double> perimeter = {});

// Classes of equal width from 0 to the largest value; a value at a border belongs to the class above it.
struct Histogram {
  double width = 0;
  std::vector<int> counts;
};
// As many classes as the rule of H. A. Sturges (J. Am. Stat. Assoc. 21:65, 1926) gives: 1 + log2 of the number of
// values.
Histogram Histogram_Of(std::span<const double> values);
