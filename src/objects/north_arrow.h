#pragma once
#include <QPoint>
#include <QRectF>

#include "objects/draw_context.h"
#include "store/entry.h"

inline constexpr int northArrowLength = 60;  // map pixels

// The row of a north arrow with its foot there, its tip 60 map pixels above (map pixels), for the next entry's colours.
// `slope` is that of a metric net against the map (tangent): the tip points along the net.
EntryRow Make_North_Arrow(QPoint foot, int curVG, int curHG, double slope = 0);
// Deletes earlier north arrows of the open table and adds a new one, with CurVG and CurHG, turned with a metric net.
// The current row stays where it was, if it still stands. Asks for a redraw.
void Add_North_Arrow(QPoint foot);
// The same in the upper right of the visible part of the map.
void Add_North_Arrow();

// Draws the arrow from foot (Xmap, Ymap) to tip (Xline, Yline), half in VG, half in HG, with an "N" beyond its tip. A
// row without a tip points upward and takes its length from |Größe|. Returns its box for the region step; empty if it
// lies outside the window. Sets the surface's font.
QRectF Draw_North_Arrow(DrawContext& context, const EntryRow& row, const EntryColors& colors);
