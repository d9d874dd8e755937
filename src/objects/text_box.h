#pragma once
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include "objects/draw_context.h"
#include "store/frame_word.h"

// How a text's box and frame look.
struct TextLook {
  FrameWord frame;
  EntryColors colors;
  bool transparent = false;  // no fill behind the text; the frame stays
  bool perspex = false;      // the fill lets half of what is below through; not in the not-xor mode
};

// Distance of the text from its box: frame width + 1, or 1 without a frame.
inline double Frame_Space(const FrameWord& frame) { return frame.framed ? frame.width + 1 : 1; }
// Pen style of a frame's pattern step: 1 solid, 2 dash, 3 dot, 4 dash-dot, 5 dash-dot-dot.
PenStyle Frame_Pattern(const FrameWord& frame);
// The box round a text of that size (surface pixels), frame included.
inline QRectF Text_Box(QPointF at, QSizeF size, const FrameWord& frame) {
  const double space = Frame_Space(frame);
  return {at.x(), at.y(), size.width() + 2 * space, size.height() + 2 * space};
}

// Is the fill of the box drawn as a veil?
inline bool Veiled(const TextLook& look) { return look.perspex && !look.transparent; }
// Draws box, frame and text (one or several lines) with its upper left corner at `at`, in the font set on the surface.
// `size` is the text's, as measured by the caller. A reference line belongs under it: draw it first. Allocates nothing.
void Draw_Text_Box(DrawContext& context, QPointF at, const QString& text, QSizeF size, const TextLook& look);
