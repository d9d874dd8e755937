#pragma once
#include <QByteArray>
#include <QDataStream>
#include <QRgb>
#include <QtEndian>
#include <utility>
#include <vector>

// Picture files made byte by byte.

template <class Number>
void Put_Number(QByteArray& bytes, qsizetype at, Number value) {
  qToLittleEndian(value, bytes.data() + at);
}

// A bitmap from its parts: head of 40 bytes, colour table, pixel bytes.
inline QByteArray Bmp(int width, int height, int bits, int compression, const std::vector<QRgb>& table,
                      const QByteArray& pixels) {
  const auto colors = static_cast<qint32>(table.size()), offset = 54 + colors * 4,
             length = static_cast<qint32>(pixels.size());
  QByteArray bytes("BM");
  QDataStream out(&bytes, QIODevice::Append);
  out.setByteOrder(QDataStream::LittleEndian);
  out << offset + length << qint32{0} << offset << qint32{40} << qint32{width} << qint32{height} << qint16{1};
  out << static_cast<qint16>(bits) << qint32{compression} << length << qint64{0} << colors << qint32{0};
  for (const QRgb color : table) out << (color & 0xffffff);
  return bytes + pixels;
}

// A metafile from its records.
class Metafile {
 public:
  Metafile& Add(int number, std::initializer_list<int> words, const QByteArray& tail = {}) {
    QByteArray record(static_cast<qsizetype>(6 + words.size() * 2), '\0');
    Put_Number(record, 4, static_cast<qint16>(number));
    qsizetype at = 6;
    for (const int word : words) Put_Number(record, std::exchange(at, at + 2), static_cast<qint16>(word));
    record += tail;
    if (record.size() % 2) record += '\0';
    Put_Number(record, 0, static_cast<qint32>(record.size() / 2));
    records += record;
    return *this;
  }
  const QByteArray& Records() const { return records; }
  // 1440 units an inch: `width` and `height` in pixels of 96 dpi are 15 units each.
  QByteArray Bytes(int width, int height, bool placeable = true) const {
    QByteArray bytes;
    if (placeable) {
      bytes = QByteArray(22, '\0');
      Put_Number(bytes, 0, quint32{0x9AC6CDD7});
      Put_Number(bytes, 10, static_cast<qint16>(width * 15));
      Put_Number(bytes, 12, static_cast<qint16>(height * 15));
      Put_Number(bytes, 14, qint16{1440});
    }
    QByteArray head(18, '\0');
    Put_Number(head, 0, qint16{1});
    Put_Number(head, 2, qint16{9});
    Put_Number(head, 4, qint16{0x300});
    return bytes + head + records + QByteArray("\3\0\0\0\0\0", 6);
  }

 private:
  QByteArray records;
};

inline constexpr int setOrg = 0x20B, setExt = 0x20C, createBrush = 0x2FC, createPen = 0x2FA, createFont = 0x2FB,
                     selectObject = 0x12D, deleteObject = 0x1F0, rectangle = 0x41B, ellipse = 0x418,
                     polyPolygon = 0x538, moveTo = 0x214, lineTo = 0x213, textOut = 0x521, setTextColor = 0x209,
                     setBkMode = 0x102, setRop = 0x104, stretchDib = 0xF43, saveState = 0x1E, restoreState = 0x127,
                     scaleExt = 0x410, offsetOrg = 0x20F, polygon = 0x324, polyline = 0x325;

// Numbers of all records that are drawn or kept.
inline std::vector<int> Known_Records() {
  return {0x1E,  0x127, 0x102, 0x104, 0x106, 0x12E, 0x209, 0x201, 0x20B, 0x20C, 0x20F, 0x410, 0x214,
          0x213, 0x41B, 0x61C, 0x418, 0x817, 0x81A, 0x830, 0x324, 0x325, 0x538, 0x41F, 0x61D, 0x521,
          0xA32, 0x12D, 0x1F0, 0x2FA, 0x2FC, 0x2FB, 0x1F9, 0x142, 0xF7,  0x6FF, 0xF43, 0xB41, 0x940};
}

inline Metafile Sample() {
  Metafile file;
  file.Add(setOrg, {0, 0}).Add(setExt, {100, 200}).Add(setBkMode, {1});
  file.Add(createBrush, {0, 0x00FF, 0, 0})
      .Add(createPen, {0, 0, 0, 0, 0})
      .Add(selectObject, {0})
      .Add(selectObject, {1});
  file.Add(rectangle, {30, 40, 10, 20});  // red with black rim: x 20..39, y 10..29
  file.Add(0x7777, {1, 2, 3});            // nobody knows it
  file.Add(deleteObject, {0}).Add(createBrush, {0, -256, 0, 0}).Add(selectObject, {0});  // green takes the free place
  file.Add(saveState, {}).Add(createPen, {5, 0, 0, 0, 0}).Add(selectObject, {2});
  file.Add(ellipse, {90, 90, 50, 50});
  file.Add(polyPolygon, {2, 4, 4, 100, 50, 140, 50, 140, 90, 100, 90, 110, 60, 130, 60, 130, 80, 110, 80});
  file.Add(restoreState, {-1}).Add(moveTo, {95, 10}).Add(lineTo, {95, 60});
  file.Add(setRop, {6}).Add(moveTo, {20, 25}).Add(lineTo, {20, 35}).Add(setRop, {13});
  QByteArray font(18, '\0');
  Put_Number(font, 0, qint16{-20});
  file.Add(createFont, {}, font + QByteArray("Arial\0", 6)).Add(selectObject, {3}).Add(setTextColor, {0, 0xFF});
  file.Add(textOut, {3, 'M' | 'M' << 8, 'M', 5, 130});
  const QByteArray dib = Bmp(2, 1, 24, 0, {}, QByteArray("\x00\xFF\x00\xFF\x00\x00\x00\x00", 8)).mid(14);
  file.Add(stretchDib, {0x20, 0xCC, 0, 1, 2, 0, 0, 10, 20, 5, 60}, dib);
  return file;
}
