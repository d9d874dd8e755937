#pragma once
#include <QByteArray>
#include <QString>
#include <vector>

// The bytes of "Map.log": records of 206 bytes (Kind, Order, MapNo as little-endian 16 bit, Path of 200 bytes).
struct LogRecord {
  int Kind = 0;   // 1 map, 2 table of a map, 3 note text, -2 deleted slot
  int Order = 0;  // kinds 1, 3: 1 = newest; kind 2: running number, highest = newest
  int MapNo = 0;  // kind 2: Order of its map
  QString Path;
  bool operator==(const LogRecord&) const = default;
};

// False if the bytes are no log: a part of a record too many, or an unknown kind.
bool Decode_Log(const QByteArray& bytes, std::vector<LogRecord>& records);
QByteArray Encode_Log(const std::vector<LogRecord>& records);
// A path as the record gives it back: cut if it is too long, without blanks at its end.
QString Stored_Path(const QString& path);
// Does it fill the whole field without naming a file? Then it was cut.
bool Is_Cut_Path(const QString& path);
