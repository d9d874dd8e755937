#include "platform/picture.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QtEndian>
#include <algorithm>
#include <climits>
#include <optional>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture_check.h"
#include "platform/wmf_reader.h"

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 reserve = 64 * megabyte;  // what the rest of the program must keep

qint64 Free_Memory() {
  QFile info(QStringLiteral("/proc/meminfo"));
  if (info.open(QIODevice::ReadOnly))
    for (const QByteArray& line : info.readAll().split('\n'))
      if (line.startsWith("MemAvailable:")) return line.mid(13).trimmed().split(' ').value(0).toLongLong() * 1024;
  return 2048 * megabyte;
}

[[noreturn]] void Raise_Too_Large(const QString& path, qint64 need) {
  Raise(errors::outOfMemory, QStringLiteral("Nicht genügend Speicher: für das Bild \"%1\" werden %2 MB gebraucht.")
                                 .arg(QFileInfo(path).fileName())
                                 .arg(need / megabyte + (need % megabyte > 0)));
}

[[noreturn]] void Raise_Damaged(const QString& path, const QString& reason) {
  Raise(errors::badPicture, QStringLiteral("Das Bild \"%1\" kann nicht gelesen werden: %2").arg(path, reason));
}

bool Ends_With(const QString& path, const char* ending) {
  return path.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

// The picture in one of the two forms that are drawn fast: indexed, or 32 bit without transparency (on white).
QImage Plain_Form(QImage image) {
  switch (image.format()) {
    case QImage::Format_RGB32:
      return image;
    case QImage::Format_Grayscale8: {
      QList<QRgb> grays(256);
      for (int i = 0; i < 256; ++i) grays[i] = qRgb(i, i, i);
      image.reinterpretAsFormat(QImage::Format_Indexed8);
      image.setColorTable(grays);
      return image;
    }
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
      image.convertTo(QImage::Format_Indexed8);
      [[fallthrough]];
    case QImage::Format_Indexed8: {
      QList<QRgb> colors = image.colorTable();
      for (QRgb& color : colors) {
        const int a = qAlpha(color);
        const auto onWhite = [a](int c) { return (c * a + 255 * (255 - a) + 127) / 255; };
        color = qRgb(onWhite(qRed(color)), onWhite(qGreen(color)), onWhite(qBlue(color)));
      }
      image.setColorTable(colors);
      return image;
    }
    default:
      break;
  }
  if (!image.hasAlphaChannel()) {
    image.convertTo(QImage::Format_RGB32);
    return image;
  }
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const uint white = 255u - static_cast<uint>(qAlpha(row[x]));
      row[x] = (row[x] | 0xff000000) + white * 0x010101;
    }
  }
  image.reinterpretAsFormat(QImage::Format_RGB32);
  return image;
}

// Lets the reader go as far as the memory does. It counts every picture at 32 bits a pixel, indexed ones too.
void Allow_Memory(const QString& path, QSize size, int bitsPerPixel) {
  const qint64 need = Picture_Memory(size, bitsPerPixel);
  if (need > Free_Memory() - reserve) Raise_Too_Large(path, need);
  const qint64 counted = Picture_Memory(size, 32) / megabyte + 2;
  if (counted > QImageReader::allocationLimit())
    QImageReader::setAllocationLimit(static_cast<int>(std::min<qint64>(counted, INT_MAX)));
}

QImage Load_With_Reader(const QString& path, const std::optional<BmpHead>& bmp) {
  if (bmp)
    Allow_Memory(path, QSize(static_cast<int>(bmp->width), static_cast<int>(bmp->height)), bmp->bits <= 8 ? 8 : 32);
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (!reader.canRead())
    Raise_Damaged(path, QStringLiteral("es ist kein Bild einer bekannten Art (BMP, JPG, GIF, PNG, WMF)."));
  if (const QSize size = reader.size(); !bmp && size.isValid()) {
    const QImage::Format format = reader.imageFormat();
    const bool indexed = format == QImage::Format_Indexed8 || format == QImage::Format_Mono ||
                         format == QImage::Format_MonoLSB || format == QImage::Format_Grayscale8;
    Allow_Memory(path, size, indexed ? 8 : 32);
  }
  QImage image;
  if (!reader.read(&image) || image.isNull()) Raise_Damaged(path, QStringLiteral("die Datei ist beschädigt."));
  return Plain_Form(std::move(image));
}

// 24-bit or indexed rows, lowest first, straight from the pixels: a large map needs no second copy of its picture.
QByteArray Bmp_Bytes(const QImage& picture, int pointsPerMetre) {
  const bool indexed = picture.format() == QImage::Format_Indexed8;
  const qint64 stride = (static_cast<qint64>(picture.width()) * (indexed ? 8 : 24) + 31) / 32 * 4;
  const int tableBytes = indexed ? 256 * 4 : 0;
  const qint64 total = 54 + tableBytes + stride * picture.height();
  if (total > 0xffffffffLL) Raise(errors::overflow);
  QByteArray bytes(total, '\0');
  auto* out = reinterpret_cast<uchar*>(bytes.data());
  const auto put32 = [out](int at, qint64 value) { qToLittleEndian(static_cast<quint32>(value), out + at); };
  out[0] = 'B';
  out[1] = 'M';
  put32(2, total);
  put32(10, 54 + tableBytes);
  put32(14, 40);
  put32(18, picture.width());
  put32(22, picture.height());
  out[26] = 1;
  out[28] = indexed ? 8 : 24;
  put32(34, stride * picture.height());
  put32(38, pointsPerMetre);
  put32(42, pointsPerMetre);
  if (indexed) {
    const QList<QRgb> colors = picture.colorTable();
    for (int i = 0; i < std::min<int>(256, static_cast<int>(colors.size())); ++i)
      put32(54 + i * 4, colors[i] & 0xffffff);
  }
  for (int y = 0; y < picture.height(); ++y) {
    uchar* row = out + 54 + tableBytes + stride * (picture.height() - 1 - y);
    const uchar* line = picture.constScanLine(y);
    if (indexed) {
      std::copy_n(line, picture.width(), row);
      continue;
    }
    const auto* colors = reinterpret_cast<const QRgb*>(line);
    for (int x = 0; x < picture.width(); ++x) {
      row[x * 3] = static_cast<uchar>(qBlue(colors[x]));
      row[x * 3 + 1] = static_cast<uchar>(qGreen(colors[x]));
      row[x * 3 + 2] = static_cast<uchar>(qRed(colors[x]));
    }
  }
  return bytes;
}

}  // namespace

QImage Load_Picture(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) Raise(errors::fileNotFound);
  if (!info.isFile()) Raise_Damaged(path, QStringLiteral("es ist keine Datei."));
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) Raise(errors::noPermission);
  const QByteArray head = file.peek(64);
  if (head.isEmpty()) Raise_Damaged(path, QStringLiteral("die Datei ist leer."));
  if (Is_Wmf(head) || Ends_With(path, ".wmf")) return Read_Wmf(file.readAll());
  if (const QString flaw = Picture_Flaw(file); !flaw.isEmpty()) Raise_Damaged(path, flaw);
  const auto bmp = Read_Bmp_Head(file);
  file.close();
  return Load_With_Reader(path, bmp);
}

QSize Picture_Size(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  if (const QByteArray head = file.peek(64); Is_Wmf(head)) return Wmf_Size(file.readAll());
  if (const auto bmp = Read_Bmp_Head(file)) return {static_cast<int>(bmp->width), static_cast<int>(bmp->height)};
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  const QSize size = reader.size();
  if (!size.isValid()) return {};
  return reader.transformation() & QImageIOHandler::TransformationRotate90 ? size.transposed() : size;
}

qint64 Picture_Memory(QSize size, int bitsPerPixel) {
  if (size.isEmpty()) return 0;
  const qint64 row = (static_cast<qint64>(size.width()) * bitsPerPixel + 31) / 32 * 4;
  return row > LLONG_MAX / size.height() ? LLONG_MAX : row * size.height();
}

void Save_Picture(const QImage& picture, const QString& path, int pointsPerMetre) {
  if (picture.isNull()) Raise(errors::badPicture);
  const bool plain = picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_Indexed8;
  const QImage whole = plain ? picture : Plain_Form(picture);
  const bool png = Ends_With(path, ".png"), jpg = Ends_With(path, ".jpg") || Ends_With(path, ".jpeg");
  if (!png && !jpg) {
    Replace_File(path, Bmp_Bytes(whole, pointsPerMetre));
    return;
  }
  // A view of the same pixels that may carry its own resolution without copying them.
  QImage view(const_cast<uchar*>(whole.constBits()), whole.width(), whole.height(), whole.bytesPerLine(),
              whole.format());
  view.setColorTable(whole.colorTable());
  view.setDotsPerMeterX(pointsPerMetre);
  view.setDotsPerMeterY(pointsPerMetre);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, png ? "png" : "jpg");
  if (jpg) writer.setQuality(92);
  if (!writer.write(view)) Raise(errors::badPicture, writer.errorString());
  buffer.close();
  Replace_File(path, bytes);
}
