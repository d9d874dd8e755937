#include "analysis/population.h"

namespace {
bool Is_Free_Polygon(const EntryRow& row, const EntryId& id) {
  return EntryType::Parse(row.Typ).IsPolygon() && id.assignment.isEmpty();
}

bool Is_Plain(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  return !type.hidden && type.mark == Mark::None;
}
}  // namespace

bool Is_Area_Row(const EntryRow& row, const EntryId& id) { return Is_Free_Polygon(row, id) && id.IsArea(); }

bool Is_Line_Row(const EntryRow& row, const EntryId& id) { return Is_Free_Polygon(row, id) && id.IsLine(); }

bool Is_Figure_Row(const EntryRow& row, const EntryId& id) {
  return EntryType::Parse(row.Typ).IsFigure() && id.assignment.isEmpty();
}

int First_Area_Row(std::span<const EntryRow> rows) {
  for (size_t i = 0; i < rows.size(); ++i)
    if (rows[i].ID.trimmed().startsWith(QLatin1String("Fl"))) return static_cast<int>(i);
  return -1;
}

int First_Area(std::span<const EntryRow> rows) {
  for (size_t i = 0; i < rows.size(); ++i)
    if (Is_Area_Row(rows[i], EntryId::Parse(rows[i].ID))) return static_cast<int>(i);
  return -1;
}

AreaPopulation Population_Of(const MapInput& input, int row, const AssignedEntries& assigned) {
  const EntryRow& area = input.rows[static_cast<size_t>(row)];
  AreaPopulation result;
  result.row = row;
  const std::vector<QPoint> vertices = input.vertices(area);
  result.size = EntryType::Parse(area.Typ).IsFigure() ? Figure_Size(area, vertices, input.measure.perPixel)
                                                      : Polygon_Size(vertices, input.measure.perPixel);
  std::vector<QString> texts;
  for (const int number : assigned.To(EntryId::Parse(area.ID)))
    texts.push_back(input.rows[static_cast<size_t>(number)].Eintrag);
  result.assigned = static_cast<int>(texts.size());
  result.species = List_Species(texts);
  result.density = Scaled_Density(result.assigned, result.size.areaNat);
  result.inverse = Scaled_Density(result.size.areaNat, result.assigned);
  return result;
}

std::optional<Population> Calc_Population_Values(const MapInput& input, int first, const std::function<bool()>& step) {
  Population result;
  const auto count = static_cast<int>(input.rows.size());
  const AssignedEntries assigned(input.rows);
  for (int i = 0; i < count; ++i) {
    if (step && !step()) return {};
    const EntryRow& row = input.rows[static_cast<size_t>(i)];
    if (!row.ID.contains(QLatin1String("Fl"))) continue;
    const EntryId id = EntryId::Parse(row.ID);
    const bool isFirst = i == first && id.IsArea() && id.assignment.isEmpty();
    if (i == first && !isFirst) return Population();
    if (!isFirst && !Is_Area_Row(row, id)) continue;
    if (!isFirst && !Is_Plain(row)) {
      ++result.leftOut;
      continue;
    }
    if (i < first) continue;
    result.areas.push_back(Population_Of(input, i, assigned));
    const SpeciesList& species = result.areas.back().species;
    result.digitsSeen = result.digitsSeen || species.digitsSeen;
    result.tooLarge += species.tooLarge;
  }
  return result;
}
