#pragma once
#include <QImage>
#include <QString>
#include <memory>
#include <vector>

#include "platform/surface.h"

// One drawing call with the state it was made in.
struct DrawCall {
  QString what;  // name of the method: "Line", "Box", "Print", ...
  PenState pen;
  FontKey font;
  std::vector<QPointF> points;  // ends, corners, or the place of a text
  QRectF box;                   // of boxes, ellipses, clips and pictures (their target)
  QRectF source;                // part of a picture
  QString text;
  QRgb color = 0;       // of FilledBox and Cls
  double degrees = 0;   // of PrintRotated
  bool closed = false;  // of Bezier
  // "Box 10,20 30x40", "Line 1,2 3,4", "Print 5,6 Text": for comparing whole sequences.
  QString Text() const;
};

// A surface that draws nothing and writes down what it is told. Texts are measured as on an image.
class RecordingSurface : public Surface {
 public:
  explicit RecordingSurface(QSize size = {1600, 1000}, bool paper = false);
  ~RecordingSurface() override;

  const std::vector<DrawCall>& Calls() const { return calls; }
  std::vector<DrawCall> Calls(const QString& what) const;  // those of one method
  QStringList Texts() const;                               // every call as text
  int Count(const QString& what) const { return static_cast<int>(Calls(what).size()); }
  void Forget() { calls.clear(); }

  QRectF Extent() const override { return extent; }
  bool IsPaper() const override { return paper; }
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
  void Bezier(std::span<const QPointF> points, bool closed) override;
  bool SetFont(const FontKey& font) override { return measure->SetFont(font); }
  const FontKey& Font() const override { return measure->Font(); }
  int TextWidth(const QString& text) override { return measure->TextWidth(text); }
  int TextHeight(const QString& text) override { return measure->TextHeight(text); }
  void Print(QPointF at, const QString& text) override;
  void PrintRotated(QPointF at, const QString& text, double degrees) override;

 private:
  DrawCall& Note(const char* what);
  QRectF extent;
  bool paper;
  QImage ground;
  std::unique_ptr<Surface> measure;
  std::vector<DrawCall> calls;
};
