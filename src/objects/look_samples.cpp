#include "objects/look_samples.h"

#include <vector>

#include "objects/figure.h"
#include "objects/polygon.h"
#include "objects/text_box.h"

namespace {

constexpr int rim = 4;

void Draw_Ground(Surface& surface, QSize size) {
  const KeepPen keep(surface);
  surface.pen = {.ForeColor = qRgb(150, 150, 140), .DrawWidth = 2};
  for (int x = -size.height(); x < size.width(); x += 14)
    surface.Line(QPointF(x, size.height()), QPointF(x + size.height(), 0));
}

DrawContext Sample_Context(Surface& surface, QSize size) {
  return {.surface = surface, .view = {}, .window = QRectF(QPointF(), QSizeF(size))};
}

}  // namespace

QImage Fill_Picture(QSize size, const FillSample& sample) {
  QImage picture = Make_Canvas(size.width(), size.height());
  const auto surface = Make_Surface(picture);
  Draw_Ground(*surface, size);
  DrawContext context = Sample_Context(*surface, size);
  const QRect box(rim, rim, size.width() - 2 * rim - 1, size.height() - 2 * rim - 1);
  EntryRow row;
  FrameWord frame;
  frame.framed = sample.framed;
  frame.pattern = sample.pattern;
  frame.width = qMin(static_cast<int>(sample.width), 8);
  row.RA = frame.ToNumber();
  if (sample.figure) {
    row.Schrift = sample.fill.ToSchrift();
    row.Xmap = box.x();
    row.Ymap = box.y();
    row.Xline = box.width();
    row.Yline = box.height();
    Draw_Figure(context, row, EntryKind::Rectangle, {}, sample.colors);
  } else {
    row.ID = QStringLiteral("Flaeche0");
    row.Xline = static_cast<int>(sample.width);
    row.Yline = sample.fill.ToNumber();
    const std::vector<QPoint> corners = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
    Draw_Line_Entry(context, row, EntryId::Parse(row.ID), corners, sample.colors);
  }
  return picture;
}

QImage Pen_Picture(QSize size, QRgb color, double width, PenStyle style) {
  QImage picture = Make_Canvas(size.width(), size.height());
  const auto surface = Make_Surface(picture);
  surface->pen = {.ForeColor = color, .DrawWidth = width, .pen = style};
  const double middle = size.height() / 2;
  surface->Line(QPointF(rim, middle), QPointF(size.width() - rim, middle));
  return picture;
}

QImage Frame_Picture(QSize size, const FrameWord& frame, const EntryColors& colors) {
  QImage picture = Make_Canvas(size.width(), size.height());
  const auto surface = Make_Surface(picture);
  Draw_Ground(*surface, size);
  DrawContext context = Sample_Context(*surface, size);
  const QString text = QStringLiteral("Text");
  surface->SetFont({});
  const QSizeF room(surface->TextWidth(text), surface->TextHeight(text));
  const QRectF box = Text_Box({}, room, frame);
  const QPointF at(qRound((size.width() - box.width()) / 2), qRound((size.height() - box.height()) / 2));
  Draw_Text_Box(context, at, text, room, {.frame = frame, .colors = colors});
  return picture;
}
