#pragma once
#include <QPoint>
#include <QPointF>
#include <QString>
#include <memory>
#include <optional>

#include "platform/geodesy.h"
#include "state/coordinate_state.h"
#include "store/header_row.h"

// Where the entries of another table lie on the open map: at the same pixels, or at the same place on the ground if the
// nets of both maps are known.

// What the text of a header row says of the net of its map: "UTM R 646000 H 5512000". Nothing for the name of a map.
struct NetHint {
  int grid = gridNone;
  int right = 0, high = 0;
};
// Raises 5 where such a text names no Rechtswert or Hochwert.
std::optional<NetHint> Hint_In_Text(const QString& schrift);

// The net of the map of a source table, Grid 0 where nothing tells of one. A hint in its header lends the reference,
// everything else is that of the open map's net; without a hint the calibration file beside the source is read.
CoordinateState Net_Of_Source(const HeaderRow& header, const QString& sourceFile, const CoordinateState& target);

// How the nets of two maps stand to each other.
enum class NetMatch {
  None,      // neither has one
  Same,      // metric, of one kind, zone and datum: places go through the coordinates
  Differ,    // anything else with two nets
  NoSource,  // nothing tells of the source's
  NoTarget,
};
// A net of Grid 0 is none.
NetMatch Match_Nets(const CoordinateState& source, const CoordinateState& target);
// Can the coordinates of one net be converted into those of the other?
bool Can_Convert(const CoordinateState& source, const CoordinateState& target);

enum class PlaceWay { Pixels, Coordinates, Converted };

class TablePlacing {
 public:
  TablePlacing() = default;  // pixels stay
  // Raises 5000 where the systems cannot be converted.
  TablePlacing(PlaceWay wanted, const CoordinateState& sourceNet, const CoordinateState& targetNet);
  PlaceWay Way() const { return way; }
  // Map pixels of the source to those of the open map, beyond its edges as well; nothing where a net does not reach.
  std::optional<QPoint> operator()(QPoint at) const;
  // "Potsdam -> WGS-84, 3 m"; empty where nothing is converted.
  QString Name() const;

 private:
  std::optional<QPointF> Target_Place(QPointF coordinates) const;

  PlaceWay way = PlaceWay::Pixels;
  CoordinateState source, target;
  std::shared_ptr<Transformation> conversion;
};
