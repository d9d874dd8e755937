#include "platform/surface_image.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "platform/error.h"
#include "platform/near.h"
#include "platform/pixel_lines.h"

namespace {

constexpr QRgb opaque = 0xff000000;
constexpr QRgb fillMark = 0xff000001, penMark = 0xff000002;
constexpr int scratchPixels = 4 << 20;  // larger shapes are combined in bands
constexpr int longestKeptLine = 200;
constexpr int half = 128;  // alpha

// Is the pixel on a line of the hatch? Lines are 8 pixels apart and lie fast on the surface.
bool On_Hatch(FillStyle style, int x, int y) {
  switch (style) {
    case FillStyle::Solid:
      return true;
    case FillStyle::None:
      return false;
    case FillStyle::Horizontal:
      return (y & 7) == 4;
    case FillStyle::Vertical:
      return (x & 7) == 4;
    case FillStyle::Upward:
      return ((x + y) & 7) == 0;
    case FillStyle::Downward:
      return ((x - y) & 7) == 0;
    case FillStyle::Cross:
      return (y & 7) == 4 || (x & 7) == 4;
    case FillStyle::DiagonalCross:
      return ((x + y) & 7) == 0 || ((x - y) & 7) == 0;
  }
  return false;
}

// Calls `work` with the operation of the mode, so that the inner loops hold no switch.
template <class Work>
void With_Operation(DrawMode mode, Work work) {
  switch (mode) {
    case DrawMode::Invert:
      return work([](QRgb there, QRgb) { return ~there | opaque; });
    case DrawMode::And:
      return work([](QRgb there, QRgb color) { return (there & color) | opaque; });
    case DrawMode::NotXor:
      return work([](QRgb there, QRgb color) { return ~(there ^ color) | opaque; });
    case DrawMode::Copy:
      return work([](QRgb, QRgb color) { return color | opaque; });
    case DrawMode::Nop:
      return;
  }
}

}  // namespace

QPen Pen_Of(const PenState& state, QRgb color, double width) {
  if (state.pen == PenStyle::None) return Qt::NoPen;
  QPen made(QColor::fromRgb(color), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
  if (width > 1) return made;
  QList<qreal> rhythm;
  for (const int length : PenRhythm::Lengths(state.pen)) rhythm << length;
  if (!rhythm.isEmpty()) made.setDashPattern(rhythm);
  return made;
}

ImageSurface::ImageSurface(QImage& image) {
  if (image.format() != QImage::Format_RGB32) image.convertTo(QImage::Format_RGB32);
  painter.begin(&image);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setRenderHint(QPainter::TextAntialiasing, true);
  // Taken after the painter has begun: it has made the pixels the image's own, and a copy of the image taken while
  // the painter works is a deep one.
  bits = const_cast<uchar*>(image.constBits());
  bytesPerLine = image.bytesPerLine();
  whole = clip = image.rect();
}

ImageSurface::~ImageSurface() = default;

int ImageSurface::PenWidth() const { return std::max(1, Whole(pen.DrawWidth)); }

void ImageSurface::Cls(QRgb color) {
  for (int y = whole.top(); y <= whole.bottom(); ++y) std::fill_n(RowAt(y), whole.width(), color | opaque);
}

void ImageSurface::SetClip(const QRectF& area) {
  clip = area.isEmpty() ? whole : Whole(area).intersected(whole);
  if (area.isEmpty())
    painter.setClipping(false);
  else
    painter.setClipRect(clip);
}

void ImageSurface::Tell_Shape(bool filled) {
  const int width = PenWidth();
  if (told.valid && !told.forText && told.penColor == pen.ForeColor && told.width == width && told.pen == pen.pen &&
      told.filled == filled && (!filled || told.brushColor == pen.FillColor))
    return;
  painter.setPen(Pen_Of(pen, pen.ForeColor, width));
  painter.setBrush(filled ? QBrush(QColor::fromRgb(pen.FillColor)) : QBrush(Qt::NoBrush));
  told = {pen.ForeColor, pen.FillColor, static_cast<double>(width), pen.pen, filled, false, true};
}

void ImageSurface::Fill_Area(const QRect& area, QRgb color) {
  const QRect part = area.intersected(clip);
  if (part.isEmpty()) return;
  if (pen.mode == DrawMode::Copy) {
    for (int y = part.top(); y <= part.bottom(); ++y) std::fill_n(RowAt(y) + part.left(), part.width(), color | opaque);
    return;
  }
  With_Operation(pen.mode, [&](auto operation) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
      QRgb* row = RowAt(y) + part.left();
      for (int x = 0; x < part.width(); ++x) row[x] = operation(row[x], color);
    }
  });
}

void ImageSurface::Hatch_Area(const QRect& area) {
  const QRect part = area.intersected(clip);
  With_Operation(pen.mode, [&](auto operation) {
    for (int y = part.top(); y <= part.bottom(); ++y) {
      QRgb* row = RowAt(y);
      for (int x = part.left(); x <= part.right(); ++x)
        if (On_Hatch(pen.fill, x, y)) row[x] = operation(row[x], pen.FillColor);
    }
  });
}

// Draws a shape in pen and fill of the current state: straight with the painter where it can be, else by the mask.
template <class Draw>
void ImageSurface::Draw_Shape(const QRect& bounds, bool filled, Draw draw) {
  const int margin = PenWidth() + 1;
  const QRect touched = bounds.adjusted(-margin, -margin, margin, margin);
  if (!Visible(touched) || (!filled && pen.pen == PenStyle::None)) return;
  if (pen.mode == DrawMode::Copy && (!filled || pen.fill == FillStyle::Solid)) {
    Tell_Shape(filled);
    draw(painter);
    return;
  }
  Through_Scratch(touched, [&](QPainter& on) {
    on.setPen(Pen_Of(pen, penMark, PenWidth()));
    on.setBrush(filled ? QBrush(QColor::fromRgb(fillMark)) : QBrush(Qt::NoBrush));
    draw(on);
  });
}

// Marks pixels in the scratch image, band by band, and combines them. `mark` gets the band's area on the surface; its
// upper left corner is the scratch image's.
template <class Mark>
void ImageSurface::For_Each_Band(const QRect& bounds, Mark mark) {
  const QRect area = bounds.intersected(clip);
  if (area.isEmpty()) return;
  if (scratch.isNull()) {
    const int bandRows = std::max(64, scratchPixels / whole.width());
    scratch = QImage(whole.width(), std::min(bandRows, whole.height()), QImage::Format_ARGB32_Premultiplied);
    if (scratch.isNull()) Raise(errors::outOfMemory);
    scratch.fill(0);
    mask.begin(&scratch);
    mask.setRenderHint(QPainter::TextAntialiasing, false);
    scratchBits = const_cast<uchar*>(scratch.constBits());
  }
  for (int top = area.top(); top <= area.bottom(); top += scratch.height()) {
    const QRect band(area.left(), top, area.width(), std::min(scratch.height(), area.bottom() - top + 1));
    mark(band);
    Combine_Scratch(band);
  }
}

template <class Draw>
void ImageSurface::Through_Scratch(const QRect& bounds, Draw draw) {
  For_Each_Band(bounds, [&](const QRect& band) {
    mask.resetTransform();
    mask.setClipRect(QRect(QPoint(0, 0), band.size()));
    mask.translate(-band.topLeft());
    draw(mask);
  });
}

void ImageSurface::Combine_Scratch(const QRect& area) {
  With_Operation(pen.mode, [&](auto operation) {
    for (int y = area.top(); y <= area.bottom(); ++y) {
      QRgb* row = RowAt(y);
      QRgb* marks = ScratchRow(y - area.top()) - area.left();
      for (int x = area.left(); x <= area.right(); ++x) {
        if (marks[x] == 0) continue;
        if (marks[x] == penMark)
          row[x] = operation(row[x], pen.ForeColor);
        else if (pen.fill == FillStyle::Solid || On_Hatch(pen.fill, x, y))
          row[x] = operation(row[x], pen.FillColor);
        marks[x] = 0;
      }
    }
  });
}

// A chain of lines of width 1, pixel by pixel, without its last pixel.
// `simple`: it meets no pixel twice, so that the other modes need no mask.
void ImageSurface::Thin_Chain(std::span<const QPoint> points, const QRect& bounds, bool simple) {
  if (!Visible(bounds)) return;
  const PenRhythm rhythm(pen.pen);
  const auto walk = [&](const QRect& area, auto set) {
    qint64 way = 0;
    for (size_t i = 1; i < points.size(); ++i) {
      Walk_Line(points[i - 1], points[i], area, [&](int x, int y, qint64 step) {
        if (rhythm.Down(way + step)) set(x, y);
      });
      way += Line_Steps(points[i - 1], points[i]);
    }
  };
  if (pen.mode == DrawMode::Copy) {
    const QRgb color = pen.ForeColor | opaque;
    walk(bounds.intersected(clip), [&](int x, int y) { RowAt(y)[x] = color; });
  } else if (simple) {
    With_Operation(pen.mode, [&](auto operation) {
      walk(bounds.intersected(clip), [&](int x, int y) { RowAt(y)[x] = operation(RowAt(y)[x], pen.ForeColor); });
    });
  } else {
    For_Each_Band(bounds, [&](const QRect& band) {
      walk(band, [&](int x, int y) { ScratchRow(y - band.top())[x - band.left()] = penMark; });
    });
  }
}

void ImageSurface::Line(QPointF from, QPointF to) {
  const QPointF ends[] = {from, to};
  const QRect bounds = Bounds_Of(ends);
  const QPoint a = pixels[0], b = pixels[1];
  if (a == b || pen.pen == PenStyle::None) return;
  const int width = PenWidth();
  if (width == 1) {
    Thin_Chain(pixels, bounds, true);
  } else if (a.y() == b.y()) {
    const int left = a.x() < b.x() ? a.x() : b.x() + 1;
    if (pen.mode != DrawMode::Nop) Fill_Area({left, a.y() - width / 2, std::abs(b.x() - a.x()), width}, pen.ForeColor);
  } else if (a.x() == b.x()) {
    const int top = a.y() < b.y() ? a.y() : b.y() + 1;
    if (pen.mode != DrawMode::Nop) Fill_Area({a.x() - width / 2, top, width, std::abs(b.y() - a.y())}, pen.ForeColor);
  } else {
    Draw_Shape(bounds, false, [&](QPainter& on) { on.drawLine(a, b); });
  }
}

void ImageSurface::FilledBox(const QRectF& box, QRgb color) {
  if (pen.mode != DrawMode::Nop) Fill_Area(Whole(box), color);
}

void ImageSurface::Box(const QRectF& box) {
  const QRect outer = Whole(box);
  if (outer.isEmpty() || !Visible(outer)) return;
  const int rim = RimWidth();
  const QRect inner = outer.adjusted(rim, rim, -rim, -rim);
  if (Filled() && !inner.isEmpty()) {
    if (pen.fill == FillStyle::Solid)
      Fill_Area(inner, pen.FillColor);
    else
      Hatch_Area(inner);
  }
  if (rim == 0) return;
  if (pen.pen == PenStyle::Solid || rim > 1) {
    Draw_Rim(outer, rim);
    return;
  }
  const QPoint rimWay[] = {outer.topLeft(), outer.topRight(), outer.bottomRight(), outer.bottomLeft(), outer.topLeft()};
  Thin_Chain(rimWay, outer, outer.width() > 1 && outer.height() > 1);
}

void ImageSurface::Draw_Rim(const QRect& box, int width) {
  if (box.width() <= 2 * width || box.height() <= 2 * width) {
    Fill_Area(box, pen.ForeColor);
    return;
  }
  Fill_Area({box.left(), box.top(), box.width(), width}, pen.ForeColor);
  Fill_Area({box.left(), box.bottom() - width + 1, box.width(), width}, pen.ForeColor);
  const int sides = box.height() - 2 * width;
  Fill_Area({box.left(), box.top() + width, width, sides}, pen.ForeColor);
  Fill_Area({box.right() - width + 1, box.top() + width, width, sides}, pen.ForeColor);
}

void ImageSurface::Ellipse(const QRectF& box) {
  const QRect outer = Whole(box);
  if (outer.isEmpty()) return;
  const int rim = RimWidth();
  if (rim > 1) {
    // The ring and what it encloses are filled: a wide pen along the middle would come out half a pixel aside.
    QPainterPath ring, inside;
    ring.addEllipse(outer);
    if (const QRect inner = outer.adjusted(rim, rim, -rim, -rim); !inner.isEmpty()) inside.addEllipse(inner);
    ring.addPath(inside);
    Draw_Shape(outer, Filled(), [&](QPainter& on) {
      if (Filled()) on.fillPath(inside, on.brush());
      on.fillPath(ring, on.pen().brush());
    });
    return;
  }
  const int less = rim == 0 ? 0 : 1;
  const QRect middle(outer.topLeft(), outer.size() - QSize(less, less));
  Draw_Shape(outer, Filled(), [&](QPainter& on) { on.drawEllipse(middle); });
}

// Rounds the points into `pixels` and gives their bounds.
QRect ImageSurface::Bounds_Of(std::span<const QPointF> points) {
  pixels.clear();
  if (points.empty()) return {};
  QPoint low = Whole(points.front()), high = low;
  for (const QPointF& point : points) {
    const QPoint p = Whole(point);
    pixels.push_back(p);
    low = {std::min(low.x(), p.x()), std::min(low.y(), p.y())};
    high = {std::max(high.x(), p.x()), std::max(high.y(), p.y())};
  }
  return {low, high};
}

void ImageSurface::Polyline(std::span<const QPointF> points) {
  if (points.size() < 2) return;
  const QRect bounds = Bounds_Of(points);
  if (pen.pen == PenStyle::None) return;
  if (PenWidth() == 1) return Thin_Chain(pixels, bounds, pixels.size() == 2);
  Draw_Shape(bounds, false, [&](QPainter& on) { on.drawPolyline(pixels.data(), static_cast<int>(pixels.size())); });
}

void ImageSurface::Polygon(std::span<const QPointF> points) {
  if (points.size() < 2) return;
  const QRect bounds = Bounds_Of(points);
  Draw_Shape(bounds, Filled(),
             [&](QPainter& on) { on.drawPolygon(pixels.data(), static_cast<int>(pixels.size()), Qt::OddEvenFill); });
}

void ImageSurface::Veil(std::span<const QPointF> points, QRgb color) {
  if (points.size() < 3 || !Bounds_Of(points).intersects(clip)) return;
  QPainterPath path(pixels[0]);
  for (size_t i = 1; i < pixels.size(); ++i) path.lineTo(pixels[i]);
  painter.fillPath(path, QColor(qRed(color), qGreen(color), qBlue(color), half));
}

void ImageSurface::Bezier(std::span<const QPointF> points, bool closed) {
  if (points.size() < 4) return;
  const QRect bounds = Bounds_Of(points);
  QPainterPath path(pixels[0]);
  for (size_t i = 1; i + 2 < pixels.size(); i += 3) path.cubicTo(pixels[i], pixels[i + 1], pixels[i + 2]);
  if (closed) path.closeSubpath();
  Draw_Shape(bounds, closed && Filled(), [&](QPainter& on) {
    if (!closed) on.setBrush(Qt::NoBrush);
    on.drawPath(path);
  });
}

void ImageSurface::Tell_Text() {
  if (!(told.valid && told.forText && told.penColor == pen.ForeColor)) {
    painter.setPen(QColor::fromRgb(pen.ForeColor));
    told = {};
    told.penColor = pen.ForeColor;
    told.forText = told.valid = true;
  }
  if (paintedFace != face) {
    painter.setFont(face->font);
    paintedFace = face;
  }
}

void ImageSurface::Print(QPointF at, const QString& text) {
  const QPoint place = Whole(at);
  // A glyph may reach a little beyond its box, italics to the side.
  const int spare = face->lineHeight;
  if (pen.mode == DrawMode::Nop || place.x() - spare > clip.right() || place.y() - spare > clip.bottom()) return;
  const QRect bounds(place, QSize(face->TextWidth(text), face->TextHeight(text)));
  const QRect touched = bounds.adjusted(-spare, -spare, spare, spare);
  if (!Visible(touched)) return;
  const auto draw = [&](QPainter& on, FontFace::Edge edge) {
    For_Each_Line(text, [&](QStringView line, int number) {
      const QPoint corner = place + QPoint(0, face->LineTop(number));
      const QPoint baseline = corner + QPoint(0, face->ascent);
      if (line.isEmpty() || (edge == FontFace::Edge::Smooth && face->Draw_Plain(on, baseline, line))) return;
      // A kept text has its underline a pixel aside.
      if (face->key.underline || line.size() > longestKeptLine)
        on.drawText(baseline, face->Shown(line.toString()));
      else
        on.drawStaticText(corner, face->Prepared(line.toString(), edge));
    });
  };
  if (pen.mode == DrawMode::Copy) {
    Tell_Text();
    draw(painter, FontFace::Edge::Smooth);
    return;
  }
  Through_Scratch(touched, [&](QPainter& on) {
    on.setPen(QColor::fromRgb(penMark));
    on.setFont(face->hard);
    draw(on, FontFace::Edge::Hard);
  });
}

void ImageSurface::PrintRotated(QPointF at, const QString& text, double degrees) {
  const QPoint place = Whole(at);
  const int reach = face->TextWidth(text) + face->TextHeight(text) + face->lineHeight;
  const QRect touched = QRect(place, QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
  if (!Visible(touched)) return;
  const auto draw = [&](QPainter& on) {
    const QTransform former = on.transform();
    on.translate(place);
    on.rotate(std::isfinite(degrees) ? -degrees : 0);
    For_Each_Line(text, [&](QStringView line, int number) {
      on.drawText(QPoint(0, face->LineTop(number) + face->ascent), face->Shown(line.toString()));
    });
    on.setTransform(former);
  };
  if (pen.mode == DrawMode::Copy) {
    Tell_Text();
    draw(painter);
    return;
  }
  Through_Scratch(touched, [&](QPainter& on) {
    on.setPen(QColor::fromRgb(penMark));
    on.setFont(face->hard);
    draw(on);
  });
}

std::unique_ptr<Surface> Make_Surface(QImage& image) { return std::make_unique<ImageSurface>(image); }
