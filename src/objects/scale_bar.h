#pragma once
#include <QRectF>
#include <QString>

#include "objects/draw_context.h"
#include "store/entry.h"

// The scale bar's row, decoded.
struct ScaleValue {
  bool valid = false;       // length on the map and number are above 0
  QString unit;             // " mm", " cm", " m", " km", or the unit as typed with a leading blank
  double number = 0;        // length of the bar in that unit
  QString text;             // what stands at the bar: number and unit
  double unitPerPixel = 0;  // units per map pixel
  bool vertical = false;    // HG 1; any other value counts as 0
};
// Groesse is the number; where it is 0 or less that of Schrift, which is also the text. Eintrag tells the unit.
ScaleValue Scale_Of(const EntryRow& row);
// Takes the row's scale as that of the map: sets MapUnit, MapUnitPerPixel and MapHasScale. False, and no scale, if the
// row has none.
bool Read_Scale(const EntryRow& row);

// Draws the bar (base kind 11): five steps in yellow and black, ticks at its ends, number and unit under it, or turned
// beside it when vertical. Returns the box of bar, ticks and text for the region step; empty if there is no bar
// (length or thickness 0). Sets the surface's font.
QRectF Draw_Scale_Bar(DrawContext& context, const EntryRow& row);
