#include "platform/surface.h"

#include <algorithm>
#include <array>

#include "platform/error.h"

QRgb QBColor(int number) {
  static constexpr std::array<QRgb, 16> table{0xff000000, 0xff000080, 0xff008000, 0xff008080, 0xff800000, 0xff800080,
                                              0xff808000, 0xffc0c0c0, 0xff808080, 0xff0000ff, 0xff00ff00, 0xff00ffff,
                                              0xffff0000, 0xffff00ff, 0xffffff00, 0xffffffff};
  return number >= 0 && number < 16 ? table[static_cast<size_t>(number)] : table[0];
}

QImage Make_Canvas(int width, int height, QRgb color) {
  QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_RGB32);
  if (image.isNull()) Raise(errors::outOfMemory);
  image.setDotsPerMeterX(3780);
  image.setDotsPerMeterY(3780);
  image.fill(color | 0xff000000);
  return image;
}
