#include "edit/row_switches.h"

#include "edit/bulk_change.h"

namespace {

constexpr double labelSize = 8;  // of a label that has no size yet
const QString edgeTitle = QStringLiteral("Kanten");
const QString labelTitle = QStringLiteral("Name");

EntryKind Other_Edges(EntryKind kind) {
  switch (kind) {
    case EntryKind::Polygon:
      return EntryKind::PolygonRound;
    case EntryKind::PolygonRound:
      return EntryKind::Polygon;
    case EntryKind::FreeFigure:
      return EntryKind::FreeFigureRound;
    case EntryKind::FreeFigureRound:
      return EntryKind::FreeFigure;
    default:
      return kind;
  }
}

}  // namespace

void Round_Corners() {
  Write_Changes(Change_Of_Current([](EntryRow& row, qint64) {
                  EntryType type = EntryType::Parse(row.Typ);
                  type.base = static_cast<int>(Other_Edges(type.Kind()));
                  row.Typ = type.ToNumber();
                }),
                edgeTitle);
}

void Toggle_Label() {
  Write_Changes(Change_Of_Current([](EntryRow& row, qint64) {
                  if (EntryType::Parse(row.Typ).IsPolygon()) row.Groesse = row.Groesse == 0 ? -labelSize : -row.Groesse;
                }),
                labelTitle);
}
