#pragma once
#include <optional>
#include <span>
#include <vector>

#include <QtGlobal>

// Indices of diversity of one community, from the individuals of each species. Species without individuals do not
// count. n = individuals of a species, N = sum of n, S = number of species, p = n / N.
struct DiversityIndices {
  qint64 individuals = 0;          // N
  int species = 0;                 // S
  std::optional<double> shannon;   // H' = -sum p ln p (Shannon and Weaver 1949)
  std::optional<double> evenness;  // H' / ln S (Pielou, J. Theor. Biol. 13:131, 1966); none for a single species
  std::optional<double> simpson;   // 1 - D, D = sum p^2 (Simpson, Nature 163:688, 1949)
  std::optional<double> inverse;   // 1 / D (Hill, Ecology 54:427, 1973)
  // Species to be expected, bias-corrected: S + F1 (F1 - 1) / (2 (F2 + 1)), F1 and F2 species with one and with two
  // individuals (Chao, Scand. J. Stat. 11:265, 1984; Chao in Encyclopedia of Statistical Sciences, 2005).
  std::optional<double> chao1;
  std::optional<double> bergerParker;  // largest p (Berger and Parker, Science 168:1345, 1970)
};
// Without individuals only N and S are there.
DiversityIndices Diversity_Indices(std::span<const qint64> counts);

// How the number of species grows with the number of areas looked at.
struct SpeciesAccumulation {
  std::vector<int> collected;  // species in the first 1, 2, ... areas in their order
  // Mean over all orders, exactly: S(k) = sum over species of 1 - C(A - m, k) / C(A, k), m = areas with the species, A
  // = all areas (Ugland, Gray and Ellingsen, J. Anim. Ecol. 72:888, 2003; Colwell, Mao and Chang, Ecology 85:2717,
  // 2004).
  std::vector<double> expected;
};
// A row an area, a column a species; anything above 0 is there. All rows have the same length.
SpeciesAccumulation Accumulate_Species(std::span<const std::vector<int>> areas);
