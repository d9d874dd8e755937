#pragma once
#include <QSize>
#include <QString>

#include "calibration/control_point.h"
#include "calibration/net_fit.h"
#include "state/coordinate_state.h"

// All that a calibration file is made of.

// How the net is drawn: what a file in force says of it is kept.
struct NetStyle {
  QString font = QStringLiteral("Arial");
  int fontSize = 8;
  int line = 12, ground = 15;  // colours of the palette
  int width = 1, pattern = 0, labelEvery = 1;
  bool transparent = true;
  bool operator==(const NetStyle&) const = default;
};
NetStyle Style_Of(const CoordinateState& state);  // what a file that was read says

struct CalibrationPlan {
  QString mapName;  // file name of the picture
  QSize map;        // its pixels
  NetDescription net;
  NetStyle style;
  ControlPoints points;
  NetFit fit;
};

// Between lines, so that a map of that many metres (or degrees) has four to ten of them.
double Fitting_Spacing(NetKind kind, double extent);
// Of the part of the net the map shows: along Rechtswert or longitude, and along Hochwert or latitude.
QSizeF Extent_Of(const NetFit& fit, QSize map);
