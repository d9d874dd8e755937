#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "hand/text_look.h"
#include "import/gps_records.h"
#include "import/import_list.h"
#include "store/table_file.h"

// Waypoints and tracks of a file onto the map: first a plan, which says of every record where it falls and what exists
// already, then the entries. A waypoint becomes a text, an unbroken piece of a track a line.

enum class GpsContent { Waypoints, Tracks };

struct GpsRecord {
  PlacedPoint placed;
  ImportMark mark;
};

struct GpsPlan {
  GpsContent content = GpsContent::Waypoints;
  std::vector<GpsRecord> records;  // of the waypoints, or of all track points, in the order of the file
  ImportCounts counts;             // of the records
  bool cancelled = false;          // the user ended the conversion after an error
};

// How the entries will look, and what of them is taken.
struct GpsLook {
  int VG = 0, HG = 15, RA = -100;  // colour numbers; RA is a frame word
  FontChoice font{.size = 10};
  bool withComment = false;  // behind the name
};
GpsLook Usual_Gps_Look();  // of the next entry

enum class Existing { Skipped, Taken };

// Places all records and compares them with the open table. Raises what Placing raises.
GpsPlan Plan_Gps(const GpsFile& file, GpsContent content, PlacingWay way, Existing existing = Existing::Skipped);

// What is imported as one: a waypoint, or a piece of a track: neighbours in the file on neighbouring places.
struct GpsUnit {
  int line = 0;  // of its first record
  QString text;
  std::vector<QPoint> points;  // map pixels
  int records = 0;             // of the plan that went into it
};
// Of the usable records, or of those among them that are chosen (indices of the plan, ascending). Points off the map
// and those not chosen break a track; of points on the same pixel one stays, and a piece needs two.
std::vector<GpsUnit> Gps_Units(const GpsFile& file, const GpsPlan& plan, const GpsLook& look,
                               const std::optional<std::vector<int>>& chosen = {});
// Asks of each "diesen Eintrag in die Karte importieren?"; No skips it, Cancel ends with those that were taken so far.
std::vector<GpsUnit> Ask_One_By_One(std::vector<GpsUnit> units, GpsContent content);

struct GpsRefusal {
  int line = 0;
  QString text, reason;
};

struct GpsResult {
  int imported = 0;                        // entries made
  bool stopped = false;                    // the user ended it; what came in before stays
  bool failed = false;                     // an error took everything back; it was told
  std::vector<GpsRefusal> refused, notes;  // what could not come; what came with a text that was cut
  std::shared_ptr<UndoPoint> point;        // ends with the result: the user may take everything back at once
};

// Makes the entries: one undo point "Rückgängig: Import", one transaction, one redraw.
GpsResult Import_Gps(const std::vector<GpsUnit>& units, GpsContent content, const GpsLook& look);
// Tells the count, with the way back. False: the user wants it taken back at once. `readable`: how many the file holds;
// `importable`: how many of them could have come.
bool Tell_Gps_Import(const GpsResult& result, GpsContent content, int readable, int importable);

// For the window of imports; file and plan must outlive it.
ImportList Gps_List(const GpsFile& file, const GpsPlan& plan, const QString& transformation);
// What a script is told on its standard output, line by line.
QStringList Gps_Report(const GpsPlan& plan, const GpsResult& result);
// Everything of the plan that did not come, a line each: line of the file, name and reason.
QStringList Gps_Refusals(const GpsFile& file, const GpsPlan& plan, const GpsResult& result);
// What of the file could not be read at all, in the same way.
QStringList Gps_Faults(const GpsFile& file);
