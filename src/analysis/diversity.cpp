#include "analysis/diversity.h"

#include <algorithm>
#include <cmath>

DiversityIndices Diversity_Indices(std::span<const qint64> counts) {
  DiversityIndices result;
  qint64 largest = 0, singles = 0, doubles = 0;
  for (const qint64 n : counts) {
    if (n <= 0) continue;
    result.individuals += n;
    ++result.species;
    largest = std::max(largest, n);
    singles += n == 1;
    doubles += n == 2;
  }
  if (result.individuals == 0) return result;
  const auto total = static_cast<double>(result.individuals);
  double sum = 0, squares = 0;
  for (const qint64 n : counts) {
    if (n <= 0) continue;
    const double p = static_cast<double>(n) / total;
    sum += p * std::log(p);
    squares += p * p;
  }
  result.shannon = sum == 0 ? 0 : -sum;
  if (result.species > 1) result.evenness = *result.shannon / std::log(static_cast<double>(result.species));
  result.simpson = 1 - squares;
  result.inverse = 1 / squares;
  result.chao1 = result.species + static_cast<double>(singles * (singles - 1)) / static_cast<double>(2 * (doubles + 1));
  result.bergerParker = static_cast<double>(largest) / total;
  return result;
}

SpeciesAccumulation Accumulate_Species(std::span<const std::vector<int>> areas) {
  SpeciesAccumulation result;
  if (areas.empty()) return result;
  const size_t all = areas.size();
  std::vector<size_t> inAreas(areas[0].size(), 0);
  int seen = 0;
  for (const std::vector<int>& area : areas) {
    for (size_t i = 0; i < area.size(); ++i)
      if (area[i] > 0 && inAreas[i]++ == 0) ++seen;
    result.collected.push_back(seen);
  }
  // Species in the same number of areas have the same chance to be missed.
  std::vector<int> speciesIn(all + 1, 0);
  for (const size_t m : inAreas) ++speciesIn[m];
  result.expected.assign(all, 0);
  for (size_t m = 1; m <= all; ++m) {
    if (speciesIn[m] == 0) continue;
    double missed = 1;  // C(all - m, k) / C(all, k), from k to k + 1
    for (size_t k = 1; k <= all; ++k) {
      missed *= k > all - m ? 0 : static_cast<double>(all - m - k + 1) / static_cast<double>(all - k + 1);
      result.expected[k - 1] += speciesIn[m] * (1 - missed);
    }
  }
  return result;
}
