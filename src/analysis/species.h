#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <span>
#include <vector>

// Species and their numbers among some entries: abundance, dominance, density, diversity.

struct SpeciesCount {
  QString name;         // "" for texts of digits only
  qint64 total = 0;     // abundance: individuals of the species
  float dominance = 0;  // its share of all individuals, percent
  bool operator==(const SpeciesCount&) const = default;
};

struct SpeciesList {
  std::vector<SpeciesCount> species;
  qint64 individuals = 0;   // N, of all species
  float percentSum = 0;     // of the listed dominances
  bool digitsSeen = false;  // a text begins with a number
  QStringList tooLarge;     // texts whose number is beyond the bound; they are not counted
};

// Counts the texts by their leading numbers (Population_Count); equal names, letter by letter, are one species.
// The order: the threshold falls from M to 1, M being the largest total of a species of several texts (at least 1);
// at each step the species that reach it follow in the order of the texts. So a single text with a large number stands
// among the first, and a species without individuals is not listed.
SpeciesList List_Species(std::span<const QString> texts);

// A share with a power of ten that brings it to 1 or more: 0.0004 is 4 for 10000. Held in single precision.
struct Density {
  float value = 0;
  qint64 decade = 1;
};
// part / whole. Nothing if there is no whole or no part.
std::optional<Density> Scaled_Density(double part, double whole);

// Shannon-Wiener with the natural logarithm (C. E. Shannon and W. Weaver, "The mathematical theory of communication",
// 1949): HS = -sum p ln p; evenness by E. C. Pielou (J. Theor. Biol. 13, 1966): HS / ln S.
struct Diversity {
  struct Share {
    QString name;
    double p = 0, pLogP = 0;
  };
  qint64 individuals = 0;
  std::vector<Share> shares;
  double HS = 0, Hmax = 0;
  std::optional<float> evenness;  // none for a single species
};
// There must be an individual: a share of none is no number.
Diversity Shannon_Diversity(std::span<const SpeciesCount> species);
