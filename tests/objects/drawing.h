#pragma once
#include "objects/draw_context.h"
#include "support/pixels.h"

// A small picture to draw on, with its context. Colours of the entry: VG blue, HG yellow, RA red.
struct Drawing {
  explicit Drawing(int width = 100, int height = 100, QRgb ground = white)
      : image(Make_Canvas(width, height, ground)),
        surface(Make_Surface(image)),
        context{*surface, {}, QRectF(0, 0, width, height)} {
    context.regions = &regions;
    context.key = 7;
  }
  QRgb At(int x, int y) const { return image.pixel(x, y) | black; }
  void Expect(const std::vector<Pixel>& pixels, const char* what = "") const { Expect_Pixels(image, pixels, what); }
  int Count(QRgb color) const { return Count(color, image.rect()); }
  int Count(QRgb color, QRect area) const {
    return Count_Pixels(image, area, [&](QRgb at) { return at == color; });
  }
  QRect Extent(QRgb color) const {
    return Extent_Of(image, [&](QRgb at) { return at == color; });
  }

  QImage image;
  std::unique_ptr<Surface> surface;
  RegionSet regions;
  DrawContext context;
  EntryColors colors{blue, yellow, red};
};
