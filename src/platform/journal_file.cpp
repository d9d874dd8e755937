#include "platform/journal_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/error.h"
#include "platform/files.h"

namespace {

constexpr char magic[8] = {'F', 'L', 'X', 'J', 'N', 'L', '1', '\n'};
constexpr qint64 headBytes = sizeof magic + 2 * sizeof(quint32);
constexpr qint64 frameBytes = 1 + 4 + 8;  // kind, bytes, sum
constexpr qsizetype worthPacking = 4096;  // bytes
constexpr qsizetype usualEndBytes = 512;
constexpr char plainPart = 'c', packedPart = 'z', recordEnd = 'e';

quint64 Sum_Of(const char* bytes, qsizetype size) {
  quint64 sum = 0xcbf29ce484222325u + static_cast<quint64>(size);
  for (; size >= 8; size -= 8, bytes += 8) {
    quint64 word;
    std::memcpy(&word, bytes, 8);
    sum = (sum ^ word) * 0x9e3779b97f4a7c15u;
    sum ^= sum >> 29;
  }
  for (; size > 0; --size) sum = (sum ^ static_cast<quint8>(*bytes++)) * 0x100000001b3u;
  return sum;
}

template <typename Number>
void Append_Raw(QByteArray& bytes, Number number) {
  bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

// Room for the head of a frame, whose content is appended next.
qsizetype Begin_Frame(QByteArray& bytes) {
  bytes.resize(bytes.size() + frameBytes);
  return bytes.size();
}

void End_Frame(QByteArray& bytes, qsizetype content, char kind) {
  const qsizetype count = bytes.size() - content;
  const auto size = static_cast<quint32>(count);
  const quint64 sum = Sum_Of(bytes.constData() + content, count) ^ static_cast<quint8>(kind);
  char* head = bytes.data() + content - frameBytes;
  head[0] = kind;
  std::memcpy(head + 1, &size, sizeof size);
  std::memcpy(head + 5, &sum, sizeof sum);
}

void Append_Part(QByteArray& bytes, const QByteArray& changes) {
  const qsizetype content = Begin_Frame(bytes);
  const bool plain = changes.size() < worthPacking;
  bytes.append(plain ? changes : qCompress(changes, 1));
  End_Frame(bytes, content, plain ? plainPart : packedPart);
}

// As QDataStream puts it, which reads it: numbers and letters with their high bytes first.
void Append_Text(QByteArray& bytes, const QString& text) {
  Append_Raw(bytes, qToBigEndian(static_cast<quint32>(2 * text.size())));
  const qsizetype at = bytes.size();
  bytes.resize(at + 2 * text.size());
  qToBigEndian<char16_t>(text.utf16(), text.size(), bytes.data() + at);
}

void Append_Record(QByteArray& bytes, const JournalRecord& record) {
  const qsizetype content = Begin_Frame(bytes);
  Append_Raw(bytes, qToBigEndian(record.step));
  Append_Raw(bytes, qToBigEndian(record.when));
  Append_Raw(bytes, qToBigEndian(record.state));
  Append_Raw(bytes, qToBigEndian(record.rows));
  for (const QString* text : {&record.name, &record.contextBefore, &record.contextAfter}) Append_Text(bytes, *text);
  End_Frame(bytes, content, recordEnd);
}

bool Read_Record(const QByteArray& bytes, JournalRecord& record) {
  QDataStream in(bytes);
  in.setVersion(QDataStream::Qt_6_0);
  in >> record.step >> record.when >> record.state >> record.rows >> record.name >> record.contextBefore >>
      record.contextAfter;
  return in.status() == QDataStream::Ok;
}

[[noreturn]] void Raise_Errno(int code) {
  Raise(code == ENOSPC || code == EDQUOT || code == EFBIG ? errors::diskFull : errors::noPermission);
}

}  // namespace

JournalFile::JournalFile(const QString& name) : path(name) {}
JournalFile::~JournalFile() { Close(); }

void JournalFile::Close() {
  if (fd >= 0) ::close(std::exchange(fd, -1));
}

// The frame that begins there: where it ends, 0 if there is none. Without a content to fill only its head is read.
qint64 JournalFile::Read_Frame(qint64 at, char& kind, QByteArray* content) const {
  char head[frameBytes];
  if (::pread(fd, head, frameBytes, at) != frameBytes) return 0;
  quint32 size;
  quint64 sum;
  kind = head[0];
  std::memcpy(&size, head + 1, sizeof size);
  std::memcpy(&sum, head + 5, sizeof sum);
  if (kind != plainPart && kind != packedPart && kind != recordEnd) return 0;
  struct stat file {};
  const qint64 last = at + frameBytes + size;
  if (::fstat(fd, &file) != 0 || last > file.st_size) return 0;
  if (!content) return last;
  content->resize(static_cast<qsizetype>(size));
  if (::pread(fd, content->data(), size, at + frameBytes) != static_cast<ssize_t>(size)) return 0;
  return (Sum_Of(content->constData(), content->size()) ^ static_cast<quint8>(kind)) == sum ? last : 0;
}

bool JournalFile::Read() {
  Close();
  records.clear();
  ends.clear();
  end = partsEnd = 0;
  fresh = true;
  fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
  char head[headBytes];
  if (fd < 0) return false;
  if (::pread(fd, head, headBytes, 0) != headBytes || std::memcmp(head, magic, sizeof magic) != 0) {
    Close();
    return false;
  }
  std::memcpy(&foundState, head + sizeof magic, sizeof foundState);
  std::memcpy(&firstState, head + sizeof magic + sizeof foundState, sizeof firstState);
  fresh = false;
  end = headBytes;
  char kind = 0;
  for (qint64 at = end, next; (next = Read_Frame(at, kind, nullptr)) != 0; at = next) {
    if (kind != recordEnd) continue;
    QByteArray content;
    JournalRecord record;
    if (Read_Frame(at, kind, &content) == 0 || !Read_Record(content, record)) break;
    records.push_back(std::move(record));
    ends.push_back(next);
    end = next;
  }
  partsEnd = end;
  return true;
}

void JournalFile::Begin(quint32 found, quint32 first) {
  Close();
  records.clear();
  ends.clear();
  foundState = found;
  firstState = first;
  end = partsEnd = headBytes;
  fresh = true;
}

void JournalFile::Open_For_Writing() {
  if (fd >= 0 && !fresh) return;
  Close();
  QDir().mkpath(QFileInfo(path).absolutePath());
  fd = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) Raise_Errno(errno);
  QByteArray head(magic, sizeof magic);
  head.append(reinterpret_cast<const char*>(&foundState), sizeof foundState);
  head.append(reinterpret_cast<const char*>(&firstState), sizeof firstState);
  partsEnd = 0;
  Write(head);
  end = partsEnd;
  fresh = false;
}

void JournalFile::Write(const QByteArray& bytes) {
  if (File_Write_Fault)
    if (const int fault = File_Write_Fault(path, bytes.size())) Raise(fault);
  const char* from = bytes.constData();
  for (qsizetype left = bytes.size(); left > 0;) {
    const ssize_t written = ::pwrite(fd, from, static_cast<size_t>(left), partsEnd);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) Raise_Errno(written < 0 ? errno : ENOSPC);
    from += written;
    left -= written;
    partsEnd += written;
  }
}

void JournalFile::Add_Part(const QByteArray& changes) {
  QByteArray bytes;
  Append_Part(bytes, changes);
  Append(bytes);
}

void JournalFile::Append(const QByteArray& bytes) {
  try {
    Open_For_Writing();
    Write(bytes);
  } catch (const Error&) {
    Give_Up_Record();
    throw;
  }
}

void JournalFile::Add_End(const JournalRecord& record, const QByteArray& lastPart) {
  QByteArray bytes;
  bytes.reserve(lastPart.size() + usualEndBytes);
  if (!lastPart.isEmpty()) Append_Part(bytes, lastPart);
  Append_Record(bytes, record);
  Append(bytes);
  end = partsEnd;
  records.push_back(record);
  ends.push_back(end);
}

void JournalFile::Give_Up_Record() {
  partsEnd = end;
  if (fd >= 0 && !fresh && ::ftruncate(fd, end) != 0) return;  // it has no end and is not read
}

qint64 JournalFile::Start_Of(size_t record) const { return record == 0 ? headBytes : ends[record - 1]; }

void JournalFile::Cut(size_t count) {
  if (count >= records.size()) return;
  end = Start_Of(count);
  records.resize(count);
  ends.resize(count);
  Give_Up_Record();
}

std::vector<QByteArray> JournalFile::Changes(size_t record) const {
  std::vector<QByteArray> lists;
  char kind = 0;
  for (qint64 at = Start_Of(record), next = 0; at < ends.at(record); at = next) {
    QByteArray content;
    next = fd < 0 ? 0 : Read_Frame(at, kind, &content);
    if (next == 0) Raise(errors::databaseDamaged, QStringLiteral("Der Verlauf der Tabelle ist beschädigt."));
    if (kind == plainPart) lists.push_back(std::move(content));
    if (kind == packedPart) lists.push_back(qUncompress(content));
  }
  return lists;
}

void JournalFile::Drop_First(size_t count) {
  if (count == 0 || count > records.size()) return;
  JournalFile shorter(Aside_Name(path));
  shorter.Begin(records[count - 1].state, records[count - 1].state);
  try {
    for (size_t record = count; record < records.size(); ++record) {
      for (const QByteArray& list : Changes(record)) shorter.Add_Part(list);
      shorter.Add_End(records[record]);
    }
    shorter.Open_For_Writing();
    if (::fsync(shorter.fd) != 0 ||
        ::rename(QFile::encodeName(shorter.path).constData(), QFile::encodeName(path).constData()) != 0)
      Raise_Errno(errno);
  } catch (const Error&) {
    shorter.Remove();
    throw;
  }
  Close();
  fd = std::exchange(shorter.fd, -1);
  foundState = shorter.foundState;
  firstState = shorter.firstState;
  end = shorter.end;
  partsEnd = shorter.partsEnd;
  records.swap(shorter.records);
  ends.swap(shorter.ends);
}

void JournalFile::Remove() {
  Close();
  QFile::remove(path);
  Begin(foundState, firstState);
}
