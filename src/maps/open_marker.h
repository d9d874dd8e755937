#pragma once
#include <QString>
#include <QStringList>

inline constexpr int mapEndingLength = 4;  // ".BMP"

// The marker beside the map: it exists only while a map is being opened, and tells of an open that did not end.
struct OpenMarker {
  QString path;
  bool existed = false;  // one was left behind: it stays as it is
  QStringList lines;

  void Begin(const QString& map);  // raises what writing beside the map raises
  void Add(const QString& line);   // the same
  void Remove() const;             // raises nothing
};
