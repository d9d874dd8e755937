#include "analysis/species.h"

#include <QHash>
#include <algorithm>
#include <cmath>

#include "analysis/leading_count.h"

SpeciesList List_Species(std::span<const QString> texts) {
  SpeciesList list;
  QHash<QString, size_t> places;
  std::vector<SpeciesCount> found;
  std::vector<bool> several;
  for (const QString& text : texts) {
    const CountedName counted = Population_Count(text);
    list.digitsSeen = list.digitsSeen || counted.digits;
    if (counted.tooLarge) {
      list.tooLarge += text.trimmed();
      continue;
    }
    const auto place = places.constFind(counted.name);
    if (place == places.constEnd()) {
      places.insert(counted.name, found.size());
      found.push_back({counted.name, counted.count, 0});
      several.push_back(false);
    } else {
      found[*place].total += counted.count;
      several[*place] = true;
    }
    list.individuals += counted.count;
  }
  qint64 highest = 1;
  for (size_t i = 0; i < found.size(); ++i)
    if (several[i]) highest = std::max(highest, found[i].total);
  std::erase_if(found, [](const SpeciesCount& species) { return species.total < 1; });
  const auto threshold = [highest](const SpeciesCount& species) { return std::min(species.total, highest); };
  std::stable_sort(found.begin(), found.end(),
                   [&threshold](const SpeciesCount& a, const SpeciesCount& b) { return threshold(a) > threshold(b); });
  for (SpeciesCount& species : found) {
    species.dominance =
        static_cast<float>(static_cast<double>(species.total) * 100 / static_cast<double>(list.individuals));
    list.percentSum += species.dominance;
  }
  list.species = std::move(found);
  return list;
}

std::optional<Density> Scaled_Density(double part, double whole) {
  if (!(part > 0) || !(whole > 0)) return {};
  const auto density = static_cast<float>(part / whole);
  if (!(density > 0) || !std::isfinite(density)) return {};
  Density result;
  // Compared in single precision as well: 0.0001 is 1 for 10000, not 10 for 100000. Beyond a trillion nobody reads it
  // as a number of entries.
  constexpr qint64 highest = 1'000'000'000'000;
  const auto scaled = [&] { return density * static_cast<float>(result.decade); };
  while (scaled() < 1 && result.decade < highest) result.decade *= 10;
  result.value = scaled();
  return result;
}

Diversity Shannon_Diversity(std::span<const SpeciesCount> species) {
  Diversity result;
  for (const SpeciesCount& one : species) result.individuals += one.total;
  double sum = 0;
  for (const SpeciesCount& one : species) {
    const double p = static_cast<double>(one.total) / static_cast<double>(result.individuals);
    const double pLogP = one.total > 0 ? p * std::log(p) : 0;
    sum += pLogP;
    result.shares.push_back({one.name, p, pLogP});
  }
  result.HS = sum == 0 ? 0 : -sum;
  if (species.size() < 2) return result;
  result.Hmax = std::log(static_cast<double>(species.size()));
  result.evenness = static_cast<float>(result.HS / result.Hmax);
  return result;
}
