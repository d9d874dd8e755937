#include <QSet>
#include <algorithm>

#include "import/gps_import.h"
#include "import/present_entries.h"
#include "platform/text.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"

// Where the records fall, and what of them is there already.

namespace {

std::vector<GivenPlace> Places_Of(const GpsFile& file, GpsContent content) {
  std::vector<GivenPlace> places;
  if (content == GpsContent::Waypoints) {
    places.reserve(file.waypoints.size());
    for (const GpsWaypoint& point : file.waypoints) places.push_back(point.place);
    return places;
  }
  places.reserve(file.Track_Points());
  for (const GpsTrack& track : file.tracks)
    for (const GpsPoint& point : track.points) places.push_back(point.place);
  return places;
}

QString Text_Of(const GpsWaypoint& point, bool withComment) {
  if (!withComment || point.comment.isEmpty() || point.comment == point.name) return point.name;
  return point.name + u' ' + point.comment;
}

// An import of the same file may have brought the name alone or with its comment, cut to the column's width.
void Compare_Waypoints(const GpsFile& file, Existing existing, GpsPlan& plan) {
  PresentEntries present;
  QSet<std::pair<QString, QPoint>> taken;
  present.Add_Map();
  taken.reserve(static_cast<qsizetype>(plan.records.size()));
  for (size_t i = 0; i < plan.records.size(); ++i) {
    GpsRecord& record = plan.records[i];
    if (!record.placed.Here()) continue;
    const GpsWaypoint& point = file.waypoints[i];
    const QString names[] = {Cut_Text(point.name, Tbl.EintragSize), Cut_Text(Text_Of(point, true), Tbl.EintragSize)};
    const auto any = [&names](auto test) { return test(names[0]) || (names[1] != names[0] && test(names[1])); };
    record.mark.sameName = any([&](const QString& name) { return present.Has_Name(name); });
    record.mark.samePosition = present.Near(record.placed.at);
    const bool there = any([&](const QString& name) { return present.Near(record.placed.at, name); });
    // Files repeat the waypoints of their routes.
    const auto known = taken.size();
    taken.insert({names[1], record.placed.at});
    if ((there && existing == Existing::Skipped) || taken.size() == known) record.mark.status = ImportStatus::Exists;
  }
}

// Lines of the map by their names: for tracks that came before.
struct PresentLines {
  QHash<QString, QStringList> tables;
  PresentEntries starts;
  PresentLines() {
    For_Each_Entry([this] {
      if (!Type_Here().IsPolygon()) return;
      const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
      const QString name = rsEntries->Text(column::Eintrag).trimmed();
      tables[name] << id.TableName();
      starts.Add(name,
                 {Stored_Number(rsEntries->Integer(column::Xmap)), Stored_Number(rsEntries->Integer(column::Ymap))});
    });
  }
  bool Has(const QString& name, const std::vector<QPoint>& points) const {
    const QStringList lines = tables.value(name);
    return std::any_of(lines.begin(), lines.end(),
                       [&points](const QString& table) { return Load_Vertices(table) == points; });
  }
};

// Calls the work with the first and the last (not included) record of each piece of the tracks that is usable and
// chosen, and with its track.
template <typename Usable, typename Work>
void For_Each_Piece(const GpsFile& file, Usable usable, Work work) {
  size_t record = 0;
  for (size_t track = 0; track < file.tracks.size(); ++track) {
    const size_t end = record + file.tracks[track].points.size();
    while (record < end) {
      size_t last = record;
      while (last < end && usable(last)) ++last;
      if (last > record) work(track, record, last);
      record = std::max(last, record + 1);
    }
  }
}

std::vector<QPoint> Pixels(const GpsPlan& plan, size_t first, size_t last) {
  std::vector<QPoint> points;
  for (size_t i = first; i < last; ++i)
    if (points.empty() || points.back() != plan.records[i].placed.at) points.push_back(plan.records[i].placed.at);
  return points;
}

void Compare_Tracks(const GpsFile& file, Existing existing, GpsPlan& plan) {
  const PresentLines lines;
  QSet<std::pair<QString, QByteArray>> taken;
  const auto usable = [&plan](size_t i) { return plan.records[i].placed.Here(); };
  For_Each_Piece(file, usable, [&](size_t track, size_t first, size_t last) {
    const QString name = Cut_Text(file.tracks[track].name, Tbl.EintragSize).trimmed();
    ImportMark mark{ImportStatus::Ok, lines.starts.Has_Name(name), lines.starts.Near(plan.records[first].placed.at)};
    const std::vector<QPoint> points = Pixels(plan, first, last);
    const QByteArray bytes(reinterpret_cast<const char*>(points.data()),
                           static_cast<qsizetype>(points.size() * sizeof(QPoint)));
    // Files repeat tracks, too.
    const auto known = taken.size();
    taken.insert({name, bytes});
    if ((existing == Existing::Skipped && lines.Has(name, points)) || taken.size() == known)
      mark.status = ImportStatus::Exists;
    for (size_t i = first; i < last; ++i) plan.records[i].mark = mark;
  });
}

}  // namespace

GpsPlan Plan_Gps(const GpsFile& file, GpsContent content, PlacingWay way, Existing existing) {
  GpsPlan plan;
  plan.content = content;
  Placing placing(file.system, Coord, way);
  const std::vector<PlacedPoint> placed = placing.Place(Places_Of(file, content));
  plan.records.reserve(placed.size());
  for (const PlacedPoint& point : placed) {
    plan.records.push_back({point, {Import_Status(point)}});
    plan.cancelled = plan.cancelled || point.code == conversionCancelled;
  }
  if (content == GpsContent::Waypoints)
    Compare_Waypoints(file, existing, plan);
  else
    Compare_Tracks(file, existing, plan);
  for (const GpsRecord& record : plan.records) plan.counts.Count(record.mark);
  return plan;
}

std::vector<GpsUnit> Gps_Units(const GpsFile& file, const GpsPlan& plan, const GpsLook& look,
                               const std::optional<std::vector<int>>& chosen) {
  std::vector<bool> wanted(plan.records.size(), !chosen.has_value());
  if (chosen)
    for (const int index : *chosen)
      if (index >= 0 && static_cast<size_t>(index) < wanted.size()) wanted[static_cast<size_t>(index)] = true;
  const auto usable = [&](size_t i) { return wanted[i] && plan.records[i].mark.Usable(); };
  std::vector<GpsUnit> units;
  if (plan.content == GpsContent::Waypoints) {
    for (size_t i = 0; i < plan.records.size(); ++i) {
      const GpsWaypoint& point = file.waypoints[i];
      if (usable(i)) units.push_back({point.line, Text_Of(point, look.withComment), {plan.records[i].placed.at}, 1});
    }
    return units;
  }
  size_t track = 0, before = 0;  // the first record of the track
  For_Each_Piece(file, usable, [&](size_t of, size_t first, size_t last) {
    for (; track < of; ++track) before += file.tracks[track].points.size();
    units.push_back({file.tracks[of].points[first - before].line, file.tracks[of].name, Pixels(plan, first, last),
                     static_cast<int>(last - first)});
  });
  return units;
}
