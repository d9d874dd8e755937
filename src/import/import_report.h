#pragma once
#include <QString>
#include <QStringList>

// The report of an import beside the map, named like it with "_Import.txt"; replaces the last one. Returns its path.
// Without lines the last one goes and nothing is returned. Raises what the file raises.
QString Write_Import_Report(const QStringList& lines);
