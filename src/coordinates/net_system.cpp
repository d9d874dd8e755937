#include "coordinates/net_system.h"

#include <algorithm>
#include <cmath>

#include "coordinates/conversions.h"

namespace {

constexpr double zoneMetres = 1e6;

// UTM zones bear a letter: "32U".
bool Is_Utm(const CoordinateState& state) {
  if (!state.NetPKG) return state.Grid == gridUtm;
  return std::any_of(state.PkgZone.begin(), state.PkgZone.end(), [](QChar sign) { return sign.isLetter(); });
}

}  // namespace

std::optional<Datum> Datum_Of(const QString& text) {
  const QString name = text.toUpper().remove(u' ').remove(u'-').remove(u'_');
  if (name.contains(QLatin1String("WGS84"))) return Datum::Wgs84;
  if (name.contains(QLatin1String("ETRS"))) return Datum::Etrs89;
  if (name.contains(QLatin1String("POTSDAM")) || name.contains(QLatin1String("DHDN"))) return Datum::Dhdn;
  return std::nullopt;
}

ReferenceSystem::Kind Net_Kind(const CoordinateState& state) {
  if (!state.Metric() && !state.NetPKG) return ReferenceSystem::Kind::Geographic;
  return Is_Utm(state) ? ReferenceSystem::Kind::Utm : ReferenceSystem::Kind::GaussKrueger;
}

std::optional<ReferenceSystem> System_Of(const CoordinateState& state) {
  const auto datum = Datum_Of(state.GridDatum);
  if (state.Geographic() && !state.NetPKG) {
    if (!datum) return std::nullopt;
    return ReferenceSystem{ReferenceSystem::Kind::Geographic, *datum, 0};
  }
  if (!state.Metric() && !state.NetPKG) return std::nullopt;
  const int zone = Net_Zone(state);
  if (!Is_Utm(state)) {
    if (zone < 2 || zone > 5) return std::nullopt;
    return ReferenceSystem{ReferenceSystem::Kind::GaussKrueger, Datum::Dhdn, zone};
  }
  if (!datum || *datum == Datum::Dhdn || zone < 1 || zone > 60) return std::nullopt;
  return ReferenceSystem{ReferenceSystem::Kind::Utm, *datum, zone};
}

std::optional<QPointF> Place_In_System(const CoordinateState& state, int x, int y) {
  const auto system = System_Of(state);
  if (!system) return std::nullopt;
  QPointF at;
  if (state.Metric()) {
    if (state.MeterPerPix <= 0) return std::nullopt;
    at = Pixel_To_Koord(state, x, y);
  } else {
    double right = 0, high = 0;
    if (Pixel_To_Grad(state, x, y, right, high) != 1) return std::nullopt;
    at = state.NetPKG ? QPointF(right * 1000 + state.PkgR, high * 1000 + state.PkgH) : QPointF(right, high);
  }
  if (system->kind == ReferenceSystem::Kind::Geographic) return at;
  const double inZone = std::fmod(at.x(), zoneMetres);
  return QPointF(system->kind == ReferenceSystem::Kind::GaussKrueger ? inZone + system->zone * zoneMetres : inZone,
                 at.y());
}
