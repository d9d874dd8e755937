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

QString Import_Summary(const ImportCounts& counts) {
  QString text =
      QString::number(counts.all) + QStringLiteral(" Einträge wurden eingelesen, davon liegen außerhalb der Karte:\n");
  const std::pair<int, ImportStatus> directions[] = {{counts.left, ImportStatus::Left},
                                                     {counts.right, ImportStatus::Right},
                                                     {counts.up, ImportStatus::Up},
                                                     {counts.down, ImportStatus::Down}};
  QStringList outside;
  for (const auto& [count, status] : directions) outside << QString::number(count) + u' ' + Import_Status_Text(status);
  text += outside.join(QStringLiteral(", ")) + u'\n';
  const auto add = [&text](int count, const QString& what) {
    if (count > 0) text += QString::number(count) + what;
  };
  add(counts.zone, QStringLiteral(" liegen in einer anderen Zone, "));
  add(counts.unreadable, QStringLiteral(" haben keine brauchbare Koordinate, "));
  add(counts.exists, QStringLiteral(" sind in der Karte schon vorhanden, "));
  return text + QString::number(counts.ok) + QStringLiteral(" Einträge geeignet für den Import in die Karte");
}
