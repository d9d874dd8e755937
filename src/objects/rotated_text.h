#pragma once
#include <QPointF>
#include <QPolygonF>
#include <QSizeF>
#include <QString>
#include <array>
#include <optional>

#include "objects/draw_context.h"
#include "objects/reference_line.h"
#include "objects/text_box.h"

// Corners of the box round a turned text, 5 pixels out on each side: upper left, upper right, lower right, lower left
// as the text reads. `at` is the text's upper left corner, the angle counter-clockwise in degrees.
std::array<QPointF, 4> Rotated_Box(QPointF at, QSizeF size, double angle, double out = 5);
// The corner with the least |dx| + |dy| to the point.
QPointF Nearest_Corner(const std::array<QPointF, 4>& corners, QPointF point);

// Where the upper left corner of a sample text turned by the angle (degrees) goes, so that it starts at the rim of its
// picture and runs into it: below 90 on the left rim, then the lower, the right and the upper one. Width and height are
// those of the picture less the height of a line.
QPointF Sample_Origin(double angle, double width, double height);

// Draws a text turned about its upper left corner, in the font set on the surface: box, frame, text, reference line
// from the nearest corner if there is a foot point outside the box, and the hit region. All in surface pixels. Negative
// angles count as + 360. Returns the bounds; empty if all of it lies outside the window (a reference line is drawn).
QRectF Draw_Rotated_Text(DrawContext& context, const QString& text, double angle, QPointF at,
                         std::optional<QPointF> foot, const TextLook& look, const ReferenceLook& reference = {});
