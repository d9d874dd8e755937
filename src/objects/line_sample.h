#pragma once
#include <QImage>
#include <QPoint>
#include <span>

#include "store/entry.h"

// A line drawn as on the map at 100 %, through the points, on a light ground: for the windows that let the user choose
// its look. Ends, style, width, colours and edges are those of the row.
QImage Line_Sample(QSize size, const EntryRow& row, std::span<const QPoint> points);
