#pragma once
#include <QMarginsF>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <vector>

#include "platform/printer.h"

// How the map falls on sheets: arithmetic without a printer. Lengths are millimetres: "map mm" on the map at factor 1,
// "paper mm" on the sheet, counted from the upper left corner of what the printer can print.

struct PrintSettings {
  double factor = 1.0;                           // enlargement on paper; 0 or less counts as 1.0
  double fontFactor = 1.0;                       // enlargement of print fonts and pens, 0.3..3.0
  int left = 0, right = 0, top = 0, bottom = 0;  // margins in mm inside the printable area
  int orientation = portrait;
  bool operator==(const PrintSettings&) const = default;
};

struct PrintedMap {
  QSize pixels;
  QSizeF mm;  // at factor 1
};

struct PrintGeometry {
  double factor = 1;
  double marginLeft = 0, marginTop = 0, marginRight = 0, marginBottom = 0;
  double mapWidthMm = 0, mapHeightMm = 0;
  double PageWidthMm = 0, PageHeightMm = 0;   // room for the map on a sheet
  int PageWidthDots = 0, PageHeightDots = 0;  // the same in printer pixels
  double DotsPerMmX = 0, DotsPerMmY = 0;
  double MapPixelMm = 0, MapPixelMmY = 0;  // paper mm per map pixel
  int PenDots = 1;                         // line of one map pixel on the printer
  int across = 1, down = 1;                // sheets
  bool valid = false;  // margins leave room, the map has a size and needs no more than a thousand sheets a direction
  int Pages() const { return across * down; }
};

// `lineWidth` is the map's line width in map pixels.
PrintGeometry Print_Geometry(const PrintSettings& settings, const Paper& paper, const PrintedMap& map,
                             double lineWidth = 1);

// One sheet of the walk, from left to right, then downward.
struct PrintSheet {
  int number = 1;  // from 1
  int column = 0, row = 0;
  double PageOffX = 0, PageOffY = 0;           // map mm of the sheet's upper left corner
  double PageStepX = 0, PageStepY = 0;         // map mm shown
  double PageWidthOut = 0, PageHeightOut = 0;  // paper mm used
  double PageDrawX = 0, PageDrawY = 0;         // PageOff * factor: what is taken from paper mm of the whole map
};
std::vector<PrintSheet> Sheet_Walk(const PrintGeometry& geometry);  // empty if the geometry is not valid
// The part of the map on the sheet in map pixels.
QRectF Sheet_Source(const PrintGeometry& geometry, const PrintSheet& sheet);
// Where it lies on the page in paper mm.
QRectF Sheet_Target(const PrintGeometry& geometry, const PrintSheet& sheet);

// For each number of sheets that can be reached the largest factor with three decimals; at most ten pairs, up to 50
// sheets.
struct PageChoice {
  int pages = 1;
  double factor = 1;
  bool operator==(const PageChoice&) const = default;
};
// Ascending; empty without room or size.
std::vector<PageChoice> Calc_Pages(const PrintSettings& settings, const Paper& paper, const PrintedMap& map);

inline constexpr double smallestPrintFactor = 0.05, largestPrintFactor = 20;
