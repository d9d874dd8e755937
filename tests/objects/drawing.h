#pragma once
#include <gtest/gtest.h>

#include "objects/draw_context.h"

inline constexpr QRgb white = qRgb(255, 255, 255), black = qRgb(0, 0, 0), red = qRgb(255, 0, 0),
                      green = qRgb(0, 128, 0), blue = qRgb(0, 0, 255), yellow = qRgb(255, 255, 0);

// A small picture to draw on, with its context. Colours of the entry: VG blue, HG yellow, RA red.
struct Drawing {
  explicit Drawing(int width = 100, int height = 100, QRgb ground = white)
      : image(Make_Canvas(width, height, ground)),
        surface(Make_Surface(image)),
        context{*surface, {}, QRectF(0, 0, width, height)} {
    context.regions = &regions;
    context.key = 7;
  }
  QRgb At(int x, int y) const { return image.pixel(x, y) | 0xff000000; }
  int Count(QRgb color) const { return Count(color, image.rect()); }
  int Count(QRgb color, QRect area) const {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x) count += At(x, y) == color;
    return count;
  }
  // The smallest rectangle round all pixels of the colour.
  QRect Extent(QRgb color) const {
    QRect extent;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (At(x, y) == color) extent |= QRect(x, y, 1, 1);
    return extent;
  }

  QImage image;
  std::unique_ptr<Surface> surface;
  RegionSet regions;
  DrawContext context;
  EntryColors colors{blue, yellow, red};
};
