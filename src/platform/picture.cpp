#include "platform/picture.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QtEndian>
#include <algorithm>
#include <climits>
#include <exception>
#include <new>
#include <optional>

#include "platform/bmp_strips.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture_check.h"
#include "platform/wmf_reader.h"
#include "platform/work_budget.h"

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 largestMetafile = 64 * megabyte;
constexpr qint64 reserve = 64 * megabyte;  // what the rest of the program must keep

qint64 Free_Memory() {
  QFile info(QStringLiteral("/proc/meminfo"));
  if (info.open(QIODevice::ReadOnly))
    for (const QByteArray& line : info.readAll().split('\n'))
      if (line.startsWith("MemAvailable:")) return line.mid(13).trimmed().split(' ').value(0).toLongLong() * 1024;
  return 2048 * megabyte;
}

qint64 Whole_Megabytes(qint64 bytes) { return bytes / megabyte + (bytes % megabyte > 0); }

[[noreturn]] void Raise_No_Memory(const QString& path, qint64 need, qint64 most) {
  Raise(errors::outOfMemory, QStringLiteral("Nicht genügend Speicher: für das Bild \"%1\" werden %2 MB gebraucht, "
                                            "höchstens %3 MB stehen bereit.")
                                 .arg(QFileInfo(path).fileName())
                                 .arg(Whole_Megabytes(need))
                                 .arg(std::max<qint64>(0, most / megabyte)));
}

[[noreturn]] void Raise_Damaged(const QString& path, const QString& reason) {
  Raise(errors::badPicture, QStringLiteral("Das Bild \"%1\" kann nicht gelesen werden: %2").arg(path, reason));
}

// A system's error with the file it is about.
[[noreturn]] void Raise_Named(int number, const QString& path) {
  Raise(number, Error_Text(number) + QStringLiteral(": ") + path);
}

// A file that yields nothing more when the time is up: the image library then gives up wherever it is.
class TimedFile final : public QFile {
 public:
  TimedFile(const QString& path, int milliseconds) : QFile(path), clock(milliseconds) {}
  bool Late() const { return late; }

 protected:
  qint64 readData(char* data, qint64 most) override {
    late = late || clock.Over();
    return late ? -1 : QFile::readData(data, most);
  }

 private:
  WorkClock clock;
  bool late = false;
};

// The image library allocates no more than the picture at hand needs, whatever stands deeper in the file.
class AllocationLimit {
 public:
  explicit AllocationLimit(qint64 bytes) : former(QImageReader::allocationLimit()) {
    QImageReader::setAllocationLimit(static_cast<int>(std::clamp<qint64>(bytes / megabyte + 2, 1, INT_MAX)));
  }
  ~AllocationLimit() { QImageReader::setAllocationLimit(former); }
  AllocationLimit(const AllocationLimit&) = delete;
  AllocationLimit& operator=(const AllocationLimit&) = delete;

 private:
  int former;
};

bool Ends_With(const QString& path, const char* ending) {
  return path.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

// The picture in one of the two forms that are drawn fast: indexed, or 32 bit without transparency (on white). Null if
// there is no memory for it.
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
      if (image.isNull()) return image;
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

// Kinds made of pixels. Others, such as drawings in XML, know neither a size nor an end.
bool Is_Pixel_Format(const QByteArray& format) {
  static const QList<QByteArray> known{"bmp", "jpg", "jpeg", "gif", "png",  "ico", "cur",
                                       "pbm", "pgm", "ppm",  "tif", "tiff", "webp"};
  return known.contains(format.toLower());
}

void Check_Pixels(const QString& path, QSize size, const PictureLimits& limits) {
  if (static_cast<qint64>(size.width()) * size.height() <= limits.pixels) return;
  Raise_Damaged(path, QStringLiteral("es hat %1 x %2 Bildpunkte; höchstens %3 Millionen sind möglich.")
                          .arg(size.width())
                          .arg(size.height())
                          .arg(limits.pixels / 1'000'000));
}

qint64 Memory_At_Hand(const PictureLimits& limits) { return std::min(limits.memory, Free_Memory() - reserve); }

void Check_Memory(const QString& path, qint64 need, const PictureLimits& limits) {
  if (const qint64 most = Memory_At_Hand(limits); need > most) Raise_No_Memory(path, need, most);
}

int Plain_Depth(QImage::Format format) {
  const bool indexed = format == QImage::Format_Indexed8 || format == QImage::Format_Mono ||
                       format == QImage::Format_MonoLSB || format == QImage::Format_Grayscale8;
  return indexed ? 8 : 32;
}

int Depth_Of(QImage::Format format) { return format == QImage::Format_Invalid ? 32 : QImage(1, 1, format).depth(); }

// What reading takes: the pixels as they are stored, and the plain form beside them where it is another.
qint64 Reading_Memory(QSize size, QImage::Format format, bool turned) {
  const int stored = Depth_Of(format), plain = Plain_Depth(format);
  const int copies = (stored == plain ? 0 : 1) + (turned ? 1 : 0);
  return Picture_Memory(size, stored) + copies * Picture_Memory(size, plain);
}

// The reader counts every picture at 32 bits a pixel at least, indexed ones too.
qint64 Counted_Memory(QSize size, QImage::Format format) {
  return Picture_Memory(size, std::max(32, Depth_Of(format)));
}

QImage Load_With_Reader(const QString& path, TimedFile& file, const PictureLimits& limits) {
  const auto bmp = Read_Bmp_Head(file);
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (!reader.canRead() || !Is_Pixel_Format(reader.format()))
    Raise_Damaged(path, QStringLiteral("es ist kein Bild einer bekannten Art (BMP, JPG, GIF, PNG, WMF)."));
  const QSize size = bmp ? QSize(static_cast<int>(bmp->width), static_cast<int>(bmp->height)) : reader.size();
  const QImage::Format format =
      bmp ? (bmp->bits <= 8 ? QImage::Format_Indexed8 : QImage::Format_RGB32) : reader.imageFormat();
  const bool turned = !bmp && reader.transformation() != QImageIOHandler::TransformationNone;
  if (size.isValid()) {
    Check_Memory(path, Reading_Memory(size, format, turned), limits);
    Check_Pixels(path, size, limits);
  }
  const AllocationLimit allocation(size.isValid() ? Counted_Memory(size, format) : limits.memory);
  QImage image;
  const bool strips = bmp && bmp->width * bmp->height > wholeBmpPixels;
  if (strips && bmp->compression != 0 && bmp->compression != 3)
    Raise_Damaged(path, QStringLiteral("gepackte Bitmaps können höchstens %1 Millionen Bildpunkte haben.")
                            .arg(wholeBmpPixels / 1'000'000));
  if (strips) image = Read_Bmp_Strips(file, *bmp);
  const bool read = strips || reader.read(&image);
  if (file.Late())
    Raise_Damaged(path, QStringLiteral("das Lesen dauert länger als %1 Sekunden.").arg(limits.milliseconds / 1000.0));
  if (!read || image.isNull()) Raise_Damaged(path, QStringLiteral("die Datei ist beschädigt."));
  Check_Pixels(path, image.size(), limits);  // an icon may hold another size than its list tells
  const qint64 need = Reading_Memory(image.size(), image.format(), false);
  image = Plain_Form(std::move(image));
  if (image.isNull()) Raise_No_Memory(path, need, Memory_At_Hand(limits));
  return image;
}

QImage Load_Metafile(const QString& path, QFile& file, const PictureLimits& limits) {
  QImage image;
  try {
    image = Read_Wmf(file.readAll(), limits.milliseconds);
  } catch (const Error& error) {
    if (error.number == errors::badPicture) Raise_Damaged(path, error.text);
    throw;
  }
  Check_Pixels(path, image.size(), limits);
  return image;
}

void Check_File_Size(const QString& path, qint64 bytes, qint64 most) {
  if (bytes <= most) return;
  Raise_Damaged(path, QStringLiteral("die Datei ist mit %1 MB zu groß; höchstens %2 MB sind möglich.")
                          .arg(Whole_Megabytes(bytes))
                          .arg(most / megabyte));
}

void Check_Ordinary(const QString& path) {
  if (const QString flaw = Strange_File(path); !flaw.isEmpty()) Raise_Damaged(path, flaw);
}

QImage Load_Checked(const QString& path, const PictureLimits& limits) {
  if (const QString flaw = Path_Flaw(path); !flaw.isEmpty()) Raise(errors::pathNotFound, flaw);
  if (!QFileInfo::exists(path)) Raise_Named(errors::fileNotFound, path);
  Check_Ordinary(path);
  TimedFile file(path, limits.milliseconds);
  if (!file.open(QIODevice::ReadOnly)) Raise_Named(errors::noPermission, path);
  if (file.size() == 0) Raise_Damaged(path, QStringLiteral("die Datei ist leer."));
  const QByteArray head = file.peek(64);
  if (Is_Wmf(head) || Ends_With(path, ".wmf")) {
    Check_File_Size(path, file.size(), largestMetafile);
    return Load_Metafile(path, file, limits);
  }
  const auto bmp = Read_Bmp_Head(file);
  if (!bmp || bmp->compression == 1 || bmp->compression == 2) Check_File_Size(path, file.size(), limits.fileBytes);
  const QString flaw = Picture_Flaw(file);
  if (file.Late())
    Raise_Damaged(path, QStringLiteral("das Lesen dauert länger als %1 Sekunden.").arg(limits.milliseconds / 1000.0));
  if (!flaw.isEmpty()) Raise_Damaged(path, flaw);
  return Load_With_Reader(path, file, limits);
}

QSize Size_Of_File(const QString& path) {
  if (!QFileInfo(path).isFile()) return {};
  TimedFile file(path, entryPicture.milliseconds);
  if (!file.open(QIODevice::ReadOnly)) return {};
  if (const QByteArray head = file.peek(64); Is_Wmf(head))
    return file.size() > largestMetafile ? QSize() : Wmf_Size(file.readAll());
  if (const auto bmp = Read_Bmp_Head(file)) return {static_cast<int>(bmp->width), static_cast<int>(bmp->height)};
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  if (!reader.canRead() || !Is_Pixel_Format(reader.format())) return {};
  const QSize size = reader.size();
  if (!size.isValid()) return {};
  return reader.transformation() & QImageIOHandler::TransformationRotate90 ? size.transposed() : size;
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

QImage Load_Picture(const QString& path, const PictureLimits& limits) {
  try {
    return Load_Checked(path, limits);
  } catch (const Error&) {
    throw;
  } catch (const std::bad_alloc&) {
    Raise_Named(errors::outOfMemory, path);
  } catch (const std::exception&) {
    Raise_Damaged(path, QStringLiteral("sein Inhalt ergibt kein Bild."));
  }
}

QSize Picture_Size(const QString& path) {
  try {
    return Size_Of_File(path);
  } catch (const Error&) {
    return {};
  } catch (const std::exception&) {
    return {};
  }
}

void Check_Map_File(const QString& path) {
  // Its table has a name of the same length.
  if (const QString flaw = Path_Flaw(path, longestTablePath, longestTableName); !flaw.isEmpty())
    Raise(errors::pathNotFound, flaw);
  if (QFileInfo::exists(path)) Check_Ordinary(path);
}

static const QStringList& Picture_Endings() {
  static const QStringList endings = {QStringLiteral("bmp"), QStringLiteral("rle"),  QStringLiteral("gif"),
                                      QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png"),
                                      QStringLiteral("wmf")};
  return endings;
}

QString Picture_Patterns() { return QLatin1String("*.") + Picture_Endings().join(QLatin1String(";*.")); }

bool Is_Picture_Name(const QString& path) {
  return Picture_Endings().contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
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
  if (!writer.write(view)) Raise(errors::badPicture, QStringLiteral("Das Bild kann nicht geschrieben werden: ") + path);
  buffer.close();
  Replace_File(path, bytes);
}
