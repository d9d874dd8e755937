#include "platform/page_log.h"

#include <QFile>
#include <QtEndian>

#include "platform/files.h"

namespace {

constexpr qsizetype logHead = 32, frameHead = 24, fileHead = 100;

quint32 Word(const QByteArray& bytes, qsizetype at) { return qFromBigEndian<quint32>(bytes.constData() + at); }

// The running sums that every frame bears.
struct Sums {
  quint32 first = 0, second = 0;
  bool bigEndian = false;

  void Add(const QByteArray& bytes, qsizetype from, qsizetype count) {
    for (qsizetype at = from; at < from + count; at += 8) {
      const char* word = bytes.constData() + at;
      first += (bigEndian ? qFromBigEndian<quint32>(word) : qFromLittleEndian<quint32>(word)) + second;
      second += (bigEndian ? qFromBigEndian<quint32>(word + 4) : qFromLittleEndian<quint32>(word + 4)) + first;
    }
  }
  bool Are(const QByteArray& bytes, qsizetype at) const {
    return Word(bytes, at) == first && Word(bytes, at + 4) == second;
  }
};

}  // namespace

PageLog Read_Log(const QString& log) {
  PageLog result;
  QFile file(log);
  if (!file.open(QIODevice::ReadOnly)) return result;
  const QByteArray head = file.read(logHead);
  if (head.size() < logHead || (Word(head, 0) & ~1U) != 0x377f0682U) return result;
  Sums sums{.bigEndian = (Word(head, 0) & 1U) != 0};
  sums.Add(head, 0, logHead - 8);
  const quint32 size = Word(head, 8);
  if (!sums.Are(head, logHead - 8) || size < 512 || size > 65536 || (size & (size - 1)) != 0) return result;
  result.pageSize = static_cast<int>(size);
  QHash<quint32, qint64> open;  // of the transaction that is not finished yet
  for (qint64 at = logHead;; at += frameHead + size) {
    const QByteArray frame = file.read(frameHead + size);
    // Frames behind the end are those of an earlier round.
    if (frame.size() < frameHead + size || frame.mid(8, 8) != head.mid(16, 8)) break;
    sums.Add(frame, 0, 8);
    sums.Add(frame, frameHead, size);
    if (!sums.Are(frame, 16)) break;
    open.insert(Word(frame, 0), at + frameHead);
    if (Word(frame, 4) == 0) continue;
    result.pages = Word(frame, 4);
    result.places.insert(open);
    open.clear();
  }
  return result;
}

bool Lacks_Pages(const QByteArray& head, qint64 fileSize, const PageLog& log) {
  if (head.size() < fileHead) return false;
  const int told = qFromBigEndian<quint16>(head.constData() + 16);
  const qint64 pageSize = told == 1 ? 65536 : told;
  if (pageSize < 512) return false;
  // The count of pages holds if the last writer knew of it.
  const bool counted = Word(head, 24) == Word(head, 92);
  const qint64 needed = counted ? Word(head, 28) : (fileSize + pageSize - 1) / pageSize;
  const qint64 lockPage = (qint64{1} << 30) / pageSize + 1;  // never written
  for (qint64 page = fileSize / pageSize + 1; page <= needed; ++page)
    if (page != lockPage && (log.pageSize != pageSize || !log.places.contains(static_cast<quint32>(page)))) return true;
  return false;
}

QByteArray Read_With_Log(const QString& path) {
  QByteArray bytes = Read_Bytes(path);
  const QString name = path + QStringLiteral("-wal");
  const PageLog log = Read_Log(name);
  QFile file(name);
  if (log.pages == 0 || !file.open(QIODevice::ReadOnly)) return bytes;
  for (auto it = log.places.begin(); it != log.places.end(); ++it) {
    const qint64 at = (static_cast<qint64>(it.key()) - 1) * log.pageSize;
    if (at < 0 || it.key() > log.pages || !file.seek(it.value())) continue;
    if (bytes.size() < at + log.pageSize) bytes.append(at + log.pageSize - bytes.size(), '\0');
    bytes.replace(at, log.pageSize, file.read(log.pageSize));
  }
  return bytes;
}
