#include "import/gps_file.h"

#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>

#include "import/gps_guest.h"
#include "import/gpx.h"
#include "import/pcx5.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/zip_reader.h"

namespace {

constexpr int unreadable = 5000;
constexpr qint64 largestUnpacked = qint64{512} << 20;

const QStringList& Text_Endings() {
  static const QStringList endings = {QStringLiteral("wpt"), QStringLiteral("trk"), QStringLiteral("txt")};
  return endings;
}

// What a file dropped on the map may be, besides packed ones; ".txt" may be anything.
const QStringList& Known_Endings() {
  static const QStringList endings = {QStringLiteral("gpx"),  QStringLiteral("wpt"), QStringLiteral("trk"),
                                      QStringLiteral("kml"),  QStringLiteral("kmz"), QStringLiteral("fit"),
                                      QStringLiteral("nmea"), QStringLiteral("gdb"), QStringLiteral("tcx"),
                                      QStringLiteral("igc"),  QStringLiteral("loc"), QStringLiteral("plt")};
  return endings;
}

bool Is_Text(const QByteArray& bytes) {
  constexpr qsizetype head = 8192;
  qsizetype odd = 0;
  const QByteArray first = bytes.left(head);
  for (const char byte : first) {
    const auto code = static_cast<unsigned char>(byte);
    if ((code < 32 && code != '\t' && code != '\n' && code != '\r' && code != '\f') || code == 127) ++odd;
  }
  return odd * 50 <= first.size();  // a stray control character in the middle is none of its faults
}

QString Text_Of(const QByteArray& bytes) {
  if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
    QStringDecoder decoder(QStringDecoder::Utf16);
    return decoder(bytes);
  }
  return Decode_Text(bytes);
}

// A log without a day, or one of a program that had no receiver: nothing of it would be left.
GpsFile Read_Nmea(const QByteArray& bytes, const QString& ending) {
  const auto read = [&](const char* options) {
    return Read_Gpx(Babel_File(bytes, QStringLiteral("nmea") + QLatin1String(options), ending));
  };
  GpsFile file = read("");
  if (!file.tracks.empty()) return file;
  if (GpsFile dayless = read(",date=20000101"); !dayless.tracks.empty()) return dayless;
  GpsFile all = read(",date=20000101,ignore_fix=1");
  if (all.tracks.empty()) return file;
  all.remark = QStringLiteral("Alle Positionen der Datei sind als solche ohne Empfang gekennzeichnet.");
  return all;
}

GpsFile Read_Content(const QByteArray& bytes, const QString& ending) {
  if (bytes.trimmed().isEmpty()) Raise(unreadable, QStringLiteral("Die Datei ist leer."));
  const QString format = Babel_Format(ending, bytes);
  const bool wide = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
  if (wide || Is_Text(bytes)) {
    QString text = Text_Of(bytes);
    if (Is_Gpx(text)) return Read_Gpx(text);
    text.replace(QChar(0), u' ');
    if (Is_Pcx5(text) || (format.isEmpty() && Text_Endings().contains(ending))) return Read_Pcx5(text);
  }
  if (format == u"nmea") return Read_Nmea(bytes, ending);
  if (!format.isEmpty()) return Read_Gpx(Babel_File(bytes, format, ending));
  Raise(unreadable, QStringLiteral("Das ist keine Datei mit Wegpunkten oder Tracks, die gelesen werden kann."));
}

}  // namespace

GpsFile Read_Gps_File(const QString& path) {
  if (const QString strange = Strange_File(path); !strange.isEmpty())
    Raise(unreadable, QStringLiteral("\"%1\" kann nicht gelesen werden: %2").arg(path, strange));
  QByteArray bytes = Read_Bytes(path);
  QString name = path;
  if (Is_Gzip(bytes)) {
    auto content = Unpack_Gzip(bytes, largestUnpacked);
    if (!content) Raise(unreadable, QStringLiteral("Die gepackte Datei ist beschädigt oder zu groß."));
    bytes = std::move(*content);
    if (QFileInfo(name).suffix().compare(QLatin1String("gz"), Qt::CaseInsensitive) == 0) name.chop(3);
  }
  if (Is_Zip(bytes)) {
    auto part = First_In_Zip(bytes, Known_Endings() + Text_Endings(), largestUnpacked);
    if (!part)
      Raise(unreadable, QStringLiteral("In der gepackten Datei liegt keine mit Wegpunkten oder Tracks, oder sie ist "
                                       "beschädigt."));
    name = part->name;
    bytes = std::move(part->content);
  }
  GpsFile file = Read_Content(bytes, QFileInfo(name).suffix().toLower());
  Name_Nameless(file);
  return file;
}

GpsFile Read_Gps_Text(const QString& gpx) {
  GpsFile file = Read_Gpx(gpx);
  Name_Nameless(file);
  return file;
}

bool Is_Gps_File_Name(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  return ending == u"zip" || ending == u"gz" || Known_Endings().contains(ending);
}
