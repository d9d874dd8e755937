#pragma once
#include <QSize>
#include <QString>
#include <QStringList>

#include "state/coordinate_state.h"

// Reading calibration files. Who reads is asked about faults by message boxes ("Fehler:    "): OK goes on with the next
// field or line, Cancel stops.

// Reads the file for a map of that size into `state` (replaced whole), closing checks and net included. -1 when it was
// read, 0 when the user cancelled after an error.
int Read_Cal(const QString& calFile, QSize map, CoordinateState& state);

// Calibration files beside a map: names ending in "cal" that hold the map's name up to its first ".", with regard to
// case; at most ten (else a message and the first ten). Full paths, sorted.
QStringList Cal_Files_Of(const QString& mapFile);
