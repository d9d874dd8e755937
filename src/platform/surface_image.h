#pragma once
#include <QPainter>
#include <QRect>
#include <vector>

#include "platform/surface_text.h"

// The surface over an image. Plain boxes, blits and all modes but Copy are written straight into the pixels; shapes
// and texts in Copy mode are drawn by the kept painter.
//
// In the other modes a shape is first drawn into a scratch mask that tells pen and fill apart, and each pixel it
// touches is then combined once. Drawn directly, a rim on which pen and fill meet or a line that crosses itself would
// be combined twice, which takes it away again.
class ImageSurface final : public FontedSurface {
 public:
  explicit ImageSurface(QImage& image);
  ~ImageSurface() override;

  QRectF Extent() const override { return QRectF(whole); }
  bool IsPaper() const override { return false; }
  void Cls(QRgb color) override;
  void SetClip(const QRectF& area) override;
  using Surface::PaintPicture;
  void PaintPicture(const QRectF& target, const QImage& picture, const QRectF& source) override;
  void Line(QPointF from, QPointF to) override;
  void Box(const QRectF& box) override;
  void FilledBox(const QRectF& box, QRgb color) override;
  void Ellipse(const QRectF& box) override;
  void Polyline(std::span<const QPointF> points) override;
  void Polygon(std::span<const QPointF> points) override;
  void Veil(std::span<const QPointF> points, QRgb color) override;
  void Bezier(std::span<const QPointF> points, bool closed) override;
  void Print(QPointF at, const QString& text) override;
  void PrintRotated(QPointF at, const QString& text, double degrees) override;

 private:
  // What the kept painter was last told, so that it is told again only when it changed.
  struct Told {
    QRgb penColor = 0, brushColor = 0;
    double width = -1;
    PenStyle pen = PenStyle::None;
    bool filled = false, forText = false, valid = false;
  };
  QRgb* RowAt(int y) const { return reinterpret_cast<QRgb*>(bits + static_cast<qsizetype>(y) * bytesPerLine); }
  QRgb* ScratchRow(int y) const {
    return reinterpret_cast<QRgb*>(scratchBits + static_cast<qsizetype>(y) * scratch.bytesPerLine());
  }
  int PenWidth() const;
  int RimWidth() const { return pen.pen == PenStyle::None ? 0 : PenWidth(); }
  bool Filled() const { return pen.fill != FillStyle::None; }
  bool Visible(const QRect& bounds) const { return pen.mode != DrawMode::Nop && bounds.intersects(clip); }
  QRect Bounds_Of(std::span<const QPointF> points);
  void Tell_Shape(bool filled);
  void Tell_Text();
  void Fill_Area(const QRect& area, QRgb color);
  void Hatch_Area(const QRect& area);
  void Draw_Rim(const QRect& box, int width);
  template <class Draw>
  void Draw_Shape(const QRect& bounds, bool filled, Draw draw);
  template <class Draw>
  void Through_Scratch(const QRect& bounds, Draw draw);
  template <class Mark>
  void For_Each_Band(const QRect& bounds, Mark mark);
  void Thin_Chain(std::span<const QPoint> points, const QRect& bounds, bool simple);
  void Combine_Scratch(const QRect& area);
  void Blit(const QRect& target, const QImage& picture, QPoint from);
  void Stretch(const QRect& target, const QImage& picture, const QRectF& source);

  uchar* bits = nullptr;
  qsizetype bytesPerLine = 0;
  QRect whole, clip;
  QPainter painter;
  Told told;
  const FontFace* paintedFace = nullptr;
  QImage scratch;  // marks of pen and fill, 0 between two shapes
  uchar* scratchBits = nullptr;
  QPainter mask;               // on the scratch image
  std::vector<QPoint> pixels;  // points of the shape in hand
};

// The pen of a state in that colour, `width` device pixels wide, with its gaps.
QPen Pen_Of(const PenState& state, QRgb color, double width);
