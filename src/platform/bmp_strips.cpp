#include "platform/bmp_strips.h"

#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <cstring>

#include "platform/picture_check.h"

namespace {

// The head of the file, with the colour table behind it, for that many rows.
QByteArray Head_For_Rows(QByteArray head, qint64 rows, bool topFirst) {
  char* bytes = head.data();
  if (qFromLittleEndian<quint32>(bytes + 14) == 12) {
    qToLittleEndian(static_cast<quint16>(rows), bytes + 20);
    return head;
  }
  qToLittleEndian(static_cast<qint32>(topFirst ? -rows : rows), bytes + 22);
  qToLittleEndian(quint32{0}, bytes + 34);  // bytes of all rows; may be left open
  return head;
}

}  // namespace

QImage Read_Bmp_Strips(QFile& file, const BmpHead& head, qint64 stripPixels) {
  constexpr qint64 longestHead = 1 << 20;  // colour profiles lie behind the rows
  if (head.pixelOffset < 26 || head.pixelOffset > longestHead || !file.seek(0)) return {};
  const QByteArray start = file.read(head.pixelOffset);
  if (start.size() < head.pixelOffset) return {};
  const bool topFirst =
      qFromLittleEndian<quint32>(start.data() + 14) != 12 && qFromLittleEndian<qint32>(start.data() + 22) < 0;
  const qint64 stride = (head.width * head.bits + 31) / 32 * 4;
  const qint64 most = std::clamp<qint64>(stripPixels / head.width, 1, 0x7FFF);
  QImage whole;
  for (qint64 row = 0; row < head.height; row += most) {
    const qint64 rows = std::min(most, head.height - row);
    QByteArray piece = Head_For_Rows(start, rows, topFirst) + file.read(stride * rows);
    piece.append(head.pixelOffset + stride * rows - piece.size(), 0);  // the last row may lack its filling bytes
    const QImage part = QImage::fromData(piece, "BMP");
    if (part.isNull() || part.height() != rows || part.width() != head.width) return {};
    if (whole.isNull()) {
      whole = QImage(static_cast<int>(head.width), static_cast<int>(head.height), part.format());
      if (whole.isNull()) return {};
      whole.setColorTable(part.colorTable());
      whole.setDotsPerMeterX(part.dotsPerMeterX());
      whole.setDotsPerMeterY(part.dotsPerMeterY());
    }
    const qint64 top = topFirst ? row : head.height - row - rows;
    const auto length = static_cast<size_t>(std::min(whole.bytesPerLine(), part.bytesPerLine()));
    for (int y = 0; y < part.height(); ++y)
      std::memcpy(whole.scanLine(static_cast<int>(top) + y), part.constScanLine(y), length);
  }
  return whole;
}
