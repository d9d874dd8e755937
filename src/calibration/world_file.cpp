#include "calibration/world_file.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cmath>

#include "coordinates/degree_text.h"
#include "coordinates/net_system.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/geotiff.h"
#include "platform/picture.h"
#include "platform/reference_lookup.h"
#include "platform/text.h"

namespace {

constexpr double zoneMetres = 1e6;

QStringList World_Endings(const QString& ending) {
  // First and last letter and "w", the whole ending and "w", or the common one.
  return {ending.left(1) + ending.right(1) + u'w', ending + u'w', QStringLiteral("wld")};
}

bool Is_Tiff(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  return ending == QLatin1String("tif") || ending == QLatin1String("tiff");
}

QString Beside(const QString& picture, const QString& ending) {
  const QFileInfo info(picture);
  return Find_File(info.path() + u'/' + info.completeBaseName() + u'.' + ending);
}

// The system that a file beside the picture names.
void Read_Prj(const QString& picture, GeoReference& reference) {
  const QString path = Beside(picture, QStringLiteral("prj"));
  if (path.isEmpty()) return;
  reference.system = System_Of_Wkt(Read_Lines(path).join(u' '));
  reference.foreignSystem = !reference.system;
}

void Take_Tags(const GeoTiff& tags, const QString& path, GeoReference& reference) {
  if (reference.source.isEmpty() && tags.place) {
    reference.place = *tags.place;
    reference.source = path;
  }
  if (reference.system || tags.epsg == 0) return;
  reference.system = System_Of_Epsg(tags.epsg);
  reference.foreignSystem = !reference.system;
}

QString Band_Letter(double latitude) {
  constexpr double south = -80, height = 8;
  static const QString letters = QStringLiteral("CDEFGHJKLMNPQRSTUVWX");
  const auto band = static_cast<qsizetype>(std::floor((latitude - south) / height));
  return letters.mid(std::clamp<qsizetype>(band, 0, letters.size() - 1), 1);
}

double Middle_Of_Zone(const ReferenceSystem& system) {
  return system.kind == ReferenceSystem::Kind::Utm ? system.zone * 6 - 183 : system.zone * 3;
}

ReferenceSystem Ground_Of(const ReferenceSystem& system) {
  return {ReferenceSystem::Kind::Geographic, system.datum, 0};
}

std::optional<Datum> Datum_Said(const QString& text) {
  CoordinateState state;
  state.Grid = gridGeographic;
  state.GridDatum = text;
  const auto system = System_Of(state);
  return system ? std::optional(system->datum) : std::nullopt;
}

}  // namespace

PixelAffine Parse_World_File(const QString& text) {
  std::array<double, 6> values{};
  const QStringList lines = QString(text).replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < 6; ++i) {
    const auto number = i < lines.size() ? Number_Typed(lines[i]) : std::nullopt;
    if (!number)
      Raise(badPoints, QStringLiteral("Die Weltdatei hat in Zeile %1 keine Zahl: %2").arg(i + 1).arg(lines.value(i)));
    values[static_cast<size_t>(i)] = *number;
  }
  // By columns: both of x, both of y, both of the origin.
  const PixelAffine affine{values[0], values[2], values[4], values[1], values[3], values[5]};
  Check_Affine(affine, true);
  return affine;
}

void Check_Affine(const PixelAffine& affine, bool lines) {
  for (const double value : {affine.a, affine.b, affine.c, affine.d, affine.e, affine.f})
    if (!std::isfinite(value)) Raise(badPoints, QStringLiteral("Die Lage des Bildes ist keine Zahl."));
  const double turn = affine.a * affine.e - affine.b * affine.d;
  const QString where = lines ? QStringLiteral(" (Zeilen 1 bis 4 der Weltdatei)") : QString();
  if (turn == 0) Raise(badPoints, QStringLiteral("Ein Pixel hätte keine Größe") + where + u'.');
  if (turn > 0)
    Raise(badPoints, QStringLiteral("Das Bild wäre gespiegelt: Die Hochwerte müssen nach unten abnehmen, Zeile 4 der "
                                    "Weltdatei ist dann negativ. Sind Vorzeichen vertauscht?"));
}

bool GeoReference::LooksLikeDegrees() const {
  const QPointF corner = place.Place_Of(QPointF(size.width(), size.height()));
  for (const QPointF at : {QPointF(place.c, place.f), corner})
    if (std::fabs(at.x()) > 180.5 || std::fabs(at.y()) > 90.5) return false;
  return true;
}

std::optional<GeoReference> Find_Reference(const QString& picture) {
  GeoReference reference;
  std::optional<GeoTiff> tags;
  QString tagged = picture;
  if (Is_Tiff(picture)) {
    tags = Read_Geotiff(picture);
    reference.size = tags->size;
  } else {
    reference.size = Picture_Size(picture);
    for (const char* ending : {"tif", "tiff"}) {
      tagged = Beside(picture, QLatin1String(ending));
      if (tagged.isEmpty()) continue;
      tags = Read_Geotiff(tagged);
      if (tags->size == reference.size) break;
      tags.reset();  // another cut of the map
    }
  }
  if (reference.size.isEmpty()) Raise(errors::badPicture, QStringLiteral("Das ist kein Bild: ") + picture);
  for (const QString& ending : World_Endings(QFileInfo(picture).suffix().toLower())) {
    const QString path = Beside(picture, ending);
    if (path.isEmpty()) continue;
    reference.place = Parse_World_File(Read_Lines(path).join(u'\n'));
    reference.source = path;
    break;
  }
  Read_Prj(picture, reference);
  if (tags) Take_Tags(*tags, tagged, reference);
  if (reference.source.isEmpty()) return std::nullopt;
  Check_Affine(reference.place);
  return reference;
}

ReferenceSystem System_To_Use(const GeoReference& reference, const ReferenceWish& wish) {
  if (reference.system) {
    const ReferenceSystem& system = *reference.system;
    const auto datum = Datum_Said(wish.datum);
    if ((wish.zone != 0 && wish.zone != system.zone) || (!wish.datum.isEmpty() && datum != system.datum))
      Raise(badPoints, QStringLiteral("Die Dateien der Karte nennen %1. Lassen Sie Zone und Datum weg, oder entfernen "
                                      "Sie die .prj-Datei.")
                           .arg(system.Name()));
    return system;
  }
  if (reference.foreignSystem && wish.zone == 0)
    Raise(badPoints, QStringLiteral("Die Karte hat ein Bezugssystem, in dem Flurax nicht rechnet. Mit „Karte aus "
                                    "Geodaten“ wird sie in UTM oder Gauß-Krüger umgerechnet."));
  const auto datum = Datum_Said(wish.datum);
  if (!datum)
    Raise(badPoints,
          wish.datum.isEmpty()
              ? QStringLiteral("Es fehlt das Datum der Koordinaten: WGS-84, ETRS89 oder Potsdam.")
              : QStringLiteral("Dieses Datum ist nicht bekannt: %1. Bekannt sind WGS-84, ETRS89 und Potsdam.")
                    .arg(wish.datum));
  if (reference.LooksLikeDegrees()) return {ReferenceSystem::Kind::Geographic, *datum, 0};
  if (wish.zone == 0) Raise(badPoints, QStringLiteral("Es fehlt die Zone der Koordinaten, etwa 32."));
  ReferenceSystem system{*datum == Datum::Dhdn ? ReferenceSystem::Kind::GaussKrueger : ReferenceSystem::Kind::Utm,
                         *datum, wish.zone};
  if (Epsg_Of(system) == 0) Raise(badPoints, QStringLiteral("Diese Zone gibt es nicht: %1").arg(wish.zone));
  return system;
}

CalibrationPlan Plan_Of_Reference(const GeoReference& reference, const ReferenceSystem& system,
                                  const QString& mapName) {
  constexpr double mostMissed = 0.3;  // pixels, of a metric net
  CalibrationPlan plan;
  plan.mapName = mapName;
  plan.map = reference.size;
  const double right = plan.map.width() - 1, low = plan.map.height() - 1;
  for (const double row : {0.0, 0.5, 1.0})
    for (const double column : {0.0, 0.5, 1.0}) {
      const QPointF pixel(right * column, low * row);
      plan.points.push_back({pixel, reference.place.Place_Of(pixel)});
    }
  const QPointF middle = plan.points[4].place;
  if (const QString flaw = Zone_Flaw(system, middle); !flaw.isEmpty()) Raise(badPoints, flaw);
  NetDescription& net = plan.net;
  net.datum = Ground_Of(system).Name();
  switch (system.kind) {
    case ReferenceSystem::Kind::Geographic:
      net.kind = NetKind::DegreesDec;
      net.zone.clear();
      break;
    case ReferenceSystem::Kind::Utm: {
      net.kind = NetKind::Utm;
      const auto ground = Transformation(system, Ground_Of(system))(middle);
      net.zone = QString::number(system.zone) + Band_Letter(ground ? ground->y() : 0);
      break;
    }
    case ReferenceSystem::Kind::GaussKrueger:
      net.kind = NetKind::GaussKrueger;
      net.zone = QString::number(system.zone);
      break;
  }
  plan.fit = Fit_Net(plan.points, net.kind, NetShape::Straight);
  double missed = 0;
  for (const PointFit& point : plan.fit.points) missed = std::max(missed, point.pixels);
  if (Is_Metric(net.kind) && missed > mostMissed) {
    net.kind = NetKind::Kilometres;
    plan.fit = Fit_Net(plan.points, net.kind, NetShape::Straight);
  }
  const QSizeF extent = Extent_Of(plan.fit, plan.map);
  net.spacing = Fitting_Spacing(net.kind, std::min(extent.width(), extent.height()));
  return plan;
}

std::optional<ReferenceSystem> System_Of_Net(const NetDescription& net) {
  CoordinateState state;
  state.GridDatum = net.datum;
  state.Grid = Is_Geographic(net.kind)             ? gridGeographic
               : net.kind == NetKind::GaussKrueger ? gridGaussKrueger
               : net.kind == NetKind::Utm          ? gridUtm
                                                   : gridGeographic;
  if (net.kind == NetKind::Kilometres) {
    state.NetPKG = true;
    state.PkgZone = net.zone;
  }
  QString digits;
  for (const QChar sign : net.zone.left(3))
    if (sign >= u'0' && sign <= u'9') digits += sign;
  state.ZoneNumber = digits.toInt();
  return System_Of(state);
}

QString Zone_Flaw(const ReferenceSystem& system, QPointF place) {
  if (system.kind == ReferenceSystem::Kind::Geographic) {
    if (std::fabs(place.x()) <= 180 && std::fabs(place.y()) <= 90) return {};
    return QStringLiteral("Länge und Breite liegen außerhalb von 180° und 90°: ") +
           Place_Text(NetKind::DegreesDec, place);
  }
  const bool utm = system.kind == ReferenceSystem::Kind::Utm;
  if (!utm && std::floor(place.x() / zoneMetres) != system.zone)
    return QStringLiteral(
               "Der Rechtswert %1 gehört nicht zur Zone %2: Vor seinen letzten sechs Ziffern steht die Zone.")
        .arg(Format(place.x(), QStringLiteral("# ### ##0")).trimmed())
        .arg(system.zone);
  // Maps reach over the edge of their zone, but not into the middle of the next one.
  const double half = utm ? 3 : 1.5, beyond = utm ? 1.5 : 1;
  const auto ground = Transformation(system, Ground_Of(system))(place);
  if (!ground || place.y() < 0)
    return QStringLiteral("Der Hochwert oder Rechtswert liegt in keiner Zone: ") + Place_Text(NetKind::Utm, place);
  const double off = std::remainder(ground->x() - Middle_Of_Zone(system), 360);
  if (std::fabs(off) <= half + beyond) return {};
  const int zone = utm ? static_cast<int>(std::floor((ground->x() + 180) / 6)) % 60 + 1
                       : static_cast<int>(std::lround(ground->x() / 3));
  return QStringLiteral("Länge %1° gehört zur Zone %2, nicht zu %3.")
      .arg(Format(ground->x(), QStringLiteral("##0.0")))
      .arg(zone)
      .arg(system.zone);
}
