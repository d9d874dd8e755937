#include <QDataStream>
#include "calibration/world_file.h"
#include "coordinates/net_system.h"
#include "fuzz/driver.h"
#include "platform/geotiff.h"
#include "platform/reference_lookup.h"
#include "platform/surface.h"

// World files, ".prj" files and the tags of TIFF pictures; what an input is, its first bytes tell.

namespace {

const QByteArray worldLines = "2.5\r\n0\r\n0\r\n-2.5\r\n645001.25\r\n5512998.75\r\n";
const QByteArray projection =
    "PROJCS[\"ETRS89 / UTM zone 32N\",GEOGCS[\"ETRS89\",DATUM[\"European_Terrestrial_Reference_System_1989\",SPHEROID["
    "\"GRS 1980\",6378137,298.257222101]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],PROJECTION["
    "\"Transverse_Mercator\"],PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\",9],PARAMETER[\"scale_"
    "factor"
    "\",0.9996],PARAMETER[\"false_easting\",500000],PARAMETER[\"false_northing\",0],UNIT[\"metre\",1]]";

// Scale, tie point and keys behind a directory of five tags.
QByteArray Tiff(QDataStream::ByteOrder order) {
  constexpr quint32 data = 8 + 2 + 5 * 12 + 4;
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.setByteOrder(order);
  out.writeRawData(order == QDataStream::LittleEndian ? "II" : "MM", 2);
  out << quint16{42} << quint32{8} << quint16{5};
  const auto tag = [&](quint16 number, quint16 type, quint32 count, quint32 value) {
    out << number << type << count << value;
  };
  tag(256, 4, 1, 100), tag(257, 4, 1, 80), tag(33550, 12, 3, data), tag(33922, 12, 6, data + 24);
  tag(34735, 3, 8, data + 72);
  out << quint32{0};
  for (const double number : {2.5, 2.5, 0.0, 0.0, 0.0, 0.0, 645000.0, 5513000.0, 0.0}) out << number;
  for (const int number : {1, 1, 0, 1, 3072, 0, 1, 25832}) out << static_cast<quint16>(number);
  return bytes;
}

bool Take(const QString& picture) {
  try {
    const auto reference = Find_Reference(picture);
    if (!reference) return false;
    reference->LooksLikeDegrees();
    const ReferenceSystem system = System_To_Use(*reference, {32, u"WGS-84"_s});
    Zone_Flaw(system, reference->place.Place_Of({50, 40}));
    Plan_Of_Reference(*reference, system, u"Karte"_s);
    return true;
  } catch (const Error& error) {
    if (error.text.isEmpty()) throw std::runtime_error("a refusal without a text");
    return false;
  }
}

bool Run(const QByteArray& input) {
  static const QString picture = [] {
    const QString path = Put_File(u"Karte.bmp"_s, {});
    Make_Canvas(100, 80).save(path);
    return path;
  }();
  for (const char* name : {"Karte.bpw", "Karte.prj"}) QFile::remove(Work_Folder() + u'/' + QLatin1String(name));
  if (input.startsWith("II") || input.startsWith("MM")) return Take(Put_File(u"Bild.tif"_s, input));
  const bool isProjection = input.contains('[');
  Put_File(u"Karte.bpw"_s, isProjection ? worldLines : input);
  if (isProjection) Put_File(u"Karte.prj"_s, input);
  return Take(picture);
}

}  // namespace

FuzzTarget Make_Target() {
  return {"world",
          {worldLines, "0,00002\n0\n0\n-0,00001\n11,05\n49,75\n", projection, Tiff(QDataStream::LittleEndian),
           Tiff(QDataStream::BigEndian)},
          {"\x0C\0"_ba, "\x10\0"_ba, "\x2B\0\x08\0"_ba, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", "nan", "inf", "1e308", "-",
           "\r\n", "GEOGCS[", "PROJCRS[", "AUTHORITY[\"EPSG\",\"31468\"]", "]"},
          Run,
          {}};
}
