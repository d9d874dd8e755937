#include "analysis/species_matrix.h"

#include <QHash>
#include <algorithm>
#include <numeric>

#include "analysis/assigned_entries.h"
#include "analysis/german_order.h"
#include "analysis/leading_count.h"
#include "analysis/population.h"
#include "platform/text.h"

namespace {

struct Target {
  MatrixRow head;
  const std::vector<int>* entries;
};

std::vector<int> Marked_Texts(const MapInput& input) {
  std::vector<int> numbers;
  for (size_t i = 0; i < input.rows.size(); ++i) {
    const EntryType type = EntryType::Parse(input.rows[i].Typ);
    if (!type.IsText() || type.Kind() == EntryKind::Reference) continue;
    if (type.mark != Mark::None && !type.hidden) numbers.push_back(static_cast<int>(i));
  }
  return numbers;
}

std::vector<Target> Targets(const MapInput& input, const AssignedEntries& assigned) {
  std::vector<Target> targets;
  const auto add = [&](MatrixKind kind, auto fits) {
    for (size_t i = 0; i < input.rows.size(); ++i) {
      const EntryRow& row = input.rows[i];
      const EntryType type = EntryType::Parse(row.Typ);
      if (!type.IsPolygon() && !type.IsFigure()) continue;
      const EntryId id = EntryId::Parse(row.ID);
      if (!fits(row, id)) continue;
      const std::vector<int>& entries = assigned.To(id);
      if (entries.empty() && kind != MatrixKind::Area) continue;
      targets.push_back({{kind, id.name, row.Eintrag.simplified(), static_cast<int>(i), {}, {}}, &entries});
    }
  };
  add(MatrixKind::Area, Is_Area_Row);
  add(MatrixKind::Figure, Is_Figure_Row);
  add(MatrixKind::Line, Is_Line_Row);
  for (const QString& group : assigned.Groups())
    targets.push_back({{MatrixKind::Group, group, group, -1, {}, {}}, &assigned.In_Group(group)});
  return targets;
}

// Each row's leading count, looked at once.
class Counts {
 public:
  Counts(const MapInput& map, SpeciesMatrix& matrix) : input(map), result(matrix), known(map.rows.size()) {}
  // The entry's species and individuals; nothing for a number that is too large.
  const std::optional<std::pair<int, int>>& Of(int row) {
    Known& one = known[static_cast<size_t>(row)];
    if (one.looked) return one.value;
    one.looked = true;
    const QString& text = input.rows[static_cast<size_t>(row)].Eintrag;
    const CountedName counted = Population_Count(text);
    if (counted.tooLarge) {
      result.tooLarge += text.trimmed();
      return one.value;
    }
    auto place = places.constFind(counted.name);
    if (place == places.constEnd()) {
      place = places.insert(counted.name, static_cast<int>(result.species.size()));
      result.species.push_back(counted.name);
    }
    one.value = std::pair(*place, counted.count);
    return one.value;
  }

 private:
  struct Known {
    bool looked = false;
    std::optional<std::pair<int, int>> value;
  };
  const MapInput& input;
  SpeciesMatrix& result;
  std::vector<Known> known;
  QHash<QString, int> places;
};

// Brings the columns into the order of a word list: new column for each former one.
std::vector<size_t> Sort_Species(std::vector<QString>& species) {
  std::vector<GermanKey> keys(species.begin(), species.end());
  std::vector<size_t> order(species.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::sort(order.begin(), order.end(), [&keys](size_t a, size_t b) { return keys[a] < keys[b]; });
  std::vector<QString> sorted;
  std::vector<size_t> places(species.size());
  for (size_t i = 0; i < order.size(); ++i) {
    sorted.push_back(species[order[i]]);
    places[order[i]] = i;
  }
  species = std::move(sorted);
  return places;
}

void Add_To(int& cell, int count) { cell = To_Int32(static_cast<double>(cell) + count); }

}  // namespace

std::optional<SpeciesMatrix> Calc_Species_Matrix(const MapInput& input, const std::function<bool()>& step,
                                                 MatrixRows rows) {
  SpeciesMatrix result;
  const AssignedEntries assigned(input.rows);
  std::vector<Target> targets = Targets(input, assigned);
  const std::vector<int> marked = rows.marked ? Marked_Texts(input) : std::vector<int>();
  if (!marked.empty())
    targets.push_back({{MatrixKind::Marked, QString(), QStringLiteral("markierte Einträge"), -1, {}, {}}, &marked});
  Counts counts(input, result);
  for (const Target& target : targets)
    for (const int row : *target.entries) counts.Of(row);
  const std::vector<size_t> places = Sort_Species(result.species);
  result.totals.assign(result.species.size(), 0);
  std::vector<qint64> row64(result.species.size());
  for (Target& target : targets) {
    if (step && !step()) return {};
    MatrixRow& row = target.head;
    row.counts.assign(result.species.size(), 0);
    for (const int entry : *target.entries)
      if (const auto& counted = counts.Of(entry))
        Add_To(row.counts[places[static_cast<size_t>(counted->first)]], counted->second);
    std::copy(row.counts.begin(), row.counts.end(), row64.begin());
    row.indices = Diversity_Indices(row64);
    for (size_t i = 0; i < row64.size(); ++i) result.totals[i] += row64[i];
    result.rows.push_back(std::move(row));
  }
  result.all = Diversity_Indices(result.totals);
  return result;
}

QString Matrix_Kind_Word(MatrixKind kind) {
  switch (kind) {
    case MatrixKind::Area:
      return QStringLiteral("Fläche");
    case MatrixKind::Figure:
      return QStringLiteral("Figur");
    case MatrixKind::Line:
      return QStringLiteral("Linie");
    case MatrixKind::Marked:
      return QStringLiteral("Markierte");
    case MatrixKind::Group:
      break;
  }
  return QStringLiteral("Gruppe");
}

QString Species_Shown(const QString& name) { return name.isEmpty() ? QStringLiteral("(ohne Namen)") : name; }
