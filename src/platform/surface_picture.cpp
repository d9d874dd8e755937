#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "platform/near.h"
#include "platform/surface_image.h"

namespace {

using ColorTable = std::array<QRgb, 256>;

ColorTable Colors_Of(const QImage& picture) {
  ColorTable table;
  table.fill(0xff000000);
  const QList<QRgb> colors = picture.colorTable();
  for (qsizetype i = 0; i < std::min<qsizetype>(colors.size(), 256); ++i)
    table[static_cast<size_t>(i)] = colors[i] | 0xff000000;
  return table;
}

bool Plain(const QImage& picture) {
  return picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_Indexed8;
}

}  // namespace

void ImageSurface::PaintPicture(const QRectF& target, const QImage& picture, const QRectF& part) {
  const QRectF source = Near(part);
  if (picture.isNull() || target.isEmpty() || part.isEmpty() || source.isEmpty()) return;
  const QRect onto(Whole(target.x()), Whole(target.y()), std::max(1, Whole(target.width())),
                   std::max(1, Whole(target.height())));
  if (!onto.intersects(clip)) return;
  if (!Plain(picture)) {
    painter.drawImage(onto, picture, source);
    return;
  }
  const QRect from = QRectF(picture.rect()).contains(source) ? source.toRect() : QRect();
  const bool wholePixels = QRectF(from) == source;
  if (wholePixels && from.size() == onto.size())
    Blit(onto, picture, from.topLeft());
  else
    Stretch(onto, picture, source);
}

// Pixel for pixel; `from` is the picture's pixel at the target's corner.
void ImageSurface::Blit(const QRect& target, const QImage& picture, QPoint from) {
  const QRect part = target.intersected(clip);
  const QPoint start = from + part.topLeft() - target.topLeft();
  const bool indexed = picture.format() == QImage::Format_Indexed8;
  const ColorTable table = indexed ? Colors_Of(picture) : ColorTable{};
  for (int y = 0; y < part.height(); ++y) {
    QRgb* row = RowAt(part.top() + y) + part.left();
    const uchar* line = picture.constScanLine(start.y() + y);
    if (indexed) {
      const uchar* codes = line + start.x();
      for (int x = 0; x < part.width(); ++x) row[x] = table[codes[x]];
    } else {
      std::memcpy(row, line + static_cast<qsizetype>(start.x()) * 4, static_cast<size_t>(part.width()) * 4);
    }
  }
}

// Nearest pixel: a target pixel takes what lies under its middle. Rows that meet the same picture row are copied.
void ImageSurface::Stretch(const QRect& target, const QImage& picture, const QRectF& source) {
  const QRect part = target.intersected(clip);
  const double stepX = source.width() / target.width(), stepY = source.height() / target.height();
  const auto place = [](double origin, double step, int i, int limit) {
    return std::clamp(static_cast<int>(std::floor(Near(origin + (i + 0.5) * step))), 0, limit - 1);
  };
  std::vector<int> columns(static_cast<size_t>(part.width()));
  for (size_t x = 0; x < columns.size(); ++x)
    columns[x] = place(source.x(), stepX, part.left() - target.left() + static_cast<int>(x), picture.width());
  const bool indexed = picture.format() == QImage::Format_Indexed8;
  const ColorTable table = indexed ? Colors_Of(picture) : ColorTable{};
  int formerLine = -1;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    QRgb* row = RowAt(y) + part.left();
    const int number = place(source.y(), stepY, y - target.top(), picture.height());
    if (number == formerLine) {
      std::memcpy(row, RowAt(y - 1) + part.left(), columns.size() * 4);
      continue;
    }
    formerLine = number;
    const uchar* line = picture.constScanLine(number);
    if (indexed) {
      for (size_t x = 0; x < columns.size(); ++x) row[x] = table[line[columns[x]]];
    } else {
      const QRgb* colors = reinterpret_cast<const QRgb*>(line);
      for (size_t x = 0; x < columns.size(); ++x) row[x] = colors[columns[x]] | 0xff000000;
    }
  }
}
