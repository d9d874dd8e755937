#include "exchange/csv_export.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "coordinates/conversions.h"
#include "coordinates/degree_text.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "store/csv_cell.h"
#include "store/entry.h"

namespace {

const QString title = QStringLiteral("Export der Karteneinträge in eine CSV-Datei");
const QString firstWords = QStringLiteral("Export der Datei: ");

constexpr std::array without = {4, 5, 11, 40};  // kinds without a line, marked or hidden

bool In_Metres() { return Coord.Metric() || (Coord.Geographic() && Coord.NetPKG); }

QStringList Head(const QString& name) {
  QStringList lines{firstWords + name + QStringLiteral(" in eine CSV-Datei."), {}};
  if (In_Metres()) {
    const bool utm = Coord.Grid == gridUtm;
    lines << (utm ? QStringLiteral("UTM, Zone:%1,  Kartendatum: %2 ").arg(Coord.ZoneText, Coord.GridDatum)
                  : QStringLiteral("Gauss-Krueger, Zone:%1,  Kartendatum: Potsdam ")
                        .arg(Coord.NetPKG ? Coord.PkgZone : Coord.ZoneText))
          << QString() << QStringLiteral("Nr ; Eintrag ; x ; y ; Rechtswert ; Hochwert");
  } else {
    lines << QStringLiteral("Geografische Koordinaten, Kartendatum: ") + Coord.GridDatum << QString()
          << QStringLiteral("Nr ; Eintrag ; x ; y ; Länge ; Breite")
          << QStringLiteral(";  ; Pixel ; Pixel ; Grad ; Grad");
  }
  return lines;
}

QString Degrees(double value, QChar axis) {
  if (Coord.NetDec) return Format(value, QStringLiteral("##0.000000"));
  const QString pattern = axis == u'x' ? QStringLiteral("##0.0######") : QStringLiteral("#0.0######");
  return (value < 0 ? QStringLiteral("-") : QString()) + Dec_To_GMS(axis + Format(std::abs(value), pattern));
}

// Both coordinates of a place; nothing without a net that covers it.
std::optional<std::pair<QString, QString>> Coordinates(int x, int y) {
  const auto metres = [](double value) { return Format(value, QStringLiteral("##0000")); };
  if (Coord.Metric() && Coord.MeterPerPix > 0) {
    const QPointF at = Pixel_To_Koord(Coord, x, y);
    return std::pair(metres(at.x()), metres(at.y()));
  }
  double longitude = 0, latitude = 0;
  if (!Coord.Geographic() || Pixel_To_Grad(Coord, x, y, longitude, latitude) != 1) return std::nullopt;
  if (Coord.NetPKG) return std::pair(metres(longitude * 1000 + Coord.PkgR), metres(latitude * 1000 + Coord.PkgH));
  if (std::abs(longitude) > 180 || std::abs(latitude) > 90) return std::nullopt;
  return std::pair(Degrees(longitude, u'x'), Degrees(latitude, u'y'));
}

// Line breaks and semicolons of a text would tear the line apart.
QString One_Cell(const QString& text) { return Csv_Guarded(Csv_One_Line(text).replace(u';', u',').trimmed()); }

// The field data of somebody may lie there under the same name.
void Keep_Foreign_File(const QString& path) {
  const QString there = Find_File(path);
  if (there.isEmpty() || Read_Lines(there).value(0).startsWith(firstWords)) return;
  const QFileInfo info(there);
  const QString base = info.path() + u'/' + info.completeBaseName() + QStringLiteral("_alt");
  QString aside = base + QStringLiteral(".csv");
  for (int number = 2; File_Exists(aside); ++number) aside = base + QString::number(number) + QStringLiteral(".csv");
  File_Rename(there, aside);
}

}  // namespace

bool Csv_Has_Line(const EntryRow& row) {
  const int kind = EntryType::Parse(row.Typ).base;
  return row.Typ != -1 && std::find(without.begin(), without.end(), kind) == without.end();
}

// The foot point where there is one. Figures and plan squares keep their size in its columns.
QPoint Csv_Place(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const bool sized = type.IsFigure() || type.Kind() == EntryKind::PlanSquare;
  return row.Xline == 0 || sized ? QPoint(row.Xmap, row.Ymap) : QPoint(row.Xline, row.Yline);
}

QStringList Csv_Export_Lines(const QString& name) {
  QStringList lines = Head(name);
  int number = 0;
  For_Each_Entry([&] {
    const EntryRow row = Read_Entry(*rsEntries);
    if (!Csv_Has_Line(row)) return;
    const int x = Csv_Place(row).x(), y = Csv_Place(row).y();
    QString line = QStringLiteral("%1 ; %2 ; %3 ; %4").arg(++number).arg(One_Cell(row.Eintrag)).arg(x).arg(y);
    const auto at = Coordinates(x, y);
    line +=
        at ? QStringLiteral(" ; %1 ; %2").arg(at->first, at->second) : QStringLiteral(" ; Koordinaten nicht gefunden");
    lines << line;
  });
  lines << QStringLiteral("Ende");
  return lines;
}

void Export_Csv() {
  const QFileInfo table(TableFile);
  const QString path = table.path() + u'/' + table.completeBaseName() + QStringLiteral(".csv");
  try {
    const BusyPointer busy;
    Keep_Foreign_File(path);
    Write_Lines(path, Csv_Export_Lines(table.fileName()));
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + u'\r' + path, MsgButtons::Ok, MsgIcon::Critical,
                QStringLiteral("Fehler: Export in -> CSV-Datei"));
    return;
  }
  Message_Box(QStringLiteral("Die Karteneinträge wurden in folgende Datei geschrieben: \r%1\r\rDiese Datei kann mit "
                             "Excel, oder einer anderen Tabellenkalkulation, bzw. mit einem Editor oder Word geöffnet "
                             "werden.")
                  .arg(path),
              MsgButtons::Ok, MsgIcon::Information, title);
}
