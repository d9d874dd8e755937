#pragma once
#include <QString>
#include <vector>

// "Map.log": the recent lists, records of 206 bytes (Kind, Order, MapNo as little-endian 16 bit, Path of 200 bytes).
struct LogRecord {
  int Kind = 0;   // 1 map, 2 table of a map, 3 note text, -2 deleted slot
  int Order = 0;  // kinds 1, 3: 1 = newest; kind 2: running number, highest = newest
  int MapNo = 0;  // kind 2: Order of its map
  QString Path;
  bool operator==(const LogRecord&) const = default;
};
std::vector<LogRecord> Read_Log_Records();

// Fills the menus mnuMapFile (1), mnuOverlay (2, of the open map), mnuRecentFile (3), up to 10 lines each, newest first.
// Writes the demo entries when the log has fewer than two records; takes up "Tables.ini" once.
void Read_Log(int kind);
void Write_Log(const QString& path, int kind);  // puts the path on top of its list
void Delete_From_Log(const QString& path);      // takes the record out and deletes the file and its ".ldb"
void Compress_Log();                            // the request "MapBak"
