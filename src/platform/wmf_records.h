#pragma once
#include <QByteArray>
#include <QRgb>
#include <QtEndian>
#include <algorithm>

// Records of a Windows metafile. What a file says of lengths and counts is never trusted beyond its own end.

namespace wmf {

// Record numbers.
enum : quint16 {
  recSaveState = 0x001E,
  recRestoreState = 0x0127,
  recSetBkMode = 0x0102,
  recSetRop2 = 0x0104,
  recSetPolyFillMode = 0x0106,
  recSetTextAlign = 0x012E,
  recSetTextColor = 0x0209,
  recSetBkColor = 0x0201,
  recSetWindowOrg = 0x020B,
  recSetWindowExt = 0x020C,
  recOffsetWindowOrg = 0x020F,
  recScaleWindowExt = 0x0410,
  recMoveTo = 0x0214,
  recLineTo = 0x0213,
  recRectangle = 0x041B,
  recRoundRect = 0x061C,
  recEllipse = 0x0418,
  recArc = 0x0817,
  recPie = 0x081A,
  recChord = 0x0830,
  recPolygon = 0x0324,
  recPolyline = 0x0325,
  recPolyPolygon = 0x0538,
  recSetPixel = 0x041F,
  recPatBlt = 0x061D,
  recTextOut = 0x0521,
  recExtTextOut = 0x0A32,
  recSelectObject = 0x012D,
  recDeleteObject = 0x01F0,
  recCreatePen = 0x02FA,
  recCreateBrush = 0x02FC,
  recCreateFont = 0x02FB,
  recCreatePatternBrush = 0x01F9,
  recCreateDibBrush = 0x0142,
  recCreatePalette = 0x00F7,
  recCreateRegion = 0x06FF,
  recStretchDib = 0x0F43,
  recDibStretchBlt = 0x0B41,
  recDibBitBlt = 0x0940,
};

// Parameters of a record: words counted from 0; what lies beyond the end reads as 0.
class Words {
 public:
  Words(const char* start, qint64 bytes) : at(start), size(bytes) {}
  int Signed(qint64 word) const { return static_cast<qint16>(Unsigned(word)); }
  int Unsigned(qint64 word) const { return Has(word) ? qFromLittleEndian<quint16>(at + word * 2) : 0; }
  QRgb Color(qint64 word) const { return qRgb(Unsigned(word) & 0xFF, Unsigned(word) >> 8, Unsigned(word + 1) & 0xFF); }
  bool Has(qint64 word) const { return word >= 0 && word * 2 + 2 <= size; }
  qint64 Count() const { return size / 2; }
  // `count` bytes from that word on, fewer where the record ends before.
  QByteArray Bytes(qint64 word, qint64 count) const {
    const qint64 from = std::clamp<qint64>(word * 2, 0, size);
    return {at + from, static_cast<qsizetype>(std::clamp<qint64>(count, 0, size - from))};
  }

 private:
  const char* at;
  qint64 size;
};

// 32 bits at a place; 0 beyond the end.
inline quint32 Long_At(const QByteArray& bytes, qint64 at) {
  return at >= 0 && at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}

// Calls `take(number, parameters)` for each record until it returns false or the end is met.
template <class Take>
void For_Each_Record(const QByteArray& bytes, qint64 at, Take take) {
  while (at + 6 <= bytes.size()) {
    const qint64 length = static_cast<qint64>(Long_At(bytes, at)) * 2;
    const quint16 number = qFromLittleEndian<quint16>(bytes.constData() + at + 4);
    if (length < 6 || number == 0) return;
    const qint64 end = std::min<qint64>(at + length, bytes.size());
    if (!take(number, Words(bytes.constData() + at + 6, end - at - 6))) return;
    at = end;
  }
}

}  // namespace wmf
