#include "analysis/color_assignment.h"

#include <QHash>
#include <algorithm>
#include <map>

#include "analysis/german_order.h"
#include "analysis/leading_count.h"
#include "platform/error.h"

namespace {
constexpr qsizetype nameLength = 80;

bool Is_Counted(const EntryRow& row, const EntryType& type, const ColorOptions& options) {
  if (type.hidden) return options.hidden;
  if (EntryId::Parse(row.ID).inactive) return options.inactive;
  return type.mark != Mark::None ? options.marked : options.plain;
}

int Color_Sum(QRgb color) { return qRed(color) + qGreen(color) + qBlue(color); }

void Take_Name(ColorEntry& entry, bool leadingNumbers) {
  entry.name = entry.text;
  if (!leadingNumbers) return;
  const CountedName counted = Leading_Count(entry.text);
  entry.name = counted.name;
  entry.count = counted.count;
}

// The species in their order, each with its entries in table order.
using EntriesOfSpecies = std::map<GermanKey, std::vector<const ColorEntry*>>;

EntriesOfSpecies Sorted(const std::vector<ColorEntry>& entries) {
  QHash<QString, std::vector<const ColorEntry*>> byName;
  for (const ColorEntry& entry : entries)
    if (entry.counted) byName[entry.name].push_back(&entry);
  EntriesOfSpecies sorted;
  for (auto it = byName.begin(); it != byName.end(); ++it) sorted.emplace(GermanKey(it.key()), std::move(it.value()));
  return sorted;
}

std::vector<QRgb> Sorted_Colors(const EntriesOfSpecies& species) {
  std::vector<QRgb> colors;
  QHash<QRgb, bool> known;
  for (const auto& [key, entries] : species) {
    for (const ColorEntry* entry : entries) {
      if (known.contains(entry->color)) continue;
      known.insert(entry->color, true);
      colors.push_back(entry->color);
      if (colors.size() > maxColors)
        Raise(5000, QStringLiteral("Zu viele Durchgänge beim Sortieren der Karteneinträge."));
    }
  }
  std::stable_sort(colors.begin(), colors.end(), [](QRgb a, QRgb b) { return Color_Sum(a) > Color_Sum(b); });
  return colors;
}
}  // namespace

QPoint Entry_Place(const EntryRow& row) {
  return row.Xline >= 1 ? QPoint(row.Xline, row.Yline) : QPoint(row.Xmap, row.Ymap);
}

QRgb Scan_Color(const QImage& picture, QPoint at) {
  return picture.rect().contains(at) ? picture.pixel(at) | 0xFF000000U : 0xFFFFFFFFU;
}

std::optional<ColorAssignment> Assign_To_Colors(std::span<const EntryRow> rows, const ColorOptions& options,
                                                const std::function<QRgb(QPoint)>& colorAt,
                                                const std::function<bool()>& step) {
  ColorAssignment result;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (step && !step()) return {};
    const EntryRow& row = rows[i];
    const EntryType type = EntryType::Parse(row.Typ);
    if (type.base < 0 || type.base > 3) continue;
    ColorEntry entry;
    entry.row = static_cast<int>(i);
    entry.text = row.Eintrag.trimmed().left(nameLength);
    entry.color = colorAt(Entry_Place(row));
    entry.counted = Is_Counted(row, type, options);
    result.leftOut = result.leftOut || !entry.counted;
    if (entry.counted) Take_Name(entry, options.leadingNumbers);
    result.entries.push_back(std::move(entry));
  }
  const EntriesOfSpecies sorted = Sorted(result.entries);
  result.colors = Sorted_Colors(sorted);
  QHash<QRgb, size_t> places;
  for (size_t i = 0; i < result.colors.size(); ++i) places.insert(result.colors[i], i);
  result.perColor.assign(result.colors.size(), 0);
  for (const auto& [key, entries] : sorted) {
    ColorSpecies species{entries.front()->name, entries.front()->row, 0, std::vector<qint64>(result.colors.size(), 0)};
    for (const ColorEntry* entry : entries) {
      const size_t place = places.value(entry->color);
      species.perColor[place] += entry->count;
      species.total += entry->count;
      result.perColor[place] += entry->count;
    }
    result.total += species.total;
    result.species.push_back(std::move(species));
  }
  return result;
}
