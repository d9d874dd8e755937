#pragma once
#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/region.h"
#include "platform/surface.h"

// Map pixel -> surface pixel: (x - Left) / Zoom. The same for screen, sheet, preview and bitmap. On the screen
// positions are whole numbers (halves to even), on paper fractions stay.
struct ViewTransform {
  double Left = 0, Top = 0;  // map position of the surface's origin
  double Zoom = 1;           // map pixels per surface pixel
  bool whole = true;
  double originX = 0, originY = 0;  // where that position falls on the surface

  double X(double mapX) const { return Round((mapX - Left) / Zoom + originX); }
  double Y(double mapY) const { return Round((mapY - Top) / Zoom + originY); }
  QPointF Point(QPointF map) const { return {X(map.x()), Y(map.y())}; }
  double Length(double mapLength) const { return Round(mapLength / Zoom); }
  // A position as it is drawn: whole pixels on the screen, unchanged on paper.
  double Round(double value) const {
    // Adding and taking away 1.5 * 2^52 leaves no room for a fraction: halves to even, without a call per vertex.
    constexpr double shift = 6755399441055744.0;
    return whole ? (value + shift) - shift : value;
  }
  // Pen width of a stored width: at least one surface pixel.
  double Pen(double width) const { return std::max(1.0, Round(width / Zoom)); }
};

// The colours of one entry, looked up in the palette by the caller.
struct EntryColors {
  QRgb VG = qRgb(0, 0, 0);        // text, line, hatch
  QRgb HG = qRgb(255, 255, 255);  // box, fill, reference line
  QRgb RA = qRgb(0, 0, 0);        // frame
};

// Where a drawing routine draws, and what it tells back.
struct DrawContext {
  Surface& surface;
  ViewTransform view;
  QRectF window;                 // visible part of the surface
  RegionSet* regions = nullptr;  // hit list to fill; null on paper
  qint64 key = 0;                // row key of the entry being drawn
  bool inactive = false;         // the entry can be seen but not hit
  double fontScale = 0;          // surface points per stored point; 0: texts grow and shrink with the map

  // Adds a hit region of the entry, if there is a hit list and the entry is active.
  void Add_Region(RegionShape shape, int kind = 0) const {
    if (regions && !inactive) regions->Add(std::move(shape), key, kind);
  }
};

// Puts the surface's pen back at the end of the scope.
class KeepPen {
 public:
  explicit KeepPen(Surface& target) : surface(target), before(target.pen) {}
  ~KeepPen() { surface.pen = before; }
  KeepPen(const KeepPen&) = delete;
  KeepPen& operator=(const KeepPen&) = delete;

 private:
  Surface& surface;
  PenState before;
};

// The point turned counter-clockwise (as seen, y runs downward) about a centre.
inline QPointF Turned(QPointF point, QPointF centre, double degrees) {
  const double angle = degrees * 3.14159265358979323846 / 180;
  const double sine = std::sin(angle), cosine = std::cos(angle);
  const QPointF d = point - centre;
  return {centre.x() + d.x() * cosine + d.y() * sine, centre.y() - d.x() * sine + d.y() * cosine};
}

// Millimetre of the screen metric in surface pixels.
inline constexpr double pixelsPerMm = 96.0 / 25.4;
