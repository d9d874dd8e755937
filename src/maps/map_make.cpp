#include <QFile>
#include <QtEndian>
#include <cmath>

#include "maps/map_choose.h"
#include "maps/map_open.h"
#include "maps/map_scan.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

namespace {

constexpr int newMapPpM = 3780;  // 96 dpi

bool Is_Bitmap(const QString& path) {
  QFile file(Find_File(path));
  return file.open(QIODevice::ReadOnly) && file.read(2) == "BM";
}

}  // namespace

QSize Pixels_Of_Mm(double widthMm, double heightMm) {
  return {static_cast<int>(std::lround(widthMm * 96 / 25.4)), static_cast<int>(std::lround(heightMm * 96 / 25.4))};
}

bool New_Map(double widthMm, double heightMm) {
  FileRequest request;
  request.save = true;
  request.title = QStringLiteral("Karte mit Einträgen als BITMAP exportieren");
  request.defaultExtension = QStringLiteral("BMP");
  request.helpPage = QStringLiteral("Karte_neu.htm");
  request.filter = QStringLiteral("Quelldateien (*.bmp)|*.bmp|Alle Dateien (*.*)|*.*");
  request.name = QStringLiteral("Leere_Karte");
  request.folder = ProgramFolder;
  const auto path = File_Dialog(request);
  if (!path) return false;
  if (frmMDI.MapOpen && Clean_Path(*path).compare(MapFile, Qt::CaseInsensitive) == 0) {
    Message_Box(QStringLiteral("Diese Karte ist gerade geöffnet und kann nicht überschrieben werden:\n") + *path,
                MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Dateinamen für eine neue, leere Karte"));
    return false;
  }
  try {
    // 8 bits a pixel are enough for white paper, and A0 stays a small file.
    QImage white(Pixels_Of_Mm(widthMm, heightMm), QImage::Format_Indexed8);
    if (white.isNull()) Raise(errors::outOfMemory);
    white.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    white.fill(0);
    Save_Picture(white, *path, newMapPpM);
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Error: %1 %2\n\n%3").arg(error.number).arg(error.text, *path), MsgButtons::Ok,
                MsgIcon::Critical, QStringLiteral("Dateinamen für eine neue, leere Karte"));
    return false;
  }
  return Open_User_Map(*path);
}

void Take_Map_Size(const MapSize& size) {
  MapWidthMm = static_cast<float>(size.widthMm);
  MapHeightMm = static_cast<float>(size.heightMm);
  Map.MapXPpM = size.xPpM;
  Map.MapYPpM = size.yPpM;
  Map_Geometry();
  events.RedrawWanted.Emit();
  Message_Box(QStringLiteral("Die neuen Werte wurden von FLURAX übernommen."), MsgButtons::Ok, MsgIcon::Information,
              QStringLiteral("Info"));
}

bool Save_Map_Size(const MapSize& size) {
  const QString title = QStringLiteral("Kartengröße verändern.");
  const MsgAnswer answer = Message_Box(
      QStringLiteral("\nDer Informationsteil dieser Datei wird überschrieben,\nwenn Sie die Karte verändern.\n\n"
                     "Wollen Sie die Größe der Karte wirklich verändern? "),
      MsgButtons::YesNo, MsgIcon::Question, title, MsgDefault::Second);
  if (answer != MsgAnswer::Yes) return false;
  Guarded(title, [&size] {
    if (!Is_Bitmap(MapFile)) Raise(errors::badPicture, QStringLiteral("Keine Bitmap!") + QLatin1Char('\n') + MapFile);
    QByteArray resolution(8, '\0');
    qToLittleEndian<qint32>(size.xPpM, resolution.data());
    qToLittleEndian<qint32>(size.yPpM, resolution.data() + 4);
    Write_At(MapFile, 38, resolution);
    Map.MapXPpM = size.xPpM;
    Map.MapYPpM = size.yPpM;
  });
  return true;
}
