#pragma once
#include <QString>
#include <QStringList>

#include "import/gps_import.h"

// Imports where nobody is there to ask: those of scripts.

struct ScriptedImport {
  QStringList summary;  // a line for each count
  QString report;       // path of the report of what did not come, "" where all came
};
// Waypoints and tracks of a file, converted where kind or datum differ. Raises what Read_Gps_File and Placing raise,
// and 5000 where the coordinates cannot come onto the map or an error took the import back.
ScriptedImport Import_Gps_Unasked(const QString& path, Existing existing);
