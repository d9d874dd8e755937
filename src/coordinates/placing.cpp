#include "coordinates/placing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "coordinates/net_system.h"
#include "platform/error.h"

namespace {

using Kind = ReferenceSystem::Kind;

constexpr int noWay = 5000;
constexpr double zoneMetres = 1e6;                // the zone stands in front of the last six digits
constexpr double southernShift = 1e7;             // what the Hochwerte south of the equator count from
constexpr double farthestMetres = 2'000'000'000;  // a Rechtswert is a whole number of 32 bits

bool Has_Net(const CoordinateState& state) { return state.Geographic() || state.Metric(); }

bool Sound(const GivenPlace& place, Kind kind) {
  if (!std::isfinite(place.x) || !std::isfinite(place.y)) return false;
  if (kind == Kind::Geographic) return std::fabs(place.x) <= 180 && std::fabs(place.y) <= 90;
  return std::fabs(place.x) < farthestMetres && std::fabs(place.y) < farthestMetres;
}

// The map's net; one that names no datum is taken for the usual one.
std::optional<ReferenceSystem> Target_Of(const CoordinateState& state) {
  if (!Has_Net(state)) return std::nullopt;
  if (!state.GridDatum.trimmed().isEmpty()) return System_Of(state);
  CoordinateState usual;  // all but the curves
  usual.Grid = state.Grid;
  usual.NetPKG = state.NetPKG;
  usual.PkgZone = state.PkgZone;
  usual.PkgR = state.PkgR;
  usual.GridR = state.GridR;
  usual.ZoneNumber = state.ZoneNumber;
  usual.GridDatum = Datum_Name(Datum::Wgs84);
  return System_Of(usual);
}

std::optional<Datum> Source_Datum(const GivenSystem& given, const std::optional<ReferenceSystem>& target) {
  if (given.kind == Kind::GaussKrueger) return Datum::Dhdn;
  if (!given.datum.trimmed().isEmpty()) return Datum_Of(given.datum);
  return target && target->kind == given.kind ? target->datum : Datum::Wgs84;
}

std::optional<ReferenceSystem> Source_Of(const GivenSystem& given, const std::optional<ReferenceSystem>& target,
                                         int zone) {
  const auto datum = Source_Datum(given, target);
  if (!datum) return std::nullopt;
  const ReferenceSystem source{given.kind, *datum, given.kind == Kind::Geographic ? 0 : zone};
  if (source.kind == Kind::Utm && (zone < 1 || zone > 60 || *datum == Datum::Dhdn)) return std::nullopt;
  if (source.kind == Kind::GaussKrueger && (zone < 2 || zone > 5)) return std::nullopt;
  return source;
}

// The zone of that kind in which a longitude lies.
int Zone_At(Kind kind, double longitude) {
  if (kind == Kind::Utm) return std::clamp(static_cast<int>(std::floor((longitude + 180) / 6)) + 1, 1, 60);
  return std::clamp(static_cast<int>(std::lround(longitude / 3)), 2, 5);
}

}  // namespace

SystemMatch Match_Of(const GivenSystem& given, const CoordinateState& state) {
  SystemMatch match{given.kind == Net_Kind(state), true};
  const QString file = given.datum.trimmed(), map = state.GridDatum.trimmed();
  if (file.isEmpty() || map.isEmpty()) return match;
  const auto fileDatum = Datum_Of(file), mapDatum = Datum_Of(map);
  match.datum = (fileDatum && fileDatum == mapDatum) || file.contains(map, Qt::CaseInsensitive);
  return match;
}

std::optional<QString> Transformation_Name(const GivenSystem& given, const CoordinateState& state) {
  const auto target = Target_Of(state);
  const auto datum = Source_Datum(given, target);
  if (!target || !datum || (given.kind == Kind::Utm && *datum == Datum::Dhdn)) return std::nullopt;
  try {
    // The way is the same in both directions, and only the map's end of it is known here.
    const ReferenceSystem degrees{Kind::Geographic, *datum, 0};
    const Transformation back(*target, degrees);
    const auto middle = Place_In_System(state, state.MapWidthPx / 2, state.MapHeightPx / 2);
    const auto there = middle ? back(*middle) : std::nullopt;
    ReferenceSystem source{given.kind, *datum, 0};
    if (there && given.kind != Kind::Geographic) source.zone = Zone_At(given.kind, there->x());
    return Way_Name(source, *target, there ? back.Accuracy() : 0);
  } catch (const Error&) {
    return std::nullopt;
  }
}

Placing::Placing(const GivenSystem& givenSystem, const CoordinateState& coordinates, PlacingWay placingWay)
    : given(givenSystem), state(coordinates), way(placingWay) {
  if (!Has_Net(state)) Raise(noWay, QStringLiteral("Die Karte hat kein Koordinatennetz."));
  if (state.Metric() && state.MeterPerPix == 0) Raise(errors::divisionByZero);
  if (way == PlacingWay::AsWritten) return;
  target = Target_Of(state);
  if (!target || !Source_Datum(given, target))
    Raise(noWay, QStringLiteral("Die Koordinaten können nicht umgerechnet werden."));
}

int Placing::Zone_Of(const GivenPlace& place) const {
  if (given.kind == Kind::Geographic) return 0;
  if (place.zone != 0) return place.zone;
  if (place.x >= zoneMetres) return static_cast<int>(std::min(place.x / zoneMetres, 1000.0));  // no such zone
  return given.kind == Net_Kind(state) ? Net_Zone(state) : 0;
}

const Transformation* Placing::Way_From(int zone) {
  const auto known = ways.find(zone);
  auto& found = known != ways.end() ? known->second : ways[zone];
  if (known == ways.end()) {
    try {
      if (const auto source = Source_Of(given, target, zone)) found.emplace(*source, *target);
    } catch (const Error&) {
      found.reset();
    }
  }
  return found ? &*found : nullptr;
}

PlacedPoint Placing::On_Map(QPointF inNet) {
  PlacedPoint placed;
  double x = 0, y = 0;
  try {
    placed.code = Net_Kind(state) == Kind::Geographic ? Grad_To_Pixel(state, inNet.x(), inNet.y(), x, y)
                                                      : Plane_To_Pixel(state, inNet.x(), inNet.y(), x, y);
  } catch (const Error&) {
    return {};
  }
  cancelled = placed.code == conversionCancelled;
  if (placed.code == onMap)
    placed.at = QPoint(static_cast<int>(std::nearbyint(x)), static_cast<int>(std::nearbyint(y)));
  return placed;
}

PlacedPoint Placing::As_Written(const GivenPlace& place) {
  const Kind net = Net_Kind(state);
  if (net == Kind::Geographic) {
    if (!Sound(place, Kind::Geographic)) return {};
    return On_Map({place.x, place.y});
  }
  const int zone = Zone_Of(place), own = Net_Zone(state);
  if (zone != 0 && own != 0 && zone != own) return {zone < own ? zoneTooLow : zoneTooHigh, {}};
  const double right = zone != 0 && std::floor(place.x / zoneMetres) == zone ? std::fmod(place.x, zoneMetres) : place.x;
  return On_Map({right, place.y});
}

// As the systems of the transformations count: Gauß-Krüger with the zone in front of the Rechtswert, UTM without it.
QPointF Placing::In_System(const GivenPlace& place, int zone) const {
  double right = place.x;
  if (given.kind == Kind::Utm && right >= zoneMetres) right = std::fmod(right, zoneMetres);
  if (given.kind == Kind::GaussKrueger && right < zoneMetres) right += zone * zoneMetres;
  return {right, place.southern && given.kind == Kind::Utm ? place.y - southernShift : place.y};
}

// The places [first, last), which lie in one zone, go through the transformation together.
void Placing::Transform_Run(const std::vector<GivenPlace>& places, size_t first, size_t last, int zone,
                            std::vector<PlacedPoint>& placed) {
  const Transformation* transformation = Way_From(zone);
  if (transformation == nullptr) return;
  std::vector<QPointF> points;
  points.reserve(last - first);
  for (size_t i = first; i < last; ++i) {
    const double nowhere = std::numeric_limits<double>::quiet_NaN();
    points.push_back(Sound(places[i], given.kind) ? In_System(places[i], zone) : QPointF(nowhere, nowhere));
  }
  transformation->Transform(points);
  for (size_t i = first; i < last && !cancelled; ++i) {
    const QPointF& point = points[i - first];
    if (std::isfinite(point.x()) && std::isfinite(point.y())) placed[i] = On_Map(point);
  }
}

std::vector<PlacedPoint> Placing::Place(const std::vector<GivenPlace>& places) {
  std::vector<PlacedPoint> placed(places.size());
  for (size_t first = 0; first < places.size() && !cancelled;) {
    size_t last = first + 1;
    if (way == PlacingWay::AsWritten) {
      placed[first] = As_Written(places[first]);
    } else {
      const int zone = Zone_Of(places[first]);
      while (last < places.size() && Zone_Of(places[last]) == zone) ++last;
      Transform_Run(places, first, last, zone, placed);
    }
    first = last;
  }
  if (!cancelled) return placed;
  for (PlacedPoint& point : placed)
    if (point.code == notConvertible) point.code = conversionCancelled;
  return placed;
}

PlacedPoint Placing::Place(const GivenPlace& place) { return Place(std::vector<GivenPlace>{place}).front(); }
