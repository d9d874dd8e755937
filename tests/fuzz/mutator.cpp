#include "fuzz/mutator.h"

#include <QtEndian>

namespace {

constexpr qsizetype largestInput = 256 * 1024;

const QByteArrayList writtenEnds =
    QByteArray(
        "-0 1e308 1e309 -1e309 1e-320 nan -inf inf 0x7fff 1,5 1e . - + 1e-9999 3.4028236e38 1e19 -1e19 "
        "00000000000000000000000000000001 99999999999999999999999999999999 -99999999999999999999999999999999 "
        "0.00000000000000000000000000000001")
        .split(' ');

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

// At or beside the end of a range of so many bits.
qint64 Mutator::Some_End() {
  constexpr int bits[] = {0, 1, 7, 8, 15, 16, 23, 24, 31, 32, 63};
  const quint64 end = (quint64{1} << bits[Number(std::size(bits))]) + Number(3) - 1;
  return static_cast<qint64>(Number(2) == 0 ? end : -end);
}

QByteArray Mutator::Next(const QByteArrayList& pool) {
  QByteArray bytes = pool[Place(pool.size())];
  const quint64 changes = 1 + (Number(4) == 0 ? Number(12) : Number(3));
  for (quint64 i = 0; i < changes; ++i) Change(bytes, pool);
  bytes.truncate(largestInput);
  return bytes;
}

void Mutator::Change(QByteArray& bytes, const QByteArrayList& pool) {
  switch (Number(10)) {
    case 0:
      return Flip(bytes);
    case 1:
    case 2:
      return Put_Number(bytes);
    case 3:
    case 4:
      return Write_Number(bytes);
    case 5:
      return Cut(bytes);
    case 6:
      return Repeat(bytes);
    case 7: {  // the beginning of one, the end of another
      const QByteArray& other = pool[Place(pool.size())];
      bytes = bytes.left(Place(bytes.size() + 1)) + other.mid(Place(other.size() + 1));
      return;
    }
    case 8:
      bytes.insert(Place(bytes.size() + 1), words.isEmpty() ? Some_Bytes() : words[Place(words.size())]);
      return;
    default:
      const QByteArray some = Some_Bytes();
      if (!bytes.isEmpty()) bytes.replace(Place(bytes.size()), some.size(), some);
  }
}

void Mutator::Flip(QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  for (quint64 i = Number(8) + 1; i > 0; --i) {
    char& byte = bytes[Place(bytes.size())];
    byte = static_cast<char>(byte ^ (1 << Number(8)));
  }
}

QByteArray Mutator::Some_Bytes() {
  QByteArray some(static_cast<qsizetype>(Number(8)) + 1, '\0');
  for (char& byte : some) byte = static_cast<char>(Number(256));
  return some;
}

// A number in one to eight bytes, either end first.
void Mutator::Put_Number(QByteArray& bytes) {
  const qsizetype width = qsizetype{1} << Number(4);
  if (bytes.size() < width) return;
  char all[8];
  qToLittleEndian(Some_End(), all);
  if (Number(2) == 0) std::reverse(all, all + width);
  std::copy(all, all + width, bytes.data() + Place(bytes.size() - width + 1));
}

// A written number is replaced by another one.
void Mutator::Write_Number(QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  qsizetype start = Place(bytes.size());
  while (start < bytes.size() && !Is_Digit(bytes[start])) ++start;
  qsizetype end = start;
  while (end < bytes.size() && Is_Digit(bytes[end])) ++end;
  const QByteArray number = Number(2) == 0 ? QByteArray::number(Some_End()) : writtenEnds[Place(writtenEnds.size())];
  bytes.replace(start, end - start, number);
}

void Mutator::Cut(QByteArray& bytes) {
  const qsizetype from = Place(bytes.size() + 1);
  if (Number(2) == 0)
    bytes.truncate(from);
  else
    bytes.remove(from, Place(std::min<qsizetype>(bytes.size() - from, 64) + 1));
}

void Mutator::Repeat(QByteArray& bytes) {
  const qsizetype from = Place(bytes.size() + 1);
  const QByteArray part = bytes.mid(from, 1 + Place(64));
  const qsizetype times = Number(8) == 0 ? 1 + Place(2000) : 1 + Place(4);
  if (part.size() * times < largestInput) bytes.insert(from, part.repeated(times));
}
