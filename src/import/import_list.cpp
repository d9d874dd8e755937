#include "import/import_list.h"

#include "coordinates/conversions.h"

ImportStatus Import_Status(const PlacedPoint& placed) {
  switch (placed.code) {
    case onMap:
      return ImportStatus::Ok;
    case tooFarLeft:
      return ImportStatus::Left;
    case tooFarRight:
      return ImportStatus::Right;
    case tooFarUp:
      return ImportStatus::Up;
    case tooFarDown:
      return ImportStatus::Down;
    case zoneTooLow:
      return ImportStatus::ZoneLow;
    case zoneTooHigh:
      return ImportStatus::ZoneHigh;
    default:
      return ImportStatus::Unreadable;
  }
}

QChar Import_Symbol(ImportStatus status) {
  constexpr char16_t codes[] = {252, 219, 220, 221, 222, 239, 240, 251, 76};
  return codes[static_cast<size_t>(status)];
}

QString Import_Status_Text(ImportStatus status) {
  switch (status) {
    case ImportStatus::Ok:
      return QStringLiteral("liegt auf der Karte");
    case ImportStatus::Left:
      return QStringLiteral("zu weit links im Westen");
    case ImportStatus::Right:
      return QStringLiteral("zu weit rechts im Osten");
    case ImportStatus::Up:
      return QStringLiteral("zu weit oben im Norden");
    case ImportStatus::Down:
      return QStringLiteral("zu weit unten im Süden");
    case ImportStatus::ZoneLow:
      return QStringLiteral("in einer niedrigeren Zone als die Karte");
    case ImportStatus::ZoneHigh:
      return QStringLiteral("in einer höheren Zone als die Karte");
    case ImportStatus::Exists:
      return QStringLiteral("in der Karte schon vorhanden");
    case ImportStatus::Unreadable:
      break;
  }
  return QStringLiteral("keine brauchbare Koordinate");
}

void ImportCounts::Count(const ImportMark& mark) {
  int* const counters[] = {&ok, &left, &right, &up, &down, &zone, &zone, &unreadable, &exists};
  ++all;
  ++*counters[static_cast<size_t>(mark.status)];
  if (mark.sameName && mark.samePosition) ++sameNameAndPosition;
  if (mark.sameName) ++sameName;
  if (mark.samePosition) ++samePosition;
}

QStringList Import_Summary(const ImportCounts& counts) {
  QStringList lines = {QString::number(counts.all) +
                       QStringLiteral(" Einträge wurden eingelesen, davon liegen außerhalb der Karte:")};
  const QString far = QStringLiteral(" zu weit");
  lines << QString::number(counts.left) + far + QStringLiteral(" links im Westen")
        << QString::number(counts.right) + far + QStringLiteral(" rechts im Osten")
        << QString::number(counts.up) + far + QStringLiteral(" oben im Norden")
        << QString::number(counts.down) + far + QStringLiteral(" unten im Süden");
  if (counts.zone > 0) lines << QString::number(counts.zone) + QStringLiteral(" in einer anderen Zone");
  if (counts.unreadable > 0)
    lines << QString::number(counts.unreadable) + QStringLiteral(" ohne brauchbare Koordinate");
  if (counts.exists > 0) lines << QString::number(counts.exists) + QStringLiteral(" sind in der Karte schon vorhanden");
  lines << QString::number(counts.ok) + QStringLiteral(" Einträge geeignet für den Import in die Karte");
  return lines;
}
