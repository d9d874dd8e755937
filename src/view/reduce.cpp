#include "view/reduce.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "platform/error.h"

namespace {

constexpr size_t channels = 4;  // of a colour in memory: blue, green, red, nothing

// The source pixels one target pixel covers along one axis: the first, how many, and their weights (sum 256).
struct Span {
  int first = 0;
  std::vector<uint32_t> weights;
};

std::vector<Span> Spans(int sourceSize, int targetSize, double factor) {
  std::vector<Span> spans(static_cast<size_t>(targetSize));
  for (int i = 0; i < targetSize; ++i) {
    const double from = i * factor;
    const double to = std::min<double>(sourceSize, from + factor);
    Span& span = spans[static_cast<size_t>(i)];
    span.first = std::min(sourceSize - 1, static_cast<int>(from));
    const int last = std::clamp(static_cast<int>(std::ceil(to)) - 1, span.first, sourceSize - 1);
    uint32_t sum = 0;
    for (int k = span.first; k <= last; ++k) {
      const double part = std::max(0.0, std::min<double>(to, k + 1) - std::max<double>(from, k));
      span.weights.push_back(static_cast<uint32_t>(std::lround(part / (to - from) * 256)));
      sum += span.weights.back();
    }
    span.weights.front() += 256 - sum;  // the rounding, so that white stays white
  }
  return spans;
}

// Lines of the source as 32-bit colours, whatever the format.
class SourceLines {
 public:
  explicit SourceLines(const QImage& picture) : image(picture) {
    if (image.format() == QImage::Format_Indexed8) {
      colors.resize(256, qRgb(0, 0, 0));
      const auto table = image.colorTable();
      std::copy_n(table.begin(), std::min<qsizetype>(256, table.size()), colors.begin());
      line.resize(static_cast<size_t>(image.width()));
    }
  }
  const QRgb* Line(int y) {
    if (colors.empty()) return reinterpret_cast<const QRgb*>(image.constScanLine(y));
    const uchar* from = image.constScanLine(y);
    for (size_t x = 0; x < line.size(); ++x) line[x] = colors[from[x]];
    return line.data();
  }

 private:
  const QImage& image;
  std::vector<QRgb> colors, line;
};

QImage New_Target(const QImage& source, double factor) {
  QImage target(std::max(1, static_cast<int>(source.width() / factor)),
                std::max(1, static_cast<int>(source.height() / factor)), QImage::Format_RGB32);
  if (target.isNull()) Raise(errors::outOfMemory);
  return target;
}

// Halving is what every deep zoom begins with: four pixels, two channels at a time.
QImage Halved(const QImage& source) {
  QImage target = New_Target(source, 2);
  SourceLines upper(source), lower(source);
  for (int y = 0; y < target.height(); ++y) {
    const QRgb* a = upper.Line(2 * y);
    const QRgb* b = lower.Line(2 * y + 1);
    QRgb* out = reinterpret_cast<QRgb*>(target.scanLine(y));
    for (int x = 0; x < target.width(); ++x) {
      const uint32_t p = a[2 * x], q = a[2 * x + 1], r = b[2 * x], s = b[2 * x + 1];
      const uint32_t redBlue = (p & 0xff00ff) + (q & 0xff00ff) + (r & 0xff00ff) + (s & 0xff00ff);
      const uint32_t green = ((p >> 8) & 0xff) + ((q >> 8) & 0xff) + ((r >> 8) & 0xff) + ((s >> 8) & 0xff);
      out[x] = 0xff000000U | (((redBlue + 0x20002) >> 2) & 0xff00ff) | (((green + 2) >> 2) << 8);
    }
  }
  return target;
}

void Add_Line(std::vector<uint16_t>& sums, const QRgb* line, uint32_t weight) {
  const auto* bytes = reinterpret_cast<const uchar*>(line);
  uint16_t* sum = sums.data();
  const size_t count = sums.size();
  for (size_t i = 0; i < count; ++i) sum[i] = static_cast<uint16_t>(sum[i] + weight * bytes[i]);
}

}  // namespace

QImage Reduced_Picture(const QImage& source, double factor) {
  if (source.isNull()) return {};
  const QImage known = source.format() == QImage::Format_Indexed8 || source.depth() == 32
                           ? source
                           : source.convertToFormat(QImage::Format_RGB32);
  if (factor == 2.0 && known.width() > 1 && known.height() > 1) return Halved(known);
  QImage target = New_Target(known, factor);
  const auto across = Spans(known.width(), target.width(), factor);
  const auto down = Spans(known.height(), target.height(), factor);
  SourceLines lines(known);
  // Down first, all channels of a line at once; the weights add up to 256, so that 16 bits hold the sums.
  std::vector<uint16_t> sums(static_cast<size_t>(known.width()) * channels);
  for (int y = 0; y < target.height(); ++y) {
    std::fill(sums.begin(), sums.end(), uint16_t{0});
    const Span& rows = down[static_cast<size_t>(y)];
    for (size_t k = 0; k < rows.weights.size(); ++k)
      if (rows.weights[k] != 0) Add_Line(sums, lines.Line(rows.first + static_cast<int>(k)), rows.weights[k]);
    QRgb* out = reinterpret_cast<QRgb*>(target.scanLine(y));
    for (const Span& span : across) {
      uint32_t red = 0, green = 0, blue = 0;
      const uint16_t* pixel = sums.data() + static_cast<size_t>(span.first) * channels;
      for (const uint32_t weight : span.weights) {
        blue += weight * pixel[0];
        green += weight * pixel[1];
        red += weight * pixel[2];
        pixel += channels;
      }
      *out++ = 0xff000000U | ((red + 0x8000) & 0xff0000) | (((green + 0x8000) >> 8) & 0xff00) | ((blue + 0x8000) >> 16);
    }
  }
  return target;
}
