#include "platform/picture_check.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>

namespace {

const QString cutOff = QStringLiteral("die Datei ist unvollständig (abgeschnitten).");

// Bytes of a file by their place, through a piece of it in memory: a file may be larger than that.
class FileBytes {
 public:
  explicit FileBytes(QFile& source) : file(source), size(source.size()) {}
  qint64 Size() const { return size; }
  // The byte, or -1 behind the end or where nothing can be read.
  int At(qint64 place) {
    if (place < start || place >= start + piece.size()) {
      if (place < 0 || place >= size || !file.seek(place)) return -1;
      start = place;
      piece = file.read(pieceBytes);
      if (piece.isEmpty()) return -1;
    }
    return static_cast<uchar>(piece[place - start]);
  }

 private:
  static constexpr qint64 pieceBytes = 1 << 16;
  QFile& file;
  qint64 size, start = 0;
  QByteArray piece;
};

// Does the packed stream reach its end mark, or at least fill the last row?
bool Packed_Rows_Complete(FileBytes& bytes, const BmpHead& head) {
  qint64 row = 0, column = 0;
  for (qint64 i = head.pixelOffset;;) {
    const int count = bytes.At(i), code = bytes.At(i + 1);
    if (count < 0 || code < 0) return false;
    i += 2;
    if (count > 0) {
      column += count;
    } else if (code == 0) {
      ++row;
      column = 0;
    } else if (code == 1) {
      return true;
    } else if (code == 2) {
      if (bytes.At(i) < 0 || bytes.At(i + 1) < 0) return false;
      column += bytes.At(i);
      row += bytes.At(i + 1);
      i += 2;
    } else {
      const qint64 packed = head.bits == 4 ? (code + 1) / 2 : code;
      if (i + packed > bytes.Size()) return false;
      column += code;
      i += (packed + 1) / 2 * 2;
    }
    if (row >= head.height || (row == head.height - 1 && column >= head.width)) return true;
  }
}

QString Bmp_Flaw(QFile& file) {
  const auto known = Read_Bmp_Head(file);
  if (!known) return file.size() < 54 ? cutOff : QStringLiteral("der Kopf der Datei ist beschädigt.");
  const BmpHead& head = *known;
  if (head.compression == 1 || head.compression == 2) {
    FileBytes bytes(file);
    return Packed_Rows_Complete(bytes, head) ? QString() : cutOff;
  }
  const qint64 stride = (head.width * head.bits + 31) / 32 * 4;
  // The last row may lack its filling bytes; some programs do not write them.
  const qint64 need = head.pixelOffset + stride * (head.height - 1) + (head.width * head.bits + 7) / 8;
  return file.size() < need ? cutOff : QString();
}

// The end mark of the picture must stand somewhere behind the start of its scan; a preview in the head has its own. It
// is looked for from the end of the file, where it mostly is.
QString Jpg_Flaw(QFile& file) {
  FileBytes bytes(file);
  qint64 i = 2;
  while (i + 3 < bytes.Size() && bytes.At(i) == 0xFF && bytes.At(i + 1) != 0xDA) {
    if (bytes.At(i + 1) == 0xFF) {
      ++i;
      continue;
    }
    i += 2 + (std::max(0, bytes.At(i + 2)) << 8 | std::max(0, bytes.At(i + 3)));
  }
  constexpr qint64 piece = 1 << 16;
  for (qint64 end = file.size(); end > i; end -= piece) {
    const qint64 from = std::max(i, end - piece - 1);  // a mark may lie across two pieces
    if (!file.seek(from)) return cutOff;
    const QByteArray part = file.read(end - from);
    if (part.isEmpty()) return cutOff;
    if (part.contains("\xFF\xD9")) return {};
  }
  return cutOff;
}

// The blocks of the first image must come to their end.
QString Gif_Flaw(QFile& file) {
  FileBytes bytes(file);
  const auto at = [&](qint64 i) { return std::max(0, bytes.At(i)); };
  const auto tableBytes = [](int flags) { return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0; };
  const auto skipBlocks = [&](qint64 i) {
    while (at(i) != 0) i += 1 + at(i);
    return i + 1;
  };
  qint64 i = 13 + tableBytes(at(10));
  while (at(i) == 0x21) i = skipBlocks(i + 2);
  if (at(i) == 0x2C) i = skipBlocks(i + 11 + tableBytes(at(i + 9)));
  return i > bytes.Size() || i == 13 ? cutOff : QString();
}

}  // namespace

std::optional<BmpHead> Read_Bmp_Head(QFile& file) {
  const QByteArray bytes = file.peek(54);
  if (!bytes.startsWith("BM") || bytes.size() < 26) return {};
  const char* at = bytes.constData();
  BmpHead head;
  head.pixelOffset = qFromLittleEndian<quint32>(at + 10);
  const quint32 headSize = qFromLittleEndian<quint32>(at + 14);
  if (headSize == 12) {
    head.width = qFromLittleEndian<quint16>(at + 18);
    head.height = qFromLittleEndian<quint16>(at + 20);
    head.bits = qFromLittleEndian<quint16>(at + 24);
  } else {
    if (headSize < 40 || bytes.size() < 54) return {};
    head.width = qFromLittleEndian<qint32>(at + 18);
    head.height = std::abs(static_cast<qint64>(qFromLittleEndian<qint32>(at + 22)));  // below 0: top row first
    head.bits = qFromLittleEndian<quint16>(at + 28);
    head.compression = qFromLittleEndian<quint32>(at + 30);
  }
  constexpr int depths[] = {1, 4, 8, 16, 24, 32};
  const bool knownDepth = std::find(std::begin(depths), std::end(depths), head.bits) != std::end(depths);
  constexpr qint64 longestSide = 1 << 24;  // beyond it the head can only be damaged
  if (head.width <= 0 || head.width > longestSide || head.height <= 0 || head.height > longestSide || !knownDepth)
    return {};
  return head;
}

QString Picture_Flaw(QFile& file) {
  const qint64 former = file.pos();
  const QByteArray head = file.peek(3);
  QString flaw;
  if (head.startsWith("BM"))
    flaw = Bmp_Flaw(file);
  else if (head.startsWith("\xFF\xD8\xFF"))
    flaw = Jpg_Flaw(file);
  else if (head.startsWith("GIF"))
    flaw = Gif_Flaw(file);
  file.seek(former);
  return flaw;
}
