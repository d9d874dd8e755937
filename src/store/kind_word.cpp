#include "store/kind_word.h"

#include "store/entry.h"

QString Kind_Word(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.IsPolygon()) return EntryId::Parse(row.ID).IsLine() ? QStringLiteral("Linie") : QStringLiteral("Fläche");
  if (type.IsFigure()) return QStringLiteral("Figur");
  switch (type.Kind()) {
    case EntryKind::Picture:
      return QStringLiteral("Bild");
    case EntryKind::Scale:
      return QStringLiteral("Maßstab");
    case EntryKind::NorthArrow:
      return QStringLiteral("Nordpfeil");
    case EntryKind::Net:
      return QStringLiteral("Koordinatennetz");
    case EntryKind::PlanSquare:
    case EntryKind::PlanDesign:
      return QStringLiteral("Planquadrat");
    default:
      break;
  }
  if (!type.IsText()) return QStringLiteral("Eintrag");
  return FontSpec::Parse(row.Schrift).IsSymbol() ? QStringLiteral("Symbol") : QStringLiteral("Text");
}
