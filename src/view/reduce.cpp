#include "view/reduce.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <thread>
#include <utility>

#include "platform/error.h"

namespace {

constexpr size_t channels = 4;  // of a colour in memory: blue, green, red, nothing
constexpr int tileWidth = 1024, tileHeight = 64;
constexpr qint64 worthAThread = 1 << 20;  // source pixels

// A part of the source as 32-bit colours, line by line, whatever the format.
class SourceLines {
 public:
  SourceLines(const QImage& picture, const QRect& wanted) : image(picture), part(wanted) {
    if (image.format() == QImage::Format_Indexed8) {
      colors.resize(256, qRgb(0, 0, 0));
      const auto table = image.colorTable();
      std::copy_n(table.begin(), std::min<qsizetype>(256, table.size()), colors.begin());
      line.resize(static_cast<size_t>(part.width()));
    } else if (image.depth() != 32) {
      copy = image.copy(part).convertToFormat(QImage::Format_RGB32);
    }
  }
  // Of the part, by its number in the whole source.
  const QRgb* Line(int y) {
    if (!copy.isNull()) return reinterpret_cast<const QRgb*>(copy.constScanLine(y - part.top()));
    if (colors.empty()) return reinterpret_cast<const QRgb*>(image.constScanLine(y)) + part.left();
    const uchar* from = image.constScanLine(y) + part.left();
    for (size_t x = 0; x < line.size(); ++x) line[x] = colors[from[x]];
    return line.data();
  }

 private:
  const QImage& image;
  const QRect part;
  QImage copy;
  std::vector<QRgb> colors, line;
};

void Add_Line(std::vector<uint16_t>& sums, const QRgb* line, uint32_t weight) {
  const auto* bytes = reinterpret_cast<const uchar*>(line);
  uint16_t* sum = sums.data();
  const size_t count = sums.size();
  for (size_t i = 0; i < count; ++i) sum[i] = static_cast<uint16_t>(sum[i] + weight * bytes[i]);
}

// Two pixels of each line at a time, two channels of both in one number.
void Halve_Lines(const QRgb* upper, const QRgb* lower, QRgb* out, int count) {
  constexpr uint64_t mask = 0x00ff00ff00ff00ff;
  for (int x = 0; x < count; ++x) {
    uint64_t a, b;
    std::memcpy(&a, upper + 2 * x, sizeof a);
    std::memcpy(&b, lower + 2 * x, sizeof b);
    const uint64_t redBlue = (a & mask) + (b & mask), green = (a >> 8 & mask) + (b >> 8 & mask);
    const auto rb = static_cast<uint32_t>(redBlue) + static_cast<uint32_t>(redBlue >> 32);
    const auto g = static_cast<uint32_t>(green) + static_cast<uint32_t>(green >> 32);
    out[x] = 0xff000000U | (((rb + 0x20002) >> 2) & 0xff00ff) | ((((g + 2) >> 2) & 0xff) << 8);
  }
}

}  // namespace

void ReducedPicture::Axis::Cover(int sourceSize, int targetSize, double factor) {
  spans.resize(static_cast<size_t>(targetSize));
  for (int i = 0; i < targetSize; ++i) {
    const double from = i * factor;
    const double to = std::min<double>(sourceSize, from + factor);
    Span& span = spans[static_cast<size_t>(i)];
    span.first = std::min(sourceSize - 1, static_cast<int>(from));
    span.weights = weights.size();
    const int last = std::clamp(static_cast<int>(std::ceil(to)) - 1, span.first, sourceSize - 1);
    span.count = last - span.first + 1;
    int sum = 0;
    for (int k = span.first; k <= last; ++k) {
      const double part = std::max(0.0, std::min<double>(to, k + 1) - std::max<double>(from, k));
      const auto weight = static_cast<int>(std::lround(part / (to - from) * 256));
      weights.push_back(static_cast<uint16_t>(weight));
      sum += weight;
    }
    // The rounding, so that white stays white.
    weights[span.weights] = static_cast<uint16_t>(weights[span.weights] + 256 - sum);
  }
}

ReducedPicture::ReducedPicture(const QImage& picture, double factor) : source(picture) { Take_Source(factor); }

ReducedPicture::ReducedPicture(std::shared_ptr<ReducedPicture> picture, double factor)
    : base(std::move(picture)), source(base->target) {
  Take_Source(factor);
}

void ReducedPicture::Take_Source(double factor) {
  target = QImage(std::max(1, static_cast<int>(source.width() / factor)),
                  std::max(1, static_cast<int>(source.height() / factor)), QImage::Format_RGB32);
  if (target.isNull()) Raise(errors::outOfMemory);
  bits = target.bits();
  // Halving is what every deep zoom begins with.
  halved = factor == 2.0 && source.width() > 1 && source.height() > 1;
  if (!halved) {
    across.Cover(source.width(), target.width(), factor);
    down.Cover(source.height(), target.height(), factor);
  }
  tilesAcross = (target.width() + tileWidth - 1) / tileWidth;
  ready.assign(static_cast<size_t>(tilesAcross) * static_cast<size_t>((target.height() + tileHeight - 1) / tileHeight),
               0);
}

QRgb* ReducedPicture::Target_Line(int y) const { return reinterpret_cast<QRgb*>(bits + y * target.bytesPerLine()); }

QRect ReducedPicture::Source_Of(const QRect& part) const {
  if (halved) return {part.topLeft() * 2, part.size() * 2};
  const QPoint first(across.First(part.left()), down.First(part.top()));
  return {first, QPoint(across.Behind(part.right()) - 1, down.Behind(part.bottom()) - 1)};
}

std::vector<QRect> ReducedPicture::Missing_Tiles(const QRect& part) const {
  std::vector<QRect> tiles;
  const QRect wanted = part & target.rect();
  if (wanted.isEmpty()) return tiles;
  for (int y = wanted.top() / tileHeight; y <= wanted.bottom() / tileHeight; ++y)
    for (int x = wanted.left() / tileWidth; x <= wanted.right() / tileWidth; ++x)
      if (!ready[static_cast<size_t>(y * tilesAcross + x)])
        tiles.push_back(QRect(x * tileWidth, y * tileHeight, tileWidth, tileHeight) & target.rect());
  return tiles;
}

qint64 ReducedPicture::Work_For(const QRect& part) const {
  qint64 pixels = 0;
  for (const QRect& tile : Missing_Tiles(part)) {
    const QRect from = Source_Of(tile);
    pixels += base ? base->Work_For(from) : qint64{from.width()} * from.height();
  }
  return pixels;
}

void ReducedPicture::Prepare(const QRect& part) {
  const std::vector<QRect> tiles = Missing_Tiles(part);
  qint64 pixels = 0;
  for (const QRect& tile : tiles) {
    const QRect from = Source_Of(tile);
    pixels += qint64{from.width()} * from.height();
    if (base) base->Prepare(from);
  }
  const auto make = [&](size_t first, size_t step) {
    for (size_t i = first; i < tiles.size(); i += step) Make(tiles[i]);
  };
  const size_t hands = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, 4);
  std::vector<std::thread> others;
  if (pixels > worthAThread)
    for (size_t hand = 1; hand < hands; ++hand) others.emplace_back(make, hand, hands);
  make(0, others.empty() ? 1 : hands);
  for (std::thread& other : others) other.join();
  for (const QRect& tile : tiles)
    ready[static_cast<size_t>(tile.top() / tileHeight * tilesAcross + tile.left() / tileWidth)] = 1;
}

bool ReducedPicture::Prepare_Some(const QDeadlineTimer& end) {
  const std::vector<QRect> missing = Missing_Tiles(target.rect());
  size_t made = 0;
  while (made < missing.size() && (made == 0 || !end.hasExpired())) Prepare(missing[made++]);
  return made < missing.size();
}

void ReducedPicture::Make(const QRect& tile) const { halved ? Halve(tile) : Average(tile); }

void ReducedPicture::Halve(const QRect& tile) const {
  SourceLines upper(source, Source_Of(tile)), lower(source, Source_Of(tile));
  for (int y = tile.top(); y <= tile.bottom(); ++y)
    Halve_Lines(upper.Line(2 * y), lower.Line(2 * y + 1), Target_Line(y) + tile.left(), tile.width());
}

// Down first, all channels of a line at once; the weights add up to 256, so that 16 bits hold the sums.
void ReducedPicture::Average(const QRect& tile) const {
  const QRect from = Source_Of(tile);
  SourceLines lines(source, from);
  std::vector<uint16_t> sums(static_cast<size_t>(from.width()) * channels);
  for (int y = tile.top(); y <= tile.bottom(); ++y) {
    std::fill(sums.begin(), sums.end(), uint16_t{0});
    const Span& rows = down.spans[static_cast<size_t>(y)];
    for (int k = 0; k < rows.count; ++k)
      if (const uint16_t weight = down.weights[rows.weights + static_cast<size_t>(k)]; weight != 0)
        Add_Line(sums, lines.Line(rows.first + k), weight);
    QRgb* out = Target_Line(y) + tile.left();
    for (int x = tile.left(); x <= tile.right(); ++x) {
      const Span& span = across.spans[static_cast<size_t>(x)];
      uint32_t red = 0, green = 0, blue = 0;
      const uint16_t* pixel = sums.data() + static_cast<size_t>(span.first - from.left()) * channels;
      const uint16_t* weight = across.weights.data() + span.weights;
      for (int k = 0; k < span.count; ++k, ++weight, pixel += channels) {
        blue += uint32_t{*weight} * pixel[0];
        green += uint32_t{*weight} * pixel[1];
        red += uint32_t{*weight} * pixel[2];
      }
      *out++ = 0xff000000U | ((red + 0x8000) & 0xff0000) | (((green + 0x8000) >> 8) & 0xff00) | ((blue + 0x8000) >> 16);
    }
  }
}

QImage Reduced_Picture(const QImage& source, double factor) {
  if (source.isNull()) return {};
  ReducedPicture picture(source, factor);
  picture.Prepare(picture.Image().rect());
  return picture.Image();
}
