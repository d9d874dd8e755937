#include "import/gps_records.h"

#include <cmath>

QString Nothing_In(const GpsFile& file) {
  if (!file.waypoints.empty() || !file.tracks.empty()) return {};
  QString text = file.remark.isEmpty() ? QStringLiteral(
                                             "Die Datei enthält keine lesbaren Wegpunkte oder Tracks. Bitte "
                                             "überprüfen Sie die Datei.")
                                       : file.remark;
  if (!file.faults.empty())
    text += QStringLiteral("\nZeile %1: %2").arg(file.faults.front().line).arg(file.faults.front().text);
  return text;
}

void Add_Track_Point(GpsFile& file, const QString& name, GpsPoint point, bool& breaks) {
  if (breaks || file.tracks.empty() || file.tracks.back().name != name) file.tracks.push_back({name, {}});
  breaks = false;
  file.tracks.back().points.push_back(point);
}

QString Degree_Flaw(double longitude, double latitude) {
  const auto flaw = [](const QString& what, double value) {
    return QStringLiteral("%1 %2 gibt es nicht").arg(what, QString::number(value, 'g', 9).replace(u'.', u','));
  };
  if (!(std::fabs(latitude) <= 90)) return flaw(QStringLiteral("Breite"), latitude);
  if (!(std::fabs(longitude) <= 180)) return flaw(QStringLiteral("Länge"), longitude);
  return {};
}

void Name_Nameless(GpsFile& file) {
  int number = 0;
  for (GpsWaypoint& waypoint : file.waypoints) {
    ++number;
    if (!waypoint.name.isEmpty()) continue;
    waypoint.name = waypoint.comment.isEmpty() ? QStringLiteral("Wegpunkt %1").arg(number) : waypoint.comment;
  }
  number = 0;
  for (GpsTrack& track : file.tracks) {
    ++number;
    if (track.name.isEmpty()) track.name = QStringLiteral("Track %1").arg(number);
  }
}
