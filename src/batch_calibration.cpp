#include "batch_calibration.h"

#include <QFileInfo>
#include <cstdio>

#include "calibration/world_file.h"

using namespace Qt::StringLiterals;

ExitStatus Calibrate_Picture(const BatchOrder& order) {
  const auto reference = Find_Reference(order.map);
  if (!reference) {
    Tell(u"Neben dem Bild liegt weder eine Weltdatei noch ein GeoTIFF gleicher Größe: "_s + order.map);
    return failed;
  }
  const ReferenceSystem system = System_To_Use(*reference, {order.zone, order.datum});
  const CalibrationPlan plan = Plan_Of_Reference(*reference, system, QFileInfo(order.map).fileName());
  const QString path = Calibration_File_Of(order.map);
  Save_Calibration(plan, path);
  std::printf("%s\n", qUtf8Printable(path));
  return done;
}
