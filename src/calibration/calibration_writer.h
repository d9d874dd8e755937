#pragma once
#include <QString>
#include <QStringList>

#include "calibration/calibration_plan.h"
#include "state/coordinate_state.h"

// Writes calibration files, and reads back what was written.

// The lines of the file. The measured points stand in it as remarks that readers pass over. Errors 5000 with a German
// text: a net whose lines no map has, a traced net that folds or that has no three lines on the map, zone or datum with
// words that mean something else in such a file.
QStringList Calibration_Lines(const CalibrationPlan& plan);

// What was read back, and by how many pixels it misses the fit at worst, over the whole map.
struct CalibrationProof {
  CoordinateState state;
  double missed = 0;
};
// Reads such lines as the program reads the file. Error 5000 with the reader's own words if a line is not taken, and
// where kind, zone, datum or spacing come out as others.
CalibrationProof Prove_Calibration(const CalibrationPlan& plan, const QStringList& lines);

// Writes the file and proves it. An existing one gets "_alt" behind its name, in the place of an older one of that
// name; it comes back if the new one fails. Errors of the above and of Write_Lines.
CalibrationProof Save_Calibration(const CalibrationPlan& plan, const QString& path);

// "Karte.cal" beside "Karte.bmp": named so that the map finds it.
QString Calibration_File_Of(const QString& mapFile);
