#include "store/log_record.h"

#include <QStringDecoder>
#include <QtEndian>

#include "platform/files.h"

namespace {
constexpr qsizetype pathBytes = 200, recordBytes = 206;

QString Decode_Path(QByteArray bytes) {
  while (bytes.endsWith(' ') || bytes.endsWith('\0')) bytes.chop(1);
  QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
  const QString text = decoder(bytes);
  return decoder.hasError() ? From_1252(bytes) : text;
}

// Windows-1252 where it comes back as the same path, else UTF-8, cut between two characters.
QByteArray Encode_Path(const QString& path) {
  QByteArray bytes = To_1252(path);
  if (Decode_Path(bytes) != path) bytes = path.toUtf8();
  const QString whole = Decode_Path(bytes);
  if (bytes.size() > pathBytes) {
    bytes.truncate(pathBytes);
    while (!bytes.isEmpty() && !whole.startsWith(Decode_Path(bytes))) bytes.chop(1);
  }
  return bytes;
}

int Read_16(const char* at) { return qFromLittleEndian<qint16>(at); }
void Append_16(QByteArray& bytes, int value) {
  char field[2];
  qToLittleEndian(static_cast<qint16>(value), field);
  bytes.append(field, 2);
}
}  // namespace

bool Decode_Log(const QByteArray& bytes, std::vector<LogRecord>& records) {
  records.clear();
  if (bytes.size() % recordBytes != 0) return false;
  for (qsizetype at = 0; at < bytes.size(); at += recordBytes) {
    const char* field = bytes.constData() + at;
    LogRecord record{Read_16(field), Read_16(field + 2), Read_16(field + 4), Decode_Path(bytes.mid(at + 6, pathBytes))};
    const bool isKnown = record.Kind == 1 || record.Kind == 2 || record.Kind == 3 || record.Kind == -2;
    if (!isKnown) return false;
    records.push_back(std::move(record));
  }
  return true;
}

QByteArray Encode_Log(const std::vector<LogRecord>& records) {
  QByteArray bytes;
  for (const LogRecord& record : records) {
    Append_16(bytes, record.Kind);
    Append_16(bytes, record.Order);
    Append_16(bytes, record.MapNo);
    bytes.append(Encode_Path(record.Path).leftJustified(pathBytes, ' '));
  }
  return bytes;
}

QString Stored_Path(const QString& path) { return Decode_Path(Encode_Path(path)); }

bool Is_Cut_Path(const QString& path) {
  // A cut between two characters of UTF-8 may leave up to three bytes.
  return Encode_Path(path).size() > pathBytes - 4 && !File_Exists(path);
}
