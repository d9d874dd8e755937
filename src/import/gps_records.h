#pragma once
#include <QString>
#include <vector>

#include "coordinates/placing.h"

// What files of GPS devices hold: waypoints and tracks with their coordinates, and what could not be read.

struct GpsWaypoint {
  int line = 0;  // in the file, from 1
  QString name, comment;
  GivenPlace place;
};

struct GpsPoint {
  int line = 0;
  GivenPlace place;
};

// One unbroken piece of a track, or a route. Pieces of one track bear its name.
struct GpsTrack {
  QString name;
  std::vector<GpsPoint> points;
};

struct GpsFault {
  int line = 0;
  QString text;
};

struct GpsFile {
  GivenSystem system;
  std::vector<GpsWaypoint> waypoints;
  std::vector<GpsTrack> tracks;  // none without points
  std::vector<GpsFault> faults;  // records that could not be read
  QString remark;                // what is wrong with the file as a whole; "" if nothing is
  // Of all tracks together.
  size_t Track_Points() const {
    size_t count = 0;
    for (const GpsTrack& track : tracks) count += track.points.size();
    return count;
  }
};

// Why there is nothing in it, with the first line that could not be read; "" if there is something.
QString Nothing_In(const GpsFile& file);
// Adds a point to the last track, which is begun anew where `breaks` says so.
void Add_Track_Point(GpsFile& file, const QString& name, GpsPoint point, bool& breaks);
// Why a place on the earth cannot be: "Breite 95 gibt es nicht". "" if it can.
QString Degree_Flaw(double longitude, double latitude);
// Gives waypoints and tracks that have none a name: "Wegpunkt 3", "Track 1".
void Name_Nameless(GpsFile& file);
