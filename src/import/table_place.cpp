#include "import/table_place.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "coordinates/net_system.h"
#include "platform/error.h"
#include "platform/files.h"

namespace {

constexpr double zoneMetres = 1e6, farthestPixel = 32000;

bool Is_Picture_Name(const QString& text) {
  for (const char* ending : {".bmp", ".jpg", ".jpeg", ".gif", ".png", ".wmf"})
    if (text.endsWith(QLatin1String(ending), Qt::CaseInsensitive)) return true;
  return false;
}

// The picture beside the table that the header names; long paths are kept there without their middle.
QString Map_Of_Source(const HeaderRow& header, const QString& sourceFile) {
  const QFileInfo table(sourceFile);
  QString name = Clean_Path(header.mapName);
  if (const qsizetype dots = name.indexOf(QLatin1String("...")); dots >= 0) name = name.mid(dots + 3);
  const bool cut = !name.contains(u'/') && header.mapName.contains(QLatin1String("..."));
  name = name.mid(name.lastIndexOf(u'/') + 1);
  if (!Is_Picture_Name(name)) return table.path() + u'/' + table.completeBaseName() + QStringLiteral(".bmp");
  const QString pattern = (cut ? QStringLiteral("*") : QString()) + name;
  const QStringList found = Find_Files(table.path(), pattern);
  return found.isEmpty() ? table.path() + u'/' + name : found.first();
}

CoordinateState Net_Beside(const HeaderRow& header, const QString& sourceFile, const CoordinateState& target) {
  const QString map = Map_Of_Source(header, sourceFile);
  CoordinateState best;
  for (const QString& file : Cal_Files_Of(map)) {
    CoordinateState net;
    if (Read_Cal(file, {header.width, header.height}, net) == 0 || net.Grid == gridNone) continue;
    if (net.Grid == target.Grid) return net;
    if (best.Grid == gridNone) best = net;
  }
  return best;
}

// The exact inverse of Pixel_To_Koord, not rounded to whole metres.
QPointF Pixel_Of_Metres(const CoordinateState& net, QPointF metres) {
  if (net.MeterPerPix == 0) Raise(errors::divisionByZero);
  const double a = (metres.x() - net.GridR) / net.MeterPerPix, b = (metres.y() - net.GridH) / net.MeterPerPix;
  const double t = net.Inclin, q = t * t + 1;
  return {net.Xmap + (a + b * t) / q, net.Ymap - (b - a * t) / q};
}

}  // namespace

std::optional<NetHint> Hint_In_Text(const QString& schrift) {
  const bool utm = schrift.contains(QLatin1String("UTM")), gk = schrift.contains(QLatin1String("GK"));
  if ((!utm && !gk) || Is_Picture_Name(schrift)) return std::nullopt;
  static const QRegularExpression numbers(QStringLiteral("^.+?R[^0-9H]*([0-9]+)[^H]*H[^0-9]*([0-9]+)"));
  const auto match = numbers.match(schrift);
  bool rightSound = false, highSound = false;
  const NetHint hint{utm ? gridUtm : gridGaussKrueger, match.captured(1).toInt(&rightSound),
                     match.captured(2).toInt(&highSound)};
  if (!match.hasMatch() || !rightSound || !highSound)
    Raise(5, QStringLiteral("In der Quelldatei fehlt der Rechtswert (R) oder der Hochwert (H): ") + schrift);
  return hint;
}

CoordinateState Net_Of_Source(const HeaderRow& header, const QString& sourceFile, const CoordinateState& target) {
  const auto hint = Hint_In_Text(header.mapName);
  if (!hint) return Net_Beside(header, sourceFile, target);
  CoordinateState net = target;
  net.Grid = hint->grid;
  net.NetPKG = false;
  net.GridR = hint->right;
  net.GridH = hint->high;
  // A seven-digit Rechtswert has its zone in front.
  if (hint->grid == gridGaussKrueger && hint->right >= zoneMetres)
    net.ZoneNumber = static_cast<int>(hint->right / zoneMetres);
  return net;
}

NetMatch Match_Nets(const CoordinateState& source, const CoordinateState& target) {
  if (source.Grid == gridNone && target.Grid == gridNone) return NetMatch::None;
  if (source.Grid == gridNone) return NetMatch::NoSource;
  if (target.Grid == gridNone) return NetMatch::NoTarget;
  if (!source.Metric() || source.Grid != target.Grid || source.MeterPerPix <= 0 || target.MeterPerPix <= 0)
    return NetMatch::Differ;
  if (source.ZoneNumber != target.ZoneNumber) return NetMatch::Differ;
  const auto from = System_Of(source), to = System_Of(target);
  return from == to ? NetMatch::Same : NetMatch::Differ;
}

bool Can_Convert(const CoordinateState& source, const CoordinateState& target) {
  const auto from = System_Of(source), to = System_Of(target);
  if (!from || !to) return false;
  try {
    const Transformation trial(*from, *to);
    return true;
  } catch (const Error&) {
    return false;
  }
}

TablePlacing::TablePlacing(PlaceWay wanted, const CoordinateState& sourceNet, const CoordinateState& targetNet)
    : way(wanted), source(sourceNet), target(targetNet) {
  if (way != PlaceWay::Converted) return;
  const auto from = System_Of(source), to = System_Of(target);
  if (!from || !to)
    Raise(5000, QStringLiteral("Die Koordinaten der beiden Karten können nicht ineinander umgerechnet werden."));
  conversion = std::make_shared<Transformation>(*from, *to);
}

std::optional<QPointF> TablePlacing::Target_Place(QPointF coordinates) const {
  if (target.Metric()) return Pixel_Of_Metres(target, {Rechtswert_Of_Net(target, coordinates.x()), coordinates.y()});
  double x = 0, y = 0;
  int code = conversionCancelled;
  if (target.NetPKG)
    code = Plane_To_Pixel(target, coordinates.x(), coordinates.y(), x, y);
  else
    code = Grad_To_Pixel(target, coordinates.x(), coordinates.y(), x, y);
  if (code == conversionCancelled) return std::nullopt;
  return QPointF(x, y);
}

std::optional<QPoint> TablePlacing::operator()(QPoint at) const {
  if (way == PlaceWay::Pixels) return at;
  std::optional<QPointF> place;
  if (way == PlaceWay::Coordinates) {
    place = Pixel_To_Koord(source, at.x(), at.y());
  } else {
    place = Place_In_System(source, at.x(), at.y());
    if (place) place = (*conversion)(*place);
  }
  if (place) place = Target_Place(*place);
  if (!place || !(std::fabs(place->x()) < farthestPixel) || !(std::fabs(place->y()) < farthestPixel))
    return std::nullopt;
  return QPoint(static_cast<int>(std::nearbyint(place->x())), static_cast<int>(std::nearbyint(place->y())));
}

QString TablePlacing::Name() const { return conversion ? conversion->Name() : QString(); }
