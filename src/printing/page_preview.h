#pragma once
#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <functional>
#include <vector>

#include "printing/page_geometry.h"

// How the map falls on its sheets, as a small picture: one cell a sheet, with the part of the map that comes on it and
// a dot for every entry.

struct PreviewMap {
  QImage picture;  // the scan, reduced
  struct Dot {
    QPointF at;  // map pixels
    QRgb color = 0;
  };
  std::vector<Dot> dots;
};
// Of the open map. Error 481 without a scan. Asks between its steps whether to go on: PrintStopped if not.
PreviewMap Make_Preview_Map(const std::function<bool()>& goOn = {});

// Millimetres of all sheets side by side, with the gaps between them.
QSizeF Preview_Size(const PrintGeometry& geometry, const Paper& paper);
// The part (mm of all sheets; empty: the whole) drawn as large as it fits into a picture of the size. `shown` becomes
// the part that the picture's edges show.
QImage Draw_Preview(const PreviewMap& map, const PrintGeometry& geometry, const Paper& paper, QSize size,
                    const QRectF& part = {}, QRectF* shown = nullptr);

// Edges of the sheets on the map, in map pixels: upright and level ones.
struct SheetFrame {
  std::vector<double> x, y;
};
// By the settings kept with the open map; empty without a map. Fast: settings are read only after a change.
SheetFrame Sheet_Frame_Of_Map();
