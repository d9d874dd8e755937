#include "printing/page_geometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double mmPerInch = 25.4;
constexpr double tolerance = 0.01;  // mm: a map that fills its sheets exactly needs no further one
constexpr int most = 10, mostPages = 50, mostThousandths = 20000;
constexpr int mostSheets = 1000;  // beside each other, and below

// Sheets needed for a length, both in paper mm.
int Count_Sheets(double length, double room) {
  return static_cast<int>(std::clamp(std::ceil((length - tolerance) / room), 1.0, double{mostSheets} + 1));
}

int Pages_At(PrintSettings settings, const Paper& paper, const PrintedMap& map, int thousandths) {
  settings.factor = thousandths / 1000.0;
  return Print_Geometry(settings, paper, map).Pages();
}

// The largest factor in thousandths that needs no more than `pages` sheets; 0 if there is none.
int Largest_Factor(const PrintSettings& settings, const Paper& paper, const PrintedMap& map, int pages) {
  int fits = 0, tooLarge = mostThousandths + 1;
  while (tooLarge - fits > 1) {
    const int middle = (fits + tooLarge) / 2;
    (Pages_At(settings, paper, map, middle) <= pages ? fits : tooLarge) = middle;
  }
  return fits;
}

}  // namespace

PrintGeometry Print_Geometry(const PrintSettings& settings, const Paper& paper, const PrintedMap& map,
                             double lineWidth) {
  PrintGeometry g;
  g.factor = settings.factor > 0 ? settings.factor : 1.0;
  g.marginLeft = settings.left;
  g.marginRight = settings.right;
  g.marginTop = settings.top;
  g.marginBottom = settings.bottom;
  g.mapWidthMm = map.mm.width();
  g.mapHeightMm = map.mm.height();
  g.PageWidthMm = paper.PrintableWidth() - (g.marginLeft + g.marginRight);
  g.PageHeightMm = paper.PrintableHeight() - (g.marginTop + g.marginBottom);
  g.valid = g.PageWidthMm >= 1 && g.PageHeightMm >= 1 && !map.pixels.isEmpty() && !map.mm.isEmpty();
  if (!g.valid) return g;
  g.PageWidthDots = static_cast<int>(std::nearbyint(g.PageWidthMm * paper.dpi / mmPerInch));
  g.PageHeightDots = static_cast<int>(std::nearbyint(g.PageHeightMm * paper.dpi / mmPerInch));
  g.DotsPerMmX = g.PageWidthDots / g.PageWidthMm;
  g.DotsPerMmY = g.PageHeightDots / g.PageHeightMm;
  g.MapPixelMm = g.factor * map.mm.width() / map.pixels.width();
  g.MapPixelMmY = g.factor * map.mm.height() / map.pixels.height();
  g.PenDots = std::max(1, static_cast<int>(std::nearbyint(lineWidth * g.DotsPerMmX * g.MapPixelMm)));
  g.across = Count_Sheets(g.mapWidthMm * g.factor, g.PageWidthMm);
  g.down = Count_Sheets(g.mapHeightMm * g.factor, g.PageHeightMm);
  g.valid = g.across <= mostSheets && g.down <= mostSheets;
  return g;
}

std::vector<PrintSheet> Sheet_Walk(const PrintGeometry& g) {
  std::vector<PrintSheet> sheets;
  if (!g.valid) return sheets;
  const double stepX = g.PageWidthMm / g.factor, stepY = g.PageHeightMm / g.factor;
  for (int row = 0; row < g.down; ++row) {
    for (int column = 0; column < g.across; ++column) {
      PrintSheet sheet;
      sheet.number = static_cast<int>(sheets.size()) + 1;
      sheet.column = column;
      sheet.row = row;
      // Multiplied, not added up: the last sheet of a hundred lies as exactly as the first.
      sheet.PageOffX = column * stepX;
      sheet.PageOffY = row * stepY;
      sheet.PageStepX = std::min(stepX, g.mapWidthMm - sheet.PageOffX);
      sheet.PageStepY = std::min(stepY, g.mapHeightMm - sheet.PageOffY);
      sheet.PageWidthOut = sheet.PageStepX * g.factor;
      sheet.PageHeightOut = sheet.PageStepY * g.factor;
      sheet.PageDrawX = sheet.PageOffX * g.factor;
      sheet.PageDrawY = sheet.PageOffY * g.factor;
      sheets.push_back(sheet);
    }
  }
  return sheets;
}

QRectF Sheet_Source(const PrintGeometry& g, const PrintSheet& sheet) {
  const double perPixelX = g.MapPixelMm / g.factor, perPixelY = g.MapPixelMmY / g.factor;
  return {sheet.PageOffX / perPixelX, sheet.PageOffY / perPixelY, sheet.PageStepX / perPixelX,
          sheet.PageStepY / perPixelY};
}

QRectF Sheet_Target(const PrintGeometry& g, const PrintSheet& sheet) {
  return {g.marginLeft, g.marginTop, sheet.PageWidthOut, sheet.PageHeightOut};
}

std::vector<PageChoice> Calc_Pages(const PrintSettings& settings, const Paper& paper, const PrintedMap& map) {
  std::vector<PageChoice> choices;
  if (!Print_Geometry(settings, paper, map).valid) return choices;
  int pages = std::max(1, Pages_At(settings, paper, map, 1));
  while (static_cast<int>(choices.size()) < most && pages < mostPages) {
    const int factor = Largest_Factor(settings, paper, map, pages);
    if (factor > 0) choices.push_back({pages, factor / 1000.0});
    if (factor >= mostThousandths) break;
    pages = Pages_At(settings, paper, map, factor + 1);
  }
  return choices;
}
