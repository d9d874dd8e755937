#pragma once
#include <QPoint>
#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "coordinates/conversions.h"
#include "platform/geodesy.h"
#include "state/coordinate_state.h"

// Coordinates of files on a map: as they stand, or transformed where kind or datum differ. What imports coordinates
// gives them here and gets map pixels.

// What a file says of its coordinates.
struct GivenSystem {
  ReferenceSystem::Kind kind = ReferenceSystem::Kind::Geographic;
  QString datum;  // as written; "" where the file names none: then that of the map, where the kinds agree
  bool operator==(const GivenSystem&) const = default;
};

// One coordinate, as the file has it.
struct GivenPlace {
  double x = 0, y = 0;    // longitude and latitude in degrees, or Rechtswert and Hochwert in metres
  int zone = 0;           // of a plane one; 0 = the one in front of the Rechtswert, else that of the map
  bool southern = false;  // UTM south of the equator
};

// Codes of a place besides those of the conversions (onMap, tooFarLeft, ...).
inline constexpr int zoneTooLow = 810, zoneTooHigh = 812;  // in another zone than the map's, and not transformed
inline constexpr int notConvertible = 820;                 // no such coordinate

struct PlacedPoint {
  int code = notConvertible;
  QPoint at;  // map pixels, with the code onMap
  bool Here() const { return code == onMap; }
};

enum class PlacingWay { AsWritten, Transformed };

// How a file's coordinates stand to the map's net.
struct SystemMatch {
  bool kind = false, datum = false;
  bool Whole() const { return kind && datum; }
};
// Datums agree if they are the same one, if the file's text holds the map's, or if either names none.
SystemMatch Match_Of(const GivenSystem& given, const CoordinateState& state);

// "Potsdam -> WGS-84, 3 m": from the file's datum to the map's and how exact that is, by the middle of the map; the
// systems' names where only they differ. Nothing where the coordinates cannot be transformed: without a net, and for
// datums and zones that are not known. A UTM or geographic net or file that names no datum counts as WGS-84.
std::optional<QString> Transformation_Name(const GivenSystem& given, const CoordinateState& state);

// Coordinates of one file to map pixels.
class Placing {
 public:
  // Raises 5000 where the map has no net, and where the coordinates are to be transformed but cannot be. The state must
  // outlive it.
  Placing(const GivenSystem& given, const CoordinateState& state, PlacingWay way);
  // The places in their order. Nothing is raised for a single one; where the net itself fails the user is asked by
  // Grad_To_Pixel, and Cancel gives conversionCancelled for this and all following places.
  std::vector<PlacedPoint> Place(const std::vector<GivenPlace>& places);
  PlacedPoint Place(const GivenPlace& place);  // a single one

 private:
  PlacedPoint On_Map(QPointF inNet);
  PlacedPoint As_Written(const GivenPlace& place);
  void Transform_Run(const std::vector<GivenPlace>& places, size_t first, size_t last, int zone,
                     std::vector<PlacedPoint>& placed);
  QPointF In_System(const GivenPlace& place, int zone) const;
  int Zone_Of(const GivenPlace& place) const;
  const Transformation* Way_From(int zone);

  GivenSystem given;
  const CoordinateState& state;
  PlacingWay way;
  std::optional<ReferenceSystem> target;
  bool cancelled = false;
  std::map<int, std::optional<Transformation>> ways;  // by the zone of the file's coordinates
};
