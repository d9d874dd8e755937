#pragma once
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <array>
#include <optional>

#include "objects/draw_context.h"
#include "store/entry_type.h"

// The set style of reference lines, pixels at 100 %.
struct ReferenceStyle {
  double width = 1;   // pen width; drawn at twice that
  double circle = 4;  // radius of the circle at the foot point
  double arrow = 6;   // width of the arrow head
};

struct ReferenceLook {
  EntryKind kind = EntryKind::Text;  // TextArrow and TextCircle have an end mark, all others are plain lines
  QRgb color = qRgb(0, 0, 0);        // texts: HG; pictures: RA; kind 7: VG
  ReferenceStyle style = {};
  double textHeight = 16;  // height of "A" in surface pixels: half of it is the length of an arrow head
};

// Kind number of a foot point in the hit list.
inline constexpr int footRegion = 500;

// Where the line leaves the box: a corner or the middle of an edge, by the eight zones round the box. None if the foot
// point lies inside.
std::optional<QPointF> Reference_Start(const QRectF& box, QPointF foot);

// Draws the reference line from the box (with its frame) to the foot point, both in surface pixels, and adds the foot
// point's hit region. A foot point inside the box draws nothing. Kind 7 runs from the box's upper left corner.
void Draw_Reference(DrawContext& context, QPointF foot, const QRectF& box, const ReferenceLook& look);
// The same from a given point.
void Draw_Reference_From(DrawContext& context, QPointF start, QPointF foot, const ReferenceLook& look);

// The wedge arrow of kind 2: seven points, the tip the fourth.
std::array<QPointF, 7> Arrow_Polygon(QPointF start, QPointF tip, double shaft, double headLength, double headWidth);

// Hit region of a row of kind 7: five points along the line, 5 pixels to either side.
QPolygonF Reference_Strip(QPointF entry, QPointF foot);
