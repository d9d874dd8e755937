#include "maps/map_check.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <climits>
#include <cstdlib>

#include "objects/scale_bar.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"
#include "store/header_row.h"

namespace {

constexpr int headerBytes = 54;         // file header and information header of a bitmap
constexpr double inchFactor = 2.54065;  // the program's own centimetres per inch, kept so that old hints stay the same
constexpr double screenMm = 25.4 / 96;

int Dpi(int pointsPerMetre) { return static_cast<int>(Fix(pointsPerMetre * inchFactor / 100)); }

QString Distorted_Text(int xPpM, int yPpM) {
  const auto line = [](const QString& name, int ppm) {
    return QStringLiteral("%1%2 Bildpunkte pro Meter = %3 dpi").arg(name).arg(ppm).arg(Dpi(ppm));
  };
  return QStringList{
      QStringLiteral("Die Karte ist verzerrt."),
      QStringLiteral("Ursache:"),
      QStringLiteral("Der Scanner, mit dem die Karte eingelesen wurde,"),
      QStringLiteral("arbeitet mit unterschiedlicher Bildauflösung in horizontaler und vertikaler Richtung."),
      line(QStringLiteral("Horizontale Auflösung der Karte: "), xPpM),
      line(QStringLiteral("Vertikale Auflösung der Karte:   "), yPpM),
      QStringLiteral("Folge:"),
      QStringLiteral("FLURAX kann Entfernungen und Flächengrößen nicht genau berechnen."),
      QStringLiteral("Abhilfe:"),
      QStringLiteral("1. Die allermeisten Scanner arbeiten mit gleicher horizontaler und vertikaler Bildauflösung."),
      QStringLiteral("Bitte lesen Sie die Anleitung des Scanners zum Thema 'Bildauflösung'."),
      QStringLiteral("2. Möglicherweise hat das verwendete Grafikprogramm beim Einscannen"),
      QStringLiteral("falsche Angaben in den Informationsteil der Bilddatei (Karte) geschrieben."),
      QStringLiteral("Scannen Sie die Karte mit einem anderen Grafikprogramm.")}
      .join(QLatin1Char('\n'));
}

}  // namespace

void Check_Bitmap(const QString& path) {
  QFile file(Find_File(path));
  if (!file.open(QIODevice::ReadOnly)) Raise(errors::fileNotFound);
  const QByteArray header = file.read(headerBytes);
  if (header.size() < headerBytes || !header.startsWith("BM")) {
    Message_Box(QStringLiteral("Keine Bitmap!") + QLatin1Char('\n') + path, MsgButtons::Ok, MsgIcon::Information,
                QStringLiteral("Hinweis"));
    return;
  }
  const auto number = [&header](int position) { return qFromLittleEndian<qint32>(header.constData() + position); };
  MapWidthPx = number(18);
  MapHeightPx = std::abs(std::max(number(22), -INT_MAX));  // a bitmap stored from the top down has a negative height
  int xPpM = number(38), yPpM = number(42);
  MapWidthMm = MapHeightMm = 0;
  if (xPpM >= 10) {
    if (xPpM != yPpM && Dpi(xPpM) != Dpi(yPpM))
      Message_Box(Distorted_Text(xPpM, yPpM), MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Hinweise"));
    if (yPpM < 10) yPpM = xPpM;
    MapWidthMm = static_cast<float>(MapWidthPx * 1000.0 / xPpM);
    MapHeightMm = static_cast<float>(MapHeightPx * 1000.0 / yPpM);
  } else {
    MapWidthMm = static_cast<float>(MapWidthPx * screenMm);
    MapHeightMm = static_cast<float>(MapHeightPx * screenMm);
    xPpM = yPpM = static_cast<int>(1000 / screenMm + 0.5);
  }
  Map.MapXPpM = xPpM;
  Map.MapYPpM = yPpM;
}

bool Scan_Table() {
  frmMDI.HasPlanSquares = frmMDI.HasHidden = false;
  Forget_Scale();
  if (!rsEntries) return false;
  try {
    For_Each_Entry([] {
      const EntryType type = Type_Here();
      frmMDI.HasHidden |= type.hidden && type.Kind() != EntryKind::NorthArrow;
      frmMDI.HasPlanSquares |= type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::PlanDesign;
      if (type.Kind() == EntryKind::Scale) Read_Scale(Read_Entry(*rsEntries));
    });
  } catch (const Error& error) {
    // A number out of range is a bad row, not a damaged file.
    if (error.number < errors::noCurrentRecord || error.number >= 5000) return true;
    return false;
  }
  return true;
}
