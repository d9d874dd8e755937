#pragma once
inline constexpr QRgb white = 0xffffffff, black = 0xff000000, red = 0xffff0000, green = 0xff00ff00, blue = 0xff0000ff,
                      yellow = 0xffffff00;

struct Pixel {
  int x, y;
  QRgb color;
};

inline void Expect_Pixels(const QImage& image, const std::vector<Pixel>& pixels, const char* what = "") {
  for (const auto& [x, y, color] : pixels)
    EXPECT_EQ(image.pixel(x, y) | black, color) << what << " at " << x << ',' << y << ", wanted " << std::hex << color;
}

// How many pixels of the area `holds` is true of.
template <class Holds>
int Count_Pixels(const QImage& image, const QRect& area, Holds holds) {
  int count = 0;
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x) count += holds(image.pixel(x, y) | black);
  return count;
}

// The smallest rectangle round all pixels that `holds` is true of.
template <class Holds>
QRect Extent_Of(const QImage& image, Holds holds) {
  QRect extent;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (holds(image.pixel(x, y) | black)) extent |= QRect(x, y, 1, 1);
  return extent;
}

// Where the two, of one size, have other colours; and on how many pixels.
inline QRect Difference_Of(const QImage& one, const QImage& other) {
  QRect where;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if ((one.pixel(x, y) ^ other.pixel(x, y)) & RGB_MASK) where |= QRect(x, y, 1, 1);
  return where;
}
inline int Count_Different(const QImage& one, const QImage& other) {
  int count = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x) count += one.pixel(x, y) != other.pixel(x, y);
  return count;
}

inline bool Is_Ink(QRgb color) { return color != white; }

// A picture in which every pixel differs from its neighbours.
inline QImage Motley(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  std::mt19937 random(99);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) image.setPixel(x, y, static_cast<QRgb>(random()) | black);
  return image;
}
