#include <QBuffer>
#include <QImageReader>

#include "fuzz/driver.h"
#include "platform/picture.h"
#include "platform/picture_bytes.h"
#include "platform/surface.h"

// Map pictures and pictures of entries, of every kind that is read.

namespace {

constexpr PictureLimits limits{2'000'000, qint64{32} << 20, 1 << 20, 2'000};

QByteArray Saved(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

QByteArray Gif() {
  QByteArray bytes("GIF89a\x03\x00\x02\x00\x81\x00\x00", 13);
  for (int i = 0; i < 12; ++i) bytes += static_cast<char>(i * 20);
  bytes += QByteArray("\x21\xF9\x04\x05\x0A\0\0\0", 8);
  bytes += QByteArray("\x2C\0\0\0\0\x03\0\x02\0\0\x02\x04", 12);
  for (const int code : {0x8C, 0x38, 0x10, 0x29}) bytes += static_cast<char>(code);
  return bytes + QByteArray("\0;", 2);
}

QByteArrayList Seeds() {
  QImage colored(40, 30, QImage::Format_RGB32);
  for (int y = 0; y < 30; ++y)
    for (int x = 0; x < 40; ++x) colored.setPixel(x, y, qRgb(x * 6, y * 8, (x * y) % 256));
  colored.setDotsPerMeterX(3780);
  QByteArrayList seeds{Gif(), Sample().Bytes(200, 100), Sample().Bytes(200, 100, false)};
  for (const QImage::Format format :
       {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Indexed8, QImage::Format_Mono,
        QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_RGBA64})
    for (const char* kind : {"PNG", "JPG", "BMP", "ICO", "PPM"}) seeds += Saved(colored.convertToFormat(format), kind);
  const QByteArray packed("\3\1\0\0\0\3\1\2\3\0\0\1", 12);
  const std::vector<QRgb> colors{0, 0xff0000, 0x00ff00, 0x0000ff};
  for (const int height : {2, -2})
    for (const auto& [bits, compression] : {std::pair(8, 1), std::pair(4, 2), std::pair(1, 0), std::pair(4, 0)})
      seeds += Bmp(3, height, bits, compression, colors, packed);
  seeds += Bmp(3, 2, 16, 0, {}, packed + packed);
  return seeds;
}

quint32 Checksum(const QByteArray& bytes, qsizetype from, qsizetype count) {
  quint32 sum = 0xffffffff;
  for (qsizetype i = from; i < from + count; ++i) {
    sum ^= static_cast<uchar>(bytes[i]);
    for (int bit = 0; bit < 8; ++bit) sum = sum & 1 ? 0xedb88320 ^ (sum >> 1) : sum >> 1;
  }
  return ~sum;
}

// The chunks of a PNG with their checksums put right.
void Shape(QByteArray& bytes, Mutator&) {
  if (!bytes.startsWith("\x89PNG")) return;
  for (qsizetype at = 8; at + 12 <= bytes.size();) {
    const auto length = static_cast<qsizetype>(qFromBigEndian<quint32>(bytes.constData() + at));
    if (length > bytes.size() - at - 12) return;
    qToBigEndian(Checksum(bytes, at + 4, length + 4), bytes.data() + at + 8 + length);
    at += 12 + length;
  }
}

bool Run(const QByteArray& input) {
  const QString path = Put_File(QStringLiteral("Bild.dat"), input);
  Picture_Size(path);
  QImage picture;
  try {
    picture = Load_Picture(path, limits);
  } catch (const Error& error) {
    const bool named = error.text.contains(QLatin1String("Bild.dat")) || error.number == errors::fileNotFound;
    if (!named) throw std::runtime_error("the refusal does not name the file");
    return false;
  }
  if (picture.isNull() || static_cast<qint64>(picture.width()) * picture.height() > limits.pixels)
    throw std::runtime_error("a picture beyond the limits");
  QImage canvas = Make_Canvas(50, 40);
  const auto surface = Make_Surface(canvas);
  surface->PaintPicture(QRectF(-3, -2, 70, 30), picture);
  surface->PaintPicture(QRectF(5, 5, picture.width(), picture.height()), picture);
  return true;
}

}  // namespace

FuzzTarget Make_Target() {
  return {"pictures",
          Seeds(),
          {"IHDR", "IDAT", "PLTE", "tRNS", "\xFF\xDA", "\xFF\xC2", "\xFF\xD9", "BM", "RIFF"},
          Run,
          Shape};
}
