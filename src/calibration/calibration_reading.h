#pragma once
#include <QSize>
#include <QString>

#include "calibration/calibration_writer.h"

// What an existing calibration file says, to go on with it.
struct CalibrationDraft {
  NetDescription net;
  NetStyle style;
  ControlPoints points;
};
// The measured points where the file keeps them; else places of its net, spread over the map, that make the same net
// again. Faults of the file are shown as everywhere. Error 5000 if it holds no net, or the user stopped.
CalibrationDraft Read_Draft(const QString& calFile, QSize map);
