#pragma once
#include <QString>
#include <vector>

#include "store/log_record.h"

// "Map.log": the recent lists. A path is stored in Windows-1252, in UTF-8 where that cannot hold it, and cut at 200
// bytes: a cut path that names no file is kept for its tables but shown in no menu. A damaged log is put aside as
// "Map_alt.log" with a message, and the lists begin anew. Failures are shown, not raised.
std::vector<LogRecord> Read_Log_Records();

// Fills the menus mnuMapFile (1), mnuOverlay (2, of the open map), mnuRecentFile (3), up to 10 lines each, newest
// first. Writes the demo entries when the log has fewer than two records, and takes up "Tables.ini" then.
void Read_Log(int kind);
// Puts the path on top of its list; a table belongs to the open map. Kind -2 is Delete_From_Log, the path "MapBak" is
// Compress_Log.
void Write_Log(const QString& path, int kind);
// Takes the record out and deletes the file and its ".ldb". Of a map only the record goes, with those of its tables.
void Delete_From_Log(const QString& path);
// Keeps the ten newest maps and texts whose files are there, with the tables of these maps.
void Compress_Log();
