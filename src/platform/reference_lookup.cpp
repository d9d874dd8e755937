#include "platform/reference_lookup.h"

#include <array>
#include <cmath>

#include "platform/proj_context.h"

namespace {

std::optional<Datum> Datum_Of_Name(const QString& name) {
  QString plain;
  for (const QChar sign : name.toUpper())
    if (sign.isLetterOrNumber()) plain += sign;
  if (plain.contains(QLatin1String("ETRS"))) return Datum::Etrs89;
  if (plain.contains(QLatin1String("WGS84")) || plain.contains(QLatin1String("WGS1984"))) return Datum::Wgs84;
  if (plain.contains(QLatin1String("DHDN")) || plain.contains(QLatin1String("HAUPTDREIECKSNETZ")) ||
      plain.contains(QLatin1String("POTSDAM")))
    return Datum::Dhdn;
  return std::nullopt;
}

// The numbers of a transverse Mercator projection; -1 where one is missing.
struct Projection {
  double middle = -1, scale = -1, east = -1, north = -1;
};

std::optional<Projection> Projection_Of(PJ_CONTEXT* context, const PJ* system) {
  const ProjObject conversion(proj_crs_get_coordoperation(context, system));
  if (!conversion) return std::nullopt;
  const char* method = nullptr;
  proj_coordoperation_get_method_info(context, conversion.get(), &method, nullptr, nullptr);
  if (!method || !QString::fromUtf8(method).contains(QLatin1String("Transverse Mercator"))) return std::nullopt;
  Projection found;
  for (int i = 0; i < proj_coordoperation_get_param_count(context, conversion.get()); ++i) {
    const char* name = nullptr;
    double value = 0;
    if (!proj_coordoperation_get_param(context, conversion.get(), i, &name, nullptr, nullptr, &value, nullptr, nullptr,
                                       nullptr, nullptr, nullptr, nullptr))
      continue;
    const QString said = QString::fromUtf8(name);
    if (said.startsWith(QLatin1String("Longitude"))) found.middle = value;
    if (said.startsWith(QLatin1String("Scale"))) found.scale = value;
    if (said == QLatin1String("False easting")) found.east = value;
    if (said == QLatin1String("False northing")) found.north = value;
  }
  return found;
}

std::optional<ReferenceSystem> Plane_System(const Projection& by, Datum datum) {
  constexpr double utmScale = 0.9996, utmEast = 500'000, zoneMetres = 1'000'000;
  const auto near = [](double a, double b) { return std::fabs(a - b) < 1e-6; };
  if (!near(by.north, 0) || !(std::fabs(by.middle) <= 180)) return std::nullopt;
  const int utmZone = static_cast<int>(std::lround((by.middle + 183) / 6));
  if (near(by.scale, utmScale) && near(by.east, utmEast) && near(by.middle, utmZone * 6 - 183) && datum != Datum::Dhdn)
    return ReferenceSystem{ReferenceSystem::Kind::Utm, datum, utmZone};
  const int zone = static_cast<int>(std::lround(by.middle / 3));
  if (near(by.scale, 1) && zone >= 2 && zone <= 5 && near(by.middle, zone * 3) &&
      near(by.east, zone * zoneMetres + utmEast) && datum == Datum::Dhdn)
    return ReferenceSystem{ReferenceSystem::Kind::GaussKrueger, datum, zone};
  return std::nullopt;
}

std::optional<ReferenceSystem> Known_System(PJ_CONTEXT* context, ProjObject system) {
  if (!system) return std::nullopt;
  if (proj_get_type(system.get()) == PJ_TYPE_BOUND_CRS) system.reset(proj_get_source_crs(context, system.get()));
  if (proj_get_type(system.get()) == PJ_TYPE_COMPOUND_CRS) system.reset(proj_crs_get_sub_crs(context, system.get(), 0));
  const ProjObject ground(proj_crs_get_geodetic_crs(context, system.get()));
  if (!ground) return std::nullopt;
  auto datum = Datum_Of_Name(QString::fromUtf8(proj_get_name(ground.get())));
  if (!datum) return std::nullopt;
  switch (proj_get_type(system.get())) {
    case PJ_TYPE_GEOGRAPHIC_2D_CRS:
    case PJ_TYPE_GEOGRAPHIC_3D_CRS:
      return ReferenceSystem{ReferenceSystem::Kind::Geographic, *datum, 0};
    case PJ_TYPE_PROJECTED_CRS:
      break;
    default:
      return std::nullopt;
  }
  const auto projection = Projection_Of(context, system.get());
  return projection ? Plane_System(*projection, *datum) : std::nullopt;
}

}  // namespace

std::optional<ReferenceSystem> System_Of_Wkt(const QString& text) {
  // As such a text and as nothing else: what is none would be looked for among all the names PROJ knows.
  constexpr std::array<const char*, 2> options{"STRICT=NO", nullptr};
  const ProjContext context = Proj_Context();
  return Known_System(context.get(), ProjObject(proj_create_from_wkt(context.get(), text.trimmed().toUtf8().constData(),
                                                                     options.data(), nullptr, nullptr)));
}

std::optional<ReferenceSystem> System_Of_Epsg(int code) {
  if (code <= 0) return std::nullopt;
  const ProjContext context = Proj_Context();
  return Known_System(context.get(),
                      ProjObject(proj_create_from_database(context.get(), "EPSG", QByteArray::number(code).constData(),
                                                           PJ_CATEGORY_CRS, 0, nullptr)));
}

int Epsg_Of(const ReferenceSystem& system) {
  constexpr int wgs84 = 4326, etrs89 = 4258, dhdn = 4314, utmWgs84 = 32600, utmEtrs89 = 25800, gaussKrueger = 31464;
  if (system.kind == ReferenceSystem::Kind::GaussKrueger)
    return system.zone < 2 || system.zone > 5 ? 0 : gaussKrueger + system.zone;
  if (system.kind == ReferenceSystem::Kind::Geographic)
    return system.datum == Datum::Dhdn ? dhdn : system.datum == Datum::Etrs89 ? etrs89 : wgs84;
  if (system.zone < 1 || system.zone > 60 || system.datum == Datum::Dhdn) return 0;
  const bool european = system.datum == Datum::Etrs89 && system.zone >= 28 && system.zone <= 38;
  return (european ? utmEtrs89 : utmWgs84) + system.zone;
}
