#include "maps/open_marker.h"

#include "platform/files.h"

void OpenMarker::Begin(const QString& map) {
  path = map.left(map.size() - mapEndingLength) + QStringLiteral(".map");
  existed = File_Exists(path);
  if (!existed) Add(map);
}

void OpenMarker::Add(const QString& line) {
  if (existed) return;
  lines += line;
  Write_Lines(path, lines);
}

void OpenMarker::Remove() const { Kill_Quietly(path); }
