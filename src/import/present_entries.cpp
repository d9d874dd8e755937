#include "import/present_entries.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "store/entry.h"

namespace {

int Cell_Of(int place) { return static_cast<int>(std::floor(static_cast<double>(place) / PresentEntries::nearBy)); }

quint64 Cell(int column, int row) {
  return static_cast<quint64>(static_cast<quint32>(column)) << 32 | static_cast<quint32>(row);
}

}  // namespace

void PresentEntries::Add(const QString& name, QPoint at) {
  const QString trimmed = name.trimmed();
  names.insert(trimmed);
  const quint64 cell = Cell(Cell_Of(at.x()), Cell_Of(at.y()));
  for (const QString& key : {QString(), trimmed}) {
    auto& places = spots[{cell, key}];
    if (std::find(places.begin(), places.end(), at) == places.end()) places.push_back(at);
    if (trimmed.isEmpty()) return;
  }
}

void PresentEntries::Add_Map() {
  For_Each_Entry([this] {
    const EntryType type = Type_Here();
    if (type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::PlanDesign) return;
    Add(rsEntries->Text(column::Eintrag),
        {Stored_Number(rsEntries->Integer(column::Xmap)), Stored_Number(rsEntries->Integer(column::Ymap))});
  });
}

bool PresentEntries::Found(QPoint at, const QString& name) const {
  const int column = Cell_Of(at.x()), row = Cell_Of(at.y());
  for (int x = column - 1; x <= column + 1; ++x)
    for (int y = row - 1; y <= row + 1; ++y) {
      const auto places = spots.constFind({Cell(x, y), name});
      if (places == spots.constEnd()) continue;
      const bool any = std::any_of(places->begin(), places->end(), [at](QPoint there) {
        return std::abs(there.x() - at.x()) < nearBy && std::abs(there.y() - at.y()) < nearBy;
      });
      if (any) return true;
    }
  return false;
}

bool PresentEntries::Near(QPoint at) const { return Found(at, {}); }

bool PresentEntries::Near(QPoint at, const QString& name) const {
  const QString trimmed = name.trimmed();
  return !trimmed.isEmpty() && names.contains(trimmed) && Found(at, trimmed);
}
