#pragma once
#include <QPoint>
#include <QRectF>
#include <span>

#include "objects/draw_context.h"
#include "store/entry.h"

// Lines and areas: rows of base kind 4 (straight edges) and 40 (rounded) with the vertices of their table.
struct LineOptions {
  bool rounded = false;      // kind 40
  bool inHand = false;       // the entry being edited: vertex handles, no hit region
  bool highlighted = false;  // in hand and marked: a line is drawn wide and then inverted
  bool keepAll = false;      // no vertex is left out
};

// Draws the row: a line in VG with style (Yline), width (Xline) and end marks; an area with fill code (Yline), hatch
// and outline, in RA if it is framed, else in VG. Adds the hit region: the strip 5 pixels + half the width beside a
// line, the polygon of an area. Fewer than 2 vertices draw nothing. Vertices are map pixels. Returns false if nothing
// of it can be seen.
bool Draw_Line_Entry(DrawContext& context, const EntryRow& row, const EntryId& id, std::span<const QPoint> vertices,
                     const EntryColors& colors, LineOptions options = {});

// Pen style and mode of a line by its stored code: 0/1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot; negative
// draws in the And mode. Others are solid.
struct LineStyle {
  PenStyle pen = PenStyle::Solid;
  bool transparent = false;
};
LineStyle Line_Style(int stored);  // of a Yline

// Closed strip round a polyline, `offset` pixels to both sides: n points forward on one side, n back on the other.
QPolygonF Hit_Strip(std::span<const QPointF> points, double offset);
