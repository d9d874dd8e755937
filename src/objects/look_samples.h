#pragma once
#include <QImage>
#include <QSize>

#include "objects/draw_context.h"
#include "store/fill_code.h"
#include "store/frame_word.h"

// Small pictures of fills, pens and frames for the windows that offer them, drawn as on the map.

struct FillSample {
  FillCode fill;
  EntryColors colors;
  bool figure = false;  // figures and areas are transparent in different ways
  bool framed = false;  // the outline is in RA
  int pattern = 1;      // of a figure's outline
  double width = 1;
};
// On a bit of map, so that a transparent fill can be told from an opaque one.
QImage Fill_Picture(QSize size, const FillSample& sample);
// A line across the picture.
QImage Pen_Picture(QSize size, QRgb color, double width, PenStyle style = PenStyle::Solid);
// A text in its box.
QImage Frame_Picture(QSize size, const FrameWord& frame, const EntryColors& colors);
