#include "fuzz/calibrated.h"
#include "import/gps_import.h"
#include "import/placing_question.h"
#include "store/table_file.h"
#include "support/prelude.h"

namespace {

constexpr int betweenImports = 40;

void Check_Place(const GivenPlace& place, bool geographic) {
  if (!std::isfinite(place.x) || !std::isfinite(place.y) || place.zone < 0 || place.zone > 60)
    throw std::runtime_error("a place that is none");
  if (geographic && (std::fabs(place.x) > 180 || std::fabs(place.y) > 90))
    throw std::runtime_error("a place beside the earth");
}

void Check(const GpsFile& file) {
  const bool geographic = file.system.kind == ReferenceSystem::Kind::Geographic;
  for (const GpsWaypoint& point : file.waypoints) Check_Place(point.place, geographic);
  for (const GpsTrack& track : file.tracks) {
    if (track.points.empty()) throw std::runtime_error("a track without points");
    for (const GpsPoint& point : track.points) Check_Place(point.place, geographic);
  }
}

void Place_Everywhere(const GpsFile& file) {
  std::vector<GivenPlace> places;
  for (const GpsWaypoint& point : file.waypoints) places.push_back(point.place);
  for (const GpsTrack& track : file.tracks)
    for (const GpsPoint& point : track.points) places.push_back(point.place);
  for (const CoordinateState& net : Some_Nets()) {
    try {
      Match_Of(file.system, net);
      for (const PlacedPoint& placed : Placing(file.system, net, PlacingWay::AsWritten).Place(places))
        if (placed.Here() && !QRect(0, 0, netMapWidth + 1, netMapHeight + 1).contains(placed.at))
          throw std::runtime_error("a place beside the map");
    } catch (const Error&) {
      // The net has no size of a pixel.
    }
  }
}

void Import(const GpsFile& file, const CoordinateState& net) {
  Open_Empty_Table();
  Coord = net;
  const auto way = Usual_Placing_Way(file.system, net);
  for (const GpsContent content : {GpsContent::Waypoints, GpsContent::Tracks}) {
    const GpsPlan plan = Plan_Gps(file, content, way.value_or(PlacingWay::AsWritten));
    GpsLook look = Usual_Gps_Look();
    look.withComment = true;
    const GpsResult result = Import_Gps(Gps_Units(file, plan, look), content, look);
    const ImportList list = Gps_List(file, plan, {});
    for (int row = 0; row < list.rows; ++row) list.text(row, row % 5);
    Gps_Report(plan, result);
    Gps_Refusals(file, plan, result);
  }
  Gps_Faults(file);
  Close_Table(CloseMode::CloseOnly);
}

}  // namespace

bool Take_Gps_File(GpsFile file) {
  static int number = 0;
  Check(file);
  Name_Nameless(file);
  Place_Everywhere(file);
  const bool any = !file.waypoints.empty() || !file.tracks.empty();
  if (any && ++number % betweenImports == 0)
    Import(file, Some_Nets()[static_cast<size_t>(number) / betweenImports % Some_Nets().size()]);
  return any;
}
