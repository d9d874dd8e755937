#pragma once
#include <QString>
#include <QStringList>

struct CalibrationPlan;

// Traced nets: three parallels and three meridians as rows of samples.

namespace calibration {

struct TracedNet {
  QString grid, division;  // the line of the net, and of the distance of its lines
  QStringList lines;       // parameters, reference points, curves
};
// Error 5000 with a German text where the map shows no three lines, where the net folds, and for a plane net that
// leaves the range of its numbers.
TracedNet Trace_Net(const CalibrationPlan& plan);

}  // namespace calibration
