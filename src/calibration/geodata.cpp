#include "calibration/geodata.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>

#include "calibration/calibration_writer.h"
#include "calibration/world_file.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/guest.h"
#include "platform/picture.h"
#include "platform/reference_lookup.h"
#include "platform/shell.h"
#include "platform/system_fault.h"
#include "platform/text.h"

namespace {

constexpr int secondsToLook = 60, secondsToWarp = 4 * 3600;
const QString missing =
    QStringLiteral("Das Programm %1 fehlt. Es gehört zum Paket gdal-bin:\n    apt-get install gdal-bin");

QString Name_Of(const QString& path) { return QFileInfo(path).fileName(); }

// False if the user stopped it.
bool Run(const QString& program, const QStringList& arguments, const QString& folder, const QString& title, int seconds,
         QByteArray* output = nullptr, bool tellsPart = false) {
  GuestOrder order;
  order.program = Find_Program(program, ProgramFolder);
  if (order.program.isEmpty()) Raise(badPoints, missing.arg(program));
  order.arguments = arguments;
  order.folder = folder;
  order.seconds = seconds;
  order.title = title;
  if (tellsPart) order.part = Part_Of_Gdal;
  const GuestResult result = Run_Guest(order);
  if (result.end == GuestEnd::Cancelled) return false;
  if (result.end == GuestEnd::Missing) Raise(badPoints, missing.arg(program));
  if (result.end != GuestEnd::Done) Raise(badPoints, Guest_Flaw(order, result));
  if (output) *output = result.output;
  return true;
}

// Rasters ------------------------------------------------------------------------------------------------------------

QPointF Point_Of(const QJsonValue& pair) { return {pair.toArray().at(0).toDouble(), pair.toArray().at(1).toDouble()}; }

// Corners alone would miss the bulge of a side.
std::vector<QPointF> Outline_Of(const QJsonArray& corners) {
  constexpr int parts = 8;
  std::vector<QPointF> outline;
  for (qsizetype i = 0; i + 1 < corners.size(); ++i) {
    const QPointF from = Point_Of(corners.at(i)), to = Point_Of(corners.at(i + 1));
    for (int k = 0; k < parts; ++k) outline.push_back(from + (to - from) * k / parts);
  }
  return outline;
}

void Read_Bands(const QJsonArray& bands, GeoRaster& raster) {
  raster.bands = static_cast<int>(bands.size());
  for (const QJsonValue& band : bands) {
    const QJsonObject one = band.toObject();
    const QString meaning = one.value(QLatin1String("colorInterpretation")).toString();
    if (meaning == QLatin1String("Palette")) raster.palette = true;
    if (meaning == QLatin1String("Alpha")) raster.alpha = true;
    if (one.value(QLatin1String("type")) != QLatin1String("Byte")) raster.bytes = false;
  }
}

GeoRaster Parse_Info(const QString& path, const QByteArray& json) {
  const QJsonObject info = QJsonDocument::fromJson(json).object();
  GeoRaster raster;
  raster.path = path;
  const QJsonArray size = info.value(QLatin1String("size")).toArray();
  raster.size = QSize(size.at(0).toInt(), size.at(1).toInt());
  raster.driver = info.value(QLatin1String("driverShortName")).toString();
  const QString wkt = info.value(QLatin1String("coordinateSystem")).toObject().value(QLatin1String("wkt")).toString();
  raster.system = System_Of_Wkt(wkt);
  const QJsonArray rings =
      info.value(QLatin1String("wgs84Extent")).toObject().value(QLatin1String("coordinates")).toArray();
  raster.outline = Outline_Of(rings.at(0).toArray());
  if (raster.size.isEmpty()) Raise(badPoints, QStringLiteral("Das ist keine Karte: ") + path);
  if (wkt.isEmpty() || raster.outline.empty())
    Raise(badPoints, QStringLiteral("Diese Datei hat kein Bezugssystem: %1\nLegen Sie eine .prj-Datei daneben, oder "
                                    "kalibrieren Sie das Bild mit Kalibrix.")
                         .arg(Name_Of(path)));
  const QJsonArray place = info.value(QLatin1String("geoTransform")).toArray();
  if (place.size() == 6 && place.at(2).toDouble() == 0 && place.at(4).toDouble() == 0 && place.at(5).toDouble() < 0) {
    const double left = place.at(0).toDouble(), top = place.at(3).toDouble();
    const double wide = place.at(1).toDouble() * raster.size.width(),
                 high = -place.at(5).toDouble() * raster.size.height();
    raster.exact = QRectF(left, top - high, wide, high);
  }
  Read_Bands(info.value(QLatin1String("bands")).toArray(), raster);
  return raster;
}

// Extent -------------------------------------------------------------------------------------------------------------

void Widen(std::optional<QRectF>& extent, QPointF by) {
  if (!extent) {
    extent = QRectF(by, QSizeF(0, 0));
    return;
  }
  extent->setLeft(std::min(extent->left(), by.x()));
  extent->setRight(std::max(extent->right(), by.x()));
  extent->setTop(std::min(extent->top(), by.y()));
  extent->setBottom(std::max(extent->bottom(), by.y()));
}

// Of all rasters in the target system; "top" is the lowest Hochwert.
QRectF Extent_In(const ReferenceSystem& target, const std::vector<GeoRaster>& rasters) {
  const Transformation way({ReferenceSystem::Kind::Geographic, Datum::Wgs84, 0}, target);
  std::optional<QRectF> extent;
  for (const GeoRaster& raster : rasters) {
    if (raster.system == target && !raster.exact.isNull()) {
      Widen(extent, raster.exact.topLeft());
      Widen(extent, raster.exact.bottomRight());
      continue;
    }
    for (const QPointF corner : raster.outline) {
      const auto place = way(corner);
      if (!place)
        Raise(badPoints,
              QStringLiteral("Diese Karte reicht über %1 hinaus: %2").arg(target.Name(), Name_Of(raster.path)));
      Widen(extent, *place);
    }
  }
  return extent.value_or(QRectF());
}

// Tasks of the guests ------------------------------------------------------------------------------------------------

bool Is_Colored(const GeoRaster& raster) { return raster.palette || raster.bands > 2; }

// The bands of a picture: one of grey or three colours, and what says where there is none of them. Further ones are
// infrared and the like.
std::vector<int> Picture_Bands(const GeoRaster& raster, bool colored) {
  if (raster.palette) return {};  // they come of the table
  const bool alpha = raster.alpha && raster.bytes && (raster.bands == 2 || raster.bands == 4);
  std::vector<int> bands = {1};
  if (colored) bands = raster.bands > 2 ? std::vector{1, 2, 3} : std::vector{1, 1, 1};
  if (alpha) bands.push_back(raster.bands);
  return bands;
}

// Colours of a table must be resolved before they are mixed, and pictures have 8 bits a colour. All sheets of a map
// have the same bands.
QStringList Translation(const GeoRaster& raster, bool colored, const QString& target) {
  QStringList words = {QStringLiteral("-q"), QStringLiteral("-of"), QStringLiteral("VRT")};
  if (raster.palette) words << QStringLiteral("-expand") << QStringLiteral("rgb");
  if (!raster.bytes) words << QStringLiteral("-ot") << QStringLiteral("Byte") << QStringLiteral("-scale");
  const std::vector<int> bands = Picture_Bands(raster, colored);
  for (const int band : bands) words << QStringLiteral("-b") << QString::number(band);
  if (bands.size() == 2 || bands.size() == 4)
    words << QStringLiteral("-colorinterp_%1").arg(bands.size()) << QStringLiteral("alpha");
  return words << raster.path << target;
}

QStringList Warping(const GeodataWish& wish, const GeodataSize& made, const QStringList& sources,
                    const QString& target) {
  const auto text = [](double value) { return QString::number(value, 'f', 6); };
  QStringList words = {QStringLiteral("-multi"), QStringLiteral("-dstalpha"), QStringLiteral("-r"),
                       QStringLiteral("bilinear")};
  // What no raster covers is white.
  words << QStringLiteral("-wo") << QStringLiteral("INIT_DEST=255");
  words << QStringLiteral("-t_srs") << QStringLiteral("EPSG:%1").arg(Epsg_Of(wish.target));
  words << QStringLiteral("-te") << text(made.extent.left()) << text(made.extent.top()) << text(made.extent.right())
        << text(made.extent.bottom());
  words << QStringLiteral("-ts") << QString::number(made.size.width()) << QString::number(made.size.height());
  return words << sources << target;
}

}  // namespace

double Part_Of_Gdal(const QByteArray& output) {
  // "[2/3] : 0...10...20.": of the second of three sheets
  static const QRegularExpression sheet(QStringLiteral("\\[(\\d+)/(\\d+)\\]")),
      reached(QStringLiteral("(\\d+)(\\.*)$"));
  const QString text = QString::fromLatin1(output.mid(output.lastIndexOf('\n') + 1));
  QRegularExpressionMatch which;
  const qsizetype at = text.lastIndexOf(sheet, -1, &which);
  const QRegularExpressionMatch number = reached.match(at < 0 ? text : text.mid(at + which.capturedLength()));
  const double percent =
      number.hasMatch() ? number.captured(1).toInt() + 2.5 * static_cast<double>(number.captured(2).size()) : 0;
  const double part = std::min(percent, 100.0) / 100;
  const int count = which.captured(2).toInt();
  return count == 0 ? part : (which.captured(1).toInt() - 1 + part) / count;
}

double Source_Pixels(const std::vector<GeoRaster>& rasters) {
  double pixels = 0;
  for (const GeoRaster& raster : rasters) pixels += static_cast<double>(raster.size.width()) * raster.size.height();
  return pixels;
}

GeoRaster Look_At_Raster(const QString& path) {
  if (!QFileInfo(path).isFile()) Raise(errors::fileNotFound);
  const QTemporaryDir folder;
  if (!folder.isValid()) Raise(errors::pathNotFound, No_Work_Folder());
  QByteArray said;
  const QString title = QStringLiteral("Karte aus Geodaten\n") + Name_Of(path);
  if (!Run(QStringLiteral("gdalinfo"),
           {QStringLiteral("-json"), QStringLiteral("-nomd"), QStringLiteral("-norat"), QStringLiteral("-noct"),
            QFileInfo(path).absoluteFilePath()},
           folder.path(), title, secondsToLook, &said))
    Raise(badPoints, QStringLiteral("Abgebrochen."));
  GeoRaster raster = Parse_Info(QFileInfo(path).absoluteFilePath(), said);
  return raster;
}

ReferenceSystem Fitting_Target(const std::vector<GeoRaster>& rasters) {
  if (rasters.empty()) return {ReferenceSystem::Kind::Utm, Datum::Etrs89, 32};
  const GeoRaster& first = rasters.front();
  if (first.system && first.system->kind != ReferenceSystem::Kind::Geographic) return *first.system;
  QPointF middle;
  for (const QPointF corner : first.outline) middle += corner / static_cast<double>(first.outline.size());
  const int zone = std::clamp(static_cast<int>(std::floor((middle.x() + 180) / 6)) + 1, 1, 60);
  return {ReferenceSystem::Kind::Utm, zone >= 28 && zone <= 38 ? Datum::Etrs89 : Datum::Wgs84, zone};
}

double Fitting_Resolution(const GeodataWish& wish) {
  if (wish.rasters.empty()) return 0;
  const QRectF extent = Extent_In(wish.target, {wish.rasters.front()});
  const QSize size = wish.rasters.front().size;
  const double exact = std::max(extent.width() / size.width(), extent.height() / size.height());
  // Turned rasters have a larger frame than themselves; a round number says as much.
  const double unit = std::pow(10, std::floor(std::log10(exact)) - 2);
  return std::nearbyint(exact / unit) * unit;
}

GeodataSize Size_Of_Geodata(const GeodataWish& wish) {
  constexpr double mostPixels = 32'000;  // the net of a map is kept in 16 bits
  if (wish.rasters.empty()) Raise(badPoints, QStringLiteral("Wählen Sie zuerst eine Karte aus."));
  if (wish.target.kind == ReferenceSystem::Kind::Geographic || Epsg_Of(wish.target) == 0)
    Raise(badPoints, QStringLiteral("Diese Zone gibt es nicht: ") + wish.target.Name());
  const double step = wish.metresPerPixel;
  if (!(step >= 0.01 && step <= 10'000))
    Raise(badPoints, QStringLiteral("Die Auflösung muss zwischen 0,01 und 10 000 m je Pixel liegen."));
  const QRectF whole = Extent_In(wish.target, wish.rasters),
               wanted = wish.window ? whole & wish.window->normalized() : whole;
  if (whole.top() < 0)
    Raise(badPoints, QStringLiteral("Diese Karte reicht nach Süden über den Äquator. Das Koordinatennetz kennt nur "
                                    "Zonen der Nordhalbkugel."));
  if (wanted.isEmpty()) Raise(badPoints, QStringLiteral("Der Ausschnitt liegt neben den Karten."));
  const double columns = std::max(1.0, std::nearbyint(wanted.width() / step)),
               rows = std::max(1.0, std::nearbyint(wanted.height() / step));
  const QString pixels = Format(columns, QStringLiteral("# ### ##0")).trimmed() + QStringLiteral(" x ") +
                         Format(rows, QStringLiteral("# ### ##0")).trimmed();
  if (columns > mostPixels || rows > mostPixels || columns * rows > static_cast<double>(mapPicture.pixels))
    Raise(badPoints, QStringLiteral("%1 Pixel sind zu viel (höchstens 32 000 je Seite und 500 Millionen). Wählen Sie "
                                    "einen Ausschnitt oder mehr Meter je Pixel.")
                         .arg(pixels));
  GeodataSize made;
  made.size = QSize(static_cast<int>(columns), static_cast<int>(rows));
  // From the upper left corner.
  made.extent = QRectF(wanted.left(), wanted.bottom() - rows * step, columns * step, rows * step);
  made.memory = Picture_Memory(made.size, 24);
  return made;
}

bool Make_Map_From_Geodata(const GeodataWish& wish, const QString& mapFile) {
  const GeodataSize made = Size_Of_Geodata(wish);
  // On the disk of the map: there is room for it, or the map would have none either.
  const QTemporaryDir folder(QFileInfo(mapFile).path() + QStringLiteral("/.geodaten-XXXXXX"));
  if (!folder.isValid()) Raise(errors::pathNotFound, No_Work_Folder(QFileInfo(mapFile).path()));
  const QString size = QStringLiteral("%1 x %2 Pixel").arg(made.size.width()).arg(made.size.height());
  const auto title = [&size](const QString& step) { return QStringLiteral("Karte aus Geodaten\n") + step + size; };
  QStringList sources;
  const bool colored = std::any_of(wish.rasters.begin(), wish.rasters.end(), Is_Colored);
  for (const GeoRaster& raster : wish.rasters) {
    sources << folder.filePath(QStringLiteral("%1.vrt").arg(sources.size()));
    if (!Run(QStringLiteral("gdal_translate"), Translation(raster, colored, sources.back()), folder.path(),
             title(QStringLiteral("Vorbereiten: ")), raster.bytes ? secondsToLook : secondsToWarp))
      return false;
  }
  const QString warped = folder.filePath(QStringLiteral("karte.tif")),
                picture = folder.filePath(QStringLiteral("karte.bmp"));
  if (!Run(QStringLiteral("gdalwarp"), Warping(wish, made, sources, warped), folder.path(),
           title(QStringLiteral("Umrechnen: ")), secondsToWarp, nullptr, true))
    return false;
  QStringList saving = {QStringLiteral("-of"), QStringLiteral("BMP")};
  for (int band = 1; band <= (colored ? 3 : 1); ++band) saving << QStringLiteral("-b") << QString::number(band);
  if (!Run(QStringLiteral("gdal_translate"), saving << warped << picture, folder.path(),
           title(QStringLiteral("Sichern: ")), secondsToWarp, nullptr, true))
    return false;
  if (Picture_Size(picture) != made.size)
    Raise(badPoints, QStringLiteral("Die umgerechnete Karte hat eine falsche Größe."));
  const double step = wish.metresPerPixel;
  GeoReference reference;
  reference.place = {step, 0, made.extent.left() + step / 2, 0, -step, made.extent.bottom() - step / 2};
  reference.system = wish.target;
  reference.size = made.size;
  reference.source = mapFile;
  const CalibrationPlan plan = Plan_Of_Reference(reference, wish.target, Name_Of(mapFile));
  File_Copy(picture, mapFile);
  Save_Calibration(plan, Calibration_File_Of(mapFile));
  return true;
}
