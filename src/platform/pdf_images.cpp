#include "platform/pdf_images.h"

#include <QFile>
#include <QHash>
#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "platform/error.h"

namespace {

// A stand-in is three pixels wide: six bytes by which it is known, three for its number.
constexpr std::array<uchar, 6> mark{0x5a, 0xc3, 0x17, 0xe8, 0x31, 0x9d};
constexpr int standInWidth = 3, smallestPicture = 4096;

QHash<const QPaintDevice*, PdfImages*>& Documents() {
  static QHash<const QPaintDevice*, PdfImages*> documents;
  return documents;
}

// Number behind a word of an object's dictionary.
qint64 Number_Behind(QByteArrayView object, QByteArrayView word) {
  const qsizetype at = object.indexOf(word);
  if (at < 0) return -1;
  QByteArrayView rest = object.sliced(at + word.size());
  rest = rest.first(std::min<qsizetype>(rest.size(), 24)).trimmed();
  qsizetype digits = 0;
  while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') ++digits;
  return digits == 0 ? -1 : rest.first(digits).toLongLong();
}

// The number of the stand-in the object is; nothing for all others.
std::optional<size_t> Stand_In_Number(QByteArrayView object) {
  const QByteArrayView head = object.first(std::min<qsizetype>(object.size(), 400));
  if (head.indexOf("/Subtype /Image") < 0 || Number_Behind(head, "/Width") != standInWidth ||
      Number_Behind(head, "/Height") != 1)
    return std::nullopt;
  const qsizetype start = object.indexOf("stream\n"), end = object.indexOf("endstream");
  if (start < 0 || end < start) return std::nullopt;
  QByteArray packed("\0\0\0\x09", 4);
  packed += object.sliced(start + 7, end - start - 7);
  const QByteArray bytes = head.indexOf("/FlateDecode") >= 0 ? qUncompress(packed) : packed.mid(4, 9);
  if (bytes.size() < 9 || std::memcmp(bytes.constData(), mark.data(), mark.size()) != 0) return std::nullopt;
  const auto byte = [&bytes](int i) { return static_cast<size_t>(static_cast<uchar>(bytes[i])); };
  return byte(6) << 16 | byte(7) << 8 | byte(8);
}

struct Table {
  qsizetype at = 0;                // of the word xref
  std::vector<qsizetype> offsets;  // by object number; 0: unused
  QByteArray trailer;              // from its word to before startxref
};

Table Read_Table(const QByteArray& file) {
  Table table;
  const qsizetype start = file.lastIndexOf("startxref");
  table.at = start < 0 ? -1 : Number_Behind(QByteArrayView(file).sliced(start), "startxref");
  if (table.at <= 0 || table.at >= file.size() || !QByteArrayView(file).sliced(table.at).startsWith("xref\n0 "))
    Raise(errors::printer);
  const qint64 count = Number_Behind(QByteArrayView(file).sliced(table.at), "xref\n0 ");
  if (count <= 0 || count > file.size() / 20) Raise(errors::printer);
  const qsizetype lines = file.indexOf('\n', table.at + 5) + 1, trailer = lines + 20 * count;
  if (!QByteArrayView(file).sliced(std::min(trailer, file.size())).startsWith("trailer")) Raise(errors::printer);
  for (qint64 i = 0; i < count; ++i) {
    const QByteArrayView line = QByteArrayView(file).sliced(lines + 20 * i, 20);
    table.offsets.push_back(line[17] == 'n' ? line.first(10).toLongLong() : 0);
  }
  table.trailer = file.mid(trailer, start - trailer);
  return table;
}

QByteArray Table_Text(const Table& table, const std::vector<qsizetype>& offsets, qsizetype at) {
  QByteArray text = "xref\n0 " + QByteArray::number(static_cast<qint64>(offsets.size())) + "\n";
  for (const qsizetype offset : offsets)
    text += QByteArray::number(static_cast<qint64>(offset)).rightJustified(10, '0') +
            (offset == 0 ? " 65535 f \n" : " 00000 n \n");
  return text + table.trailer + "startxref\n" + QByteArray::number(static_cast<qint64>(at)) + "\n%%EOF\n";
}

}  // namespace

PdfImages* Pdf_Images_Of(const QPaintDevice* device) { return Documents().value(device); }

PdfImages::PdfImages(const QPaintDevice& device) : owner(&device) { Documents().insert(owner, this); }
PdfImages::~PdfImages() { Documents().remove(owner); }

QImage PdfImages::Stand_In(const QImage& picture, const QRect& part) {
  if (picture.format() != QImage::Format_Indexed8 || picture.hasAlphaChannel() || images.size() >= 0xffffff ||
      qsizetype{part.width()} * part.height() < smallestPicture)
    return {};
  Stored stored{part.size(), {}, {}};
  const auto colors = picture.colorTable();
  for (const QRgb color : colors)
    for (const int value : {qRed(color), qGreen(color), qBlue(color)}) stored.palette += static_cast<char>(value);
  QByteArray pixels(qsizetype{part.width()} * part.height(), Qt::Uninitialized);
  const auto largest = static_cast<uchar>(std::max<qsizetype>(1, colors.size()) - 1);
  for (int y = 0; y < part.height(); ++y) {
    const uchar* from = picture.constScanLine(part.y() + y) + part.x();
    auto* to = reinterpret_cast<uchar*>(pixels.data()) + qsizetype{part.width()} * y;
    std::transform(from, from + part.width(), to, [largest](uchar index) { return std::min(index, largest); });
  }
  stored.pixels = qCompress(pixels).mid(4);
  const auto number = static_cast<int>(images.size());
  images.push_back(std::move(stored));
  QImage standIn(standInWidth, 1, QImage::Format_RGB32);
  standIn.setPixel(0, 0, qRgb(mark[0], mark[1], mark[2]));
  standIn.setPixel(1, 0, qRgb(mark[3], mark[4], mark[5]));
  standIn.setPixel(2, 0, qRgb(number >> 16, number >> 8 & 255, number & 255));
  return standIn;
}

QByteArray PdfImages::Object_Of(const Stored& stored, const QByteArray& number) const {
  const auto count = stored.palette.size() / 3;
  return number + " 0 obj\n<<\n/Type /XObject\n/Subtype /Image\n/Width " + QByteArray::number(stored.size.width()) +
         "\n/Height " + QByteArray::number(stored.size.height()) +
         "\n/BitsPerComponent 8\n/ColorSpace [/Indexed /DeviceRGB " +
         QByteArray::number(static_cast<qint64>(count - 1)) + " <" + stored.palette.toHex() + ">]\n/Length " +
         QByteArray::number(static_cast<qint64>(stored.pixels.size())) + "\n/Filter /FlateDecode\n>>\nstream\n" +
         stored.pixels + "\nendstream\nendobj\n";
}

void PdfImages::Put_Into(const QString& path) const {
  if (images.empty()) return;
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite)) Raise(errors::noPermission);
  const QByteArray before = file.readAll();
  const Table table = Read_Table(before);
  std::vector<size_t> order;
  for (size_t i = 0; i < table.offsets.size(); ++i)
    if (table.offsets[i] > 0) order.push_back(i);
  std::sort(order.begin(), order.end(), [&](size_t a, size_t b) { return table.offsets[a] < table.offsets[b]; });
  std::vector<qsizetype> offsets(table.offsets.size(), 0);
  QByteArray after = before.first(order.empty() ? table.at : table.offsets[order.front()]);
  size_t replaced = 0;
  for (size_t i = 0; i < order.size(); ++i) {
    const qsizetype from = table.offsets[order[i]], to = i + 1 < order.size() ? table.offsets[order[i + 1]] : table.at;
    if (to < from || to > before.size()) Raise(errors::printer);
    const QByteArrayView object = QByteArrayView(before).sliced(from, to - from);
    offsets[order[i]] = after.size();
    const auto standIn = Stand_In_Number(object);
    if (standIn && *standIn < images.size()) {
      after += Object_Of(images[*standIn], QByteArray::number(static_cast<qulonglong>(order[i])));
      ++replaced;
    } else {
      after += object;
    }
  }
  if (replaced < images.size()) Raise(errors::printer);
  after += Table_Text(table, offsets, after.size());
  if (!file.seek(0) || file.write(after) != after.size() || !file.resize(after.size()) || !file.flush())
    Raise(errors::diskFull);
}
