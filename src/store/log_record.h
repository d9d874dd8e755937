#pragma once
#include <QByteArray>
#include <QString>
#include <vector>

#include "store/map_log.h"

// The bytes of "Map.log".

// False if the bytes are no log: a part of a record too many, or an unknown kind.
bool Decode_Log(const QByteArray& bytes, std::vector<LogRecord>& records);
QByteArray Encode_Log(const std::vector<LogRecord>& records);
// A path as the record gives it back: cut if it is too long, without blanks at its end.
QString Stored_Path(const QString& path);
// Does it fill the whole field without naming a file? Then it was cut.
bool Is_Cut_Path(const QString& path);
