#pragma once
#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <cmath>

#include "platform/region.h"
#include "platform/surface.h"

// Map pixel -> surface pixel: (x - Left) / Zoom. The same for screen, sheet, preview and bitmap. On the screen positions
// are whole numbers (halves to even), on paper fractions stay.
struct ViewTransform {
  double Left = 0, Top = 0;  // map position of the surface's origin
  double Zoom = 1;           // map pixels per surface pixel
  bool whole = true;
  double originX = 0, originY = 0;  // where that position falls on the surface

  double X(double mapX) const { return Round((mapX - Left) / Zoom + originX); }
  double Y(double mapY) const { return Round((mapY - Top) / Zoom + originY); }
  QPointF Point(QPointF map) const { return {X(map.x()), Y(map.y())}; }
  double Length(double mapLength) const { return Round(mapLength / Zoom); }
  double Round(double value) const { return whole ? std::nearbyint(value) : value; }
};

// Where a drawing routine draws, and what it tells back.
struct DrawContext {
  Surface& surface;
  ViewTransform view;
  QRectF window;                 // visible part of the surface
  RegionSet* regions = nullptr;  // hit list to fill; null on paper
  qint64 key = 0;                // row key of the entry being drawn
  bool inactive = false;         // the entry can be seen but not hit
};

// Millimetre of the screen metric in surface pixels.
inline constexpr double pixelsPerMm = 96.0 / 25.4;
