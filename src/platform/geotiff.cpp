#include "platform/geotiff.h"

#include <QFile>
#include <QHash>
#include <QtEndian>
#include <bit>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"

namespace {

// Numbers of tags and keys, as the format gives them.
constexpr int widthTag = 256, heightTag = 257, scaleTag = 33550, tiePointTag = 33922, matrixTag = 34264, keyTag = 34735;
constexpr int rasterKey = 1025, geographicKey = 2048, projectedKey = 3072;
constexpr int pixelIsPoint = 2, userDefined = 32767;
constexpr int shortType = 3, longType = 4, doubleType = 12, long8Type = 16;

class TiffFile {
 public:
  explicit TiffFile(const QString& path) : name(path), file(path) {
    if (!QFile::exists(path)) Raise(errors::fileNotFound);
    if (!Strange_File(path).isEmpty()) Raise_Bad();
    if (!file.open(QIODevice::ReadOnly)) Raise(errors::noPermission);
    const QByteArray head = Bytes(0, 4);
    little = head.startsWith("II");
    if (!little && !head.startsWith("MM")) Raise_Bad();
    const auto kind = Number(2, 2);
    if (kind != 42 && kind != 43) Raise_Bad();
    big = kind == 43;  // the form for more than 4 GB
    if (big && Number(4, 2) != 8) Raise_Bad();
    Read_Directory(big ? Number(8, 8) : Number(4, 4));
  }

  // All values of a tag; none if the file does not have it.
  std::vector<double> Values(int tag) const {
    const auto entry = entries.constFind(tag);
    if (entry == entries.constEnd()) return {};
    const qint64 width = entry->type == doubleType || entry->type == long8Type ? 8 : entry->type == longType ? 4 : 2;
    const QByteArray bytes = Bytes(entry->at, width * entry->count);
    std::vector<double> values;
    for (qint64 i = 0; i < entry->count; ++i) {
      const quint64 raw = Decode(bytes.constData() + i * width, width);
      values.push_back(entry->type == doubleType ? std::bit_cast<double>(raw) : static_cast<double>(raw));
    }
    return values;
  }
  [[noreturn]] void Raise_Bad() const {
    Raise(errors::badPicture, QStringLiteral("Das ist kein TIFF-Bild, oder es ist beschädigt: ") + name);
  }

 private:
  struct Entry {
    int type = 0;
    qint64 count = 0, at = 0;
  };

  QByteArray Bytes(qint64 at, qint64 count) const {
    if (at < 0 || count < 0 || !file.seek(at)) Raise_Bad();
    QByteArray bytes = file.read(count);
    if (bytes.size() != count) Raise_Bad();
    return bytes;
  }
  quint64 Decode(const char* bytes, qint64 width) const {
    switch (width) {
      case 2:
        return little ? qFromLittleEndian<quint16>(bytes) : qFromBigEndian<quint16>(bytes);
      case 4:
        return little ? qFromLittleEndian<quint32>(bytes) : qFromBigEndian<quint32>(bytes);
      default:
        return little ? qFromLittleEndian<quint64>(bytes) : qFromBigEndian<quint64>(bytes);
    }
  }
  qint64 Number(qint64 at, qint64 width) const {
    const quint64 value = Decode(Bytes(at, width).constData(), width);
    if (value > static_cast<quint64>(std::numeric_limits<qint64>::max())) Raise_Bad();
    return static_cast<qint64>(value);
  }
  void Read_Directory(qint64 at) {
    constexpr qint64 mostTags = 4096, mostValues = 100'000;
    const qint64 counter = big ? 8 : 2, size = big ? 20 : 12, field = big ? 8 : 4;
    const qint64 count = Number(at, counter);
    if (count > mostTags) Raise_Bad();
    for (qint64 i = 0; i < count; ++i) {
      const qint64 start = at + counter + i * size;
      Entry entry;
      const int tag = static_cast<int>(Number(start, 2));
      entry.type = static_cast<int>(Number(start + 2, 2));
      if (entry.type != shortType && entry.type != longType && entry.type != doubleType && entry.type != long8Type)
        continue;
      entry.count = Number(start + 4, field);
      const bool wanted = tag == widthTag || tag == heightTag || tag == scaleTag || tag == tiePointTag ||
                          tag == matrixTag || tag == keyTag;
      if (!wanted) continue;
      if (entry.count > mostValues) Raise_Bad();
      const qint64 width = entry.type == doubleType || entry.type == long8Type ? 8 : entry.type == longType ? 4 : 2;
      const qint64 value = start + 4 + field;
      entry.at = width * entry.count <= field ? value : Number(value, field);
      entries.insert(tag, entry);
    }
  }

  QString name;
  mutable QFile file;
  bool little = true, big = false;
  QHash<int, Entry> entries;
};

// The directory of keys holds four numbers a key: key, where its value is, how many, the value itself.
QHash<int, int> Keys_Of(const std::vector<double>& directory) {
  QHash<int, int> keys;
  for (size_t i = 4; i + 3 < directory.size(); i += 4)
    if (directory[i + 1] == 0) keys.insert(static_cast<int>(directory[i]), static_cast<int>(directory[i + 3]));
  return keys;
}

// Of the upper left corner of each pixel, or of its middle, as the file counts.
std::optional<PixelAffine> Raster_Place(const TiffFile& file) {
  const std::vector<double> matrix = file.Values(matrixTag), scale = file.Values(scaleTag),
                            tie = file.Values(tiePointTag);
  if (matrix.size() >= 8) return PixelAffine{matrix[0], matrix[1], matrix[3], matrix[4], matrix[5], matrix[7]};
  if (scale.size() < 2 || tie.size() < 6) return std::nullopt;
  return PixelAffine{scale[0], 0, tie[3] - tie[0] * scale[0], 0, -scale[1], tie[4] + tie[1] * scale[1]};
}

}  // namespace

GeoTiff Read_Geotiff(const QString& path) {
  const TiffFile file(path);
  const std::vector<double> width = file.Values(widthTag), height = file.Values(heightTag);
  if (width.empty() || height.empty() || width[0] < 1 || height[0] < 1 || width[0] > 1e9 || height[0] > 1e9)
    file.Raise_Bad();
  GeoTiff tags;
  tags.size = QSize(static_cast<int>(width[0]), static_cast<int>(height[0]));
  const QHash<int, int> keys = Keys_Of(file.Values(keyTag));
  tags.place = Raster_Place(file);
  // A pixel is an area unless the file says that it is a point: then it counts from corner to corner.
  if (tags.place && keys.value(rasterKey) != pixelIsPoint) {
    const QPointF middle = tags.place->Place_Of({0.5, 0.5});
    tags.place->c = middle.x();
    tags.place->f = middle.y();
  }
  const int code = keys.value(projectedKey, keys.value(geographicKey));
  tags.epsg = code == userDefined ? 0 : code;
  return tags;
}
