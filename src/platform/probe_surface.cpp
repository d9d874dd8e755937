#include <algorithm>

#include "platform/near.h"
#include "platform/surface_text.h"

namespace {

// Takes every call of a drawing pass and keeps the bounds of those in a combining mode.
class Probe final : public Fonted<ProbeSurface> {
 public:
  explicit Probe(const QRectF& area) : extent(area) {}

  QRectF Take_Combined() override { return std::exchange(combined, QRectF()); }
  QRectF Extent() const override { return extent; }
  bool IsPaper() const override { return true; }
  void Cls(QRgb) override {}
  void SetClip(const QRectF& area) override { clip = area; }
  using Surface::PaintPicture;
  void PaintPicture(const QRectF&, const QImage&, const QRectF&) override {}
  void Line(QPointF from, QPointF to) override {
    if (Combines()) Touch(QRectF(from, to).normalized());
  }
  void Box(const QRectF& box) override {
    if (Combines()) Touch(box.normalized());
  }
  void FilledBox(const QRectF&, QRgb) override {}
  void Ellipse(const QRectF& box) override {
    if (Combines()) Touch(box.normalized());
  }
  void Polyline(std::span<const QPointF> points) override { Touch_Points(points); }
  void Polygon(std::span<const QPointF> points) override { Touch_Points(points); }
  void Veil(std::span<const QPointF>, QRgb) override {}  // pages mix colours themselves
  void Bezier(std::span<const QPointF> points, bool) override { Touch_Points(points); }
  void Print(QPointF at, const QString& text) override { PrintRotated(at, text, 0); }
  void PrintRotated(QPointF at, const QString& text, double) override {
    if (!Combines()) return;
    const double reach = TextWidth(text) + TextHeight(text);  // however it is turned
    Touch(QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach));
  }

 private:
  bool Combines() const { return pen.mode != DrawMode::Copy && pen.mode != DrawMode::Nop; }
  void Touch(const QRectF& box) {
    const double out = Near(pen.DrawWidth) + 1;
    combined |= Near(box).adjusted(-out, -out, out, out) & (clip.isEmpty() ? extent : clip);
  }
  void Touch_Points(std::span<const QPointF> points) {
    if (!Combines() || points.empty()) return;
    QPointF least = Near(points[0]), most = least;
    for (const QPointF& place : points) {
      const QPointF point = Near(place);
      least = {std::min(least.x(), point.x()), std::min(least.y(), point.y())};
      most = {std::max(most.x(), point.x()), std::max(most.y(), point.y())};
    }
    Touch(QRectF(least, most));
  }

  QRectF extent, clip, combined;
};

}  // namespace

std::unique_ptr<ProbeSurface> Make_Probe_Surface(const QRectF& extent) { return std::make_unique<Probe>(extent); }
