#include "import/table_entry.h"

#include <QRect>
#include <algorithm>
#include <cstdlib>

#include "platform/text.h"
#include "state/table_state.h"
#include "store/vertex_table.h"

namespace {

constexpr int farthest = 32767;

bool Can_Be_Stored(QPoint at) { return std::abs(at.x()) <= farthest && std::abs(at.y()) <= farthest; }

// A picture has no size until it was drawn once.
bool Has_Box(const EntryType& type, const EntryRow& row) {
  if (type.Kind() == EntryKind::Picture) return row.Xline > 0 && row.Yline > 0;
  return type.IsFigure() || type.Kind() == EntryKind::PlanSquare;
}

bool Has_Second_Place(const EntryType& type, const EntryRow& row) {
  if (type.Kind() == EntryKind::Scale) return true;
  return type.IsText() && type.Kind() != EntryKind::Text && (row.Xline != 0 || row.Yline != 0);
}

bool Move_Box(EntryRow& row, QPoint from, QPoint to, const PlaceOf& placeOf) {
  EntryBox box = entry_box(row);
  const auto corner = placeOf({from.x() + box.width, from.y() + box.height});
  if (!corner || !Can_Be_Stored(*corner)) return false;
  box = {to.x(), to.y(), std::max(1, corner->x() - to.x()), std::max(1, corner->y() - to.y())};
  set_entry_box(row, box);
  return true;
}

}  // namespace

bool Move_Entry(CarriedEntry& entry, const PlaceOf& placeOf) {
  const EntryType type = entry.Type();
  EntryRow& row = entry.row;
  if (type.Kind() == EntryKind::PlanDesign) return true;  // its numbers describe the raster
  const QPoint from(row.Xmap, row.Ymap);
  const auto to = placeOf(from);
  if (!to || !Can_Be_Stored(*to)) return false;
  if (Has_Box(type, row)) {
    if (!Move_Box(row, from, *to, placeOf)) return false;
  } else if (Has_Second_Place(type, row)) {
    const auto second = placeOf({row.Xline, row.Yline});
    if (!second || !Can_Be_Stored(*second)) return false;
    row.Xline = second->x();
    row.Yline = second->y();
  }
  row.Xmap = to->x();
  row.Ymap = to->y();
  for (QPoint& vertex : entry.vertices) {
    const auto place = placeOf(vertex);
    if (!place || !Can_Be_Stored(*place) || place->x() < stopLimit) return false;
    vertex = *place;
  }
  return true;
}

bool Lies_On_Map(const CarriedEntry& entry, QSize map) {
  const auto onMap = [map](QPoint at) {
    return at.x() >= 0 && at.y() >= 0 && at.x() <= map.width() && at.y() <= map.height();
  };
  const EntryType type = entry.Type();
  if (type.Kind() == EntryKind::PlanDesign) return true;
  if (!entry.vertices.empty()) return std::any_of(entry.vertices.begin(), entry.vertices.end(), onMap);
  if (onMap({entry.row.Xmap, entry.row.Ymap})) return true;
  if (!Has_Box(type, entry.row)) return false;
  const EntryBox box = entry_box(entry.row);
  return QRect(box.x, box.y, box.width, box.height).intersects(QRect(QPoint(), map));
}

// Names --------------------------------------------------------------------------------------------------------------

bool CarriedNames::Rename(CarriedEntry& entry) {
  const EntryType type = entry.Type();
  if (!type.HasVertices() && !type.IsFigure()) return true;
  EntryId id = EntryId::Parse(entry.row.ID);
  const QString old = id.TableName(), known = old.toLower();
  if (old.isEmpty()) return false;
  if (type.HasVertices() || taken.contains(known)) {
    QString name;
    int counter = 1;
    do {
      name = old + u'i' + QString::number(counter++).rightJustified(5, u'0');
    } while (taken.contains(name.toLower()));
    id.name = name;
  }
  const QString stored = id.ToText();
  if (stored.size() > textColumnWidth) return false;
  entry.row.ID = stored;
  taken.insert(id.TableName().toLower());
  renamed.insert(known, id.TableName());
  return true;
}

void CarriedNames::Adjust(CarriedEntry& entry) {
  EntryId id = EntryId::Parse(entry.row.ID);
  if (id.assignment.isEmpty() && !id.hasGroup) return;
  QStringList targets;
  for (const QString& target : id.assignment.split(u'>', Qt::SkipEmptyParts))
    if (const auto name = renamed.constFind(target.trimmed().toLower()); name != renamed.cend()) targets << *name;
  id.assignment = targets.join(u'>');
  if (id.hasGroup) {
    QString& number = groups[id.group];
    if (number.isEmpty()) number = QString::number(++lastGroup);
    id.group = number;
  }
  const QString stored = id.ToText();
  if (stored.size() <= textColumnWidth) entry.row.ID = stored;
}

// What is there already ----------------------------------------------------------------------------------------------

QString KnownEntries::Key(const CarriedEntry& entry) {
  const QString key = entry.row.Eintrag + QChar(1) + QString::number(entry.Type().base);
  if (!entry.vertices.empty()) return key;
  return key + QStringLiteral(" %1 %2").arg(entry.row.Xmap).arg(entry.row.Ymap);
}

void KnownEntries::Add(const CarriedEntry& entry) { entries.insert(Key(entry), entry.vertices); }

bool KnownEntries::Has(const CarriedEntry& entry) const {
  const auto [first, last] = entries.equal_range(Key(entry));
  return std::any_of(first, last, [&entry](const std::vector<QPoint>& vertices) { return vertices == entry.vertices; });
}
