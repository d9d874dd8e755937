#include "import/gps_script.h"

#include <QFileInfo>

#include "import/gps_file.h"
#include "import/import_report.h"
#include "import/placing_question.h"
#include "platform/error.h"
#include "platform/files.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"

namespace {
constexpr int cannotCome = 5000;
}

ScriptedImport Import_Gps_Unasked(const QString& path, Existing existing) {
  const GpsFile file = Read_Gps_File(path);
  if (const QString reason = Nothing_In(file); !reason.isEmpty()) Raise(cannotCome, reason);
  if (!Coord.Geographic() && !Coord.Metric()) Raise(cannotCome, QStringLiteral("Die Karte hat kein Koordinatennetz."));
  const auto way = Usual_Placing_Way(file.system, Coord);
  if (!way)
    Raise(cannotCome, QStringLiteral("Die Koordinaten der Datei (%1) können nicht in das Netz der Karte umgerechnet "
                                     "werden.")
                          .arg(Given_Text(file.system)));
  ScriptedImport done;
  if (*way == PlacingWay::Transformed)
    done.summary << QStringLiteral("umgerechnet: ") + Transformation_Name(file.system, Coord).value_or(QString());
  QStringList refused = Gps_Faults(file);
  for (const GpsContent content : {GpsContent::Waypoints, GpsContent::Tracks}) {
    if (content == GpsContent::Waypoints ? file.waypoints.empty() : file.tracks.empty()) continue;
    const GpsPlan plan = Plan_Gps(file, content, *way, existing);
    const GpsLook look = Usual_Gps_Look();
    const GpsResult result = Import_Gps(Gps_Units(file, plan, look), content, look);
    if (result.failed) Raise(cannotCome, QStringLiteral("Es wurde nichts importiert."));
    done.summary << Gps_Report(plan, result);
    refused << Gps_Refusals(file, plan, result);
  }
  if (!file.faults.empty()) done.summary << QStringLiteral("Zeilen nicht lesbar: %1").arg(file.faults.size());
  done.report = Write_Import_Report(refused);
  return done;
}
