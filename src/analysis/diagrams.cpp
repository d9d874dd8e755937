#include "analysis/diagrams.h"

#include <algorithm>

#include "analysis/assigned_entries.h"

namespace {

bool Is_Group(const MatrixRow& row) { return row.kind == MatrixKind::Group || row.kind == MatrixKind::Marked; }

// Sums of the species over the rows that count: an entry of a group mostly belongs to an area as well.
std::vector<qint64> Counts_Of_All(const SpeciesMatrix& matrix) {
  const bool onlyGroups = std::all_of(matrix.rows.begin(), matrix.rows.end(), Is_Group);
  std::vector<qint64> counts(matrix.species.size(), 0);
  for (const MatrixRow& row : matrix.rows)
    if (onlyGroups || !Is_Group(row))
      for (size_t i = 0; i < counts.size(); ++i) counts[i] += row.counts[i];
  return counts;
}

struct Bounds {
  double area = 0, perimeter = 0;
};

NearestDistances Nearest_Of(const std::vector<NeighbourEntry>& entries, double perPixel,
                            const std::optional<Bounds>& bounds) {
  NearestDistances result;
  if (entries.size() < 2) return result;
  const auto found = Find_Neighbours(entries, 1);
  for (const double pixels : found->distance) result.distances.push_back(pixels * perPixel);
  result.histogram = Histogram_Of(result.distances);
  if (bounds) result.pattern = Clark_Evans(result.distances, bounds->area, bounds->perimeter);
  return result;
}

std::optional<Bounds> Bounds_Of(const MapInput& input, const MatrixRow& row) {
  if (row.kind != MatrixKind::Area && row.kind != MatrixKind::Figure) return {};
  EntryRow shape = input.rows[static_cast<size_t>(row.row)];
  EntryType type = EntryType::Parse(shape.Typ);
  if (type.Kind() == EntryKind::Circle) {  // its size is that of a larger one; an ellipse's is that of the drawn one
    type.base = static_cast<int>(EntryKind::Ellipse);
    shape.Typ = type.ToNumber();
  }
  const auto vertices = input.vertices(shape);
  const ShapeSize size = type.IsFigure() ? Figure_Size(shape, vertices, input.measure.perPixel)
                                         : Polygon_Size(vertices, input.measure.perPixel);
  return Bounds{size.areaNat, size.perimeterNat};
}

}  // namespace

std::vector<RankedSpecies> Rank_Abundance(const SpeciesMatrix& matrix, std::optional<size_t> row) {
  std::vector<qint64> counts;
  if (row && *row < matrix.rows.size())
    counts.assign(matrix.rows[*row].counts.begin(), matrix.rows[*row].counts.end());
  else
    counts = Counts_Of_All(matrix);
  std::vector<RankedSpecies> ranked;
  for (size_t i = 0; i < counts.size(); ++i)
    if (counts[i] > 0) ranked.push_back({Species_Shown(matrix.species[i]), counts[i]});
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const RankedSpecies& a, const RankedSpecies& b) { return a.count > b.count; });
  return ranked;
}

AreaAccumulation Accumulate_Areas(const SpeciesMatrix& matrix) {
  AreaAccumulation result;
  std::vector<std::vector<int>> areas;
  for (const MatrixRow& row : matrix.rows) {
    if ((row.kind != MatrixKind::Area && row.kind != MatrixKind::Figure) || row.indices.individuals == 0) continue;
    result.names.push_back(row.name.isEmpty() ? row.id : row.name);
    areas.push_back(row.counts);
  }
  result.species = Accumulate_Species(areas);
  return result;
}

NearestDistances Nearest_On_Map(const MapInput& input, QSize sheet) {
  const double width = sheet.width() * input.measure.perPixel, height = sheet.height() * input.measure.perPixel;
  return Nearest_Of(Neighbour_Entries(input.rows), input.measure.perPixel,
                    Bounds{width * height, 2 * (width + height)});
}

NearestDistances Nearest_In(const MapInput& input, const MatrixRow& row) {
  std::vector<EntryRow> rows;
  if (row.row < 0 && row.kind != MatrixKind::Group) return {};
  const AssignedEntries assigned(input.rows);
  const auto& numbers = row.kind == MatrixKind::Group
                            ? assigned.In_Group(row.id)
                            : assigned.To(EntryId::Parse(input.rows[static_cast<size_t>(row.row)].ID));
  for (const int number : numbers) rows.push_back(input.rows[static_cast<size_t>(number)]);
  return Nearest_Of(Neighbour_Entries(rows), input.measure.perPixel, Bounds_Of(input, row));
}

QString Pattern_Word(const ClarkEvans& pattern) {
  constexpr double bound = 1.96;
  if (pattern.z < -bound) return QStringLiteral("gehäuft");
  return pattern.z > bound ? QStringLiteral("gleichmäßig") : QStringLiteral("zufällig");
}
