#pragma once
#include <QRectF>
#include <functional>

#include "objects/draw_context.h"
#include "printing/page_geometry.h"

class QPainter;
class QImage;

// Draws one sheet of the open map: the part of the scan, the entries, the net in its frame.

struct FailedEntry {
  qint64 key = 0;
  QString text;
  bool figure = false;
};
struct SheetLook {
  double fontFactor = 1;  // surface points per stored point
  bool background = true, entries = true, net = true;
  // Asked for an entry that could not be drawn: false ends the sheet with PrintStopped.
  std::function<bool(const FailedEntry& entry)> failed = {};
  std::function<bool()> goOn = {};  // asked now and then; false ends the sheet with PrintStopped
};
struct PrintStopped {};

// Onto a page of that resolution whose origin is the corner of the printable area; letters and lines stay letters and
// lines. What combines with the ground (transparent fills) is laid over it as pictures of just the changed pixels, made
// by the same drawing code, so that it looks as on the screen.
void Draw_Sheet(QPainter& page, int dpi, const PrintGeometry& geometry, const PrintSheet& sheet, const SheetLook& look);

// The same onto an image that stands for the part `area` (paper mm) of the page; `dpi` of the image.
void Draw_Sheet_Image(QImage& image, double dpi, const QRectF& area, const PrintGeometry& geometry,
                      const PrintSheet& sheet, const SheetLook& look);

// Surface units (1/96 inch) of a place on the map, and the context to draw the sheet with.
DrawContext Sheet_Context(Surface& surface, const PrintGeometry& geometry, const PrintSheet& sheet, double fontFactor);
