#pragma once
#include <QPointF>

// Where the middle of each pixel of a picture lies on the ground.
struct PixelAffine {
  double a = 1, b = 0, c = 0;   // x = a column + b row + c
  double d = 0, e = -1, f = 0;  // y = d column + e row + f
  // Whole numbers of the pixel are its middle.
  QPointF Place_Of(QPointF pixel) const {
    return {a * pixel.x() + b * pixel.y() + c, d * pixel.x() + e * pixel.y() + f};
  }
  bool operator==(const PixelAffine&) const = default;
};
