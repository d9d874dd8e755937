#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "platform/error.h"
#include "platform/near.h"
#include "platform/pdf_images.h"
#include "platform/surface_image.h"

namespace {

QPainter::CompositionMode Composition_Of(DrawMode mode) {
  switch (mode) {
    case DrawMode::Invert:
      return QPainter::RasterOp_NotDestination;
    case DrawMode::And:
      return QPainter::RasterOp_SourceAndDestination;
    case DrawMode::NotXor:
      return QPainter::RasterOp_NotSourceXorDestination;
    default:
      return QPainter::CompositionMode_SourceOver;
  }
}

// The surface over a page. A hatch is drawn as lines clipped to the shape.
class PageSurface final : public FontedSurface {
 public:
  PageSurface(QPaintDevice& page, const PageView& view) : painter(own), modes(view.modes) {
    if (!own.begin(&page)) Raise(errors::printer);
    Set_Up(view);
  }
  PageSurface(QPainter& page, const PageView& view) : painter(page), modes(view.modes) {
    if (!painter.isActive()) Raise(errors::printer);
    Set_Up(view);
  }
  ~PageSurface() override { painter.restore(); }

  QRectF Extent() const override { return extent; }
  bool IsPaper() const override { return true; }
  void Cls(QRgb color) override { painter.fillRect(extent, QColor::fromRgb(color)); }
  void SetClip(const QRectF& area) override {
    if (area.isEmpty())
      painter.setClipping(false);
    else
      painter.setClipRect(Near(area));
  }
  using Surface::PaintPicture;
  void PaintPicture(const QRectF& onto, const QImage& picture, const QRectF& from) override {
    const QRectF target = Near(onto), source = Near(from);
    if (picture.isNull() || target.isEmpty() || modes == PageModes::CombiningOnly) return;
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const QRectF whole = QRectF(source.toAlignedRect() & picture.rect());
    if (whole == source) return Draw_Part(target, picture, whole.toRect());
    // A page takes whole pixels only: the rest of those cut through lies behind a clip, so that sheets meet exactly.
    if (whole.isEmpty()) return;
    const double x = target.width() / source.width(), y = target.height() / source.height();
    const QRectF larger(target.left() + (whole.left() - source.left()) * x,
                        target.top() + (whole.top() - source.top()) * y, whole.width() * x, whole.height() * y);
    painter.save();
    painter.setClipRect(target, Qt::IntersectClip);
    Draw_Part(larger, picture, whole.toRect());
    painter.restore();
  }
  void Line(QPointF from, QPointF to) override {
    if (!Begin()) return;
    painter.setPen(Pen());
    painter.drawLine(Near(from), Near(to));
  }
  void Box(const QRectF& box) override {
    QPainterPath path;
    path.addRect(Middle_Of_Rim(box));
    Draw(path, true, Qt::MiterJoin);
  }
  void FilledBox(const QRectF& box, QRgb color) override {
    if (pen.mode == DrawMode::Nop || modes == PageModes::CombiningOnly) return;
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.fillRect(Near(box), QColor::fromRgb(color));
  }
  void Ellipse(const QRectF& box) override {
    QPainterPath path;
    path.addEllipse(Middle_Of_Rim(box));
    Draw(path, true, Qt::RoundJoin);
  }
  void Polyline(std::span<const QPointF> points) override {
    if (points.size() < 2 || !Begin()) return;
    if (pen.mode == DrawMode::Copy) {
      painter.setPen(Pen());
      std::vector<QPointF> held(points.begin(), points.end());
      for (QPointF& point : held) point = Near(point);
      return painter.drawPolyline(held.data(), static_cast<int>(held.size()));
    }
    // As one stroke: pieces that meet or cross must not be combined twice.
    painter.strokePath(Chain(points), Pen());
  }
  void Polygon(std::span<const QPointF> points) override {
    if (points.size() < 2) return;
    QPainterPath path = Chain(points);
    path.closeSubpath();
    Draw(path, true, Qt::RoundJoin);
  }
  void Veil(std::span<const QPointF> points, QRgb color) override {
    if (points.size() < 3) return;
    painter.fillPath(Chain(points), QColor(qRed(color), qGreen(color), qBlue(color), 128));
  }
  void Bezier(std::span<const QPointF> points, bool closed) override {
    if (points.size() < 4) return;
    QPainterPath path(Near(points[0]));
    for (size_t i = 1; i + 2 < points.size(); i += 3)
      path.cubicTo(Near(points[i]), Near(points[i + 1]), Near(points[i + 2]));
    if (closed) path.closeSubpath();
    Draw(path, closed, Qt::RoundJoin);
  }
  void Print(QPointF at, const QString& text) override { PrintRotated(at, text, 0); }
  void PrintRotated(QPointF at, const QString& text, double degrees) override;

 private:
  static QPainterPath Chain(std::span<const QPointF> points) {
    QPainterPath path(Near(points[0]));
    for (size_t i = 1; i < points.size(); ++i) path.lineTo(Near(points[i]));
    return path;
  }
  // The pen lies on the rim inside, as on the screen.
  QRectF Middle_Of_Rim(const QRectF& box) const {
    const double inset = pen.pen == PenStyle::None ? 0 : std::max(Near(pen.DrawWidth), 0.0) / 2;
    QRectF rim = Near(box);
    if (rim.width() > 2 * inset && rim.height() > 2 * inset) rim.adjust(inset, inset, -inset, -inset);
    return rim;
  }
  QPen Pen() const { return Pen_Of(pen, pen.ForeColor, std::max(Near(pen.DrawWidth), 0.05)); }
  void Draw(const QPainterPath& path, bool filled, Qt::PenJoinStyle join);
  void Hatch(const QPainterPath& path);
  void Draw_Part(const QRectF& target, const QImage& picture, const QRect& part) {
    PdfImages* document = Pdf_Images_Of(painter.device());
    const QImage standIn = document ? document->Stand_In(picture, part) : QImage();
    if (standIn.isNull())
      painter.drawImage(target, picture, part);
    else
      painter.drawImage(target, standIn);
  }

  void Set_Up(const PageView& view) {
    painter.save();
    painter.resetTransform();
    // A scan must not become blurred by a lossy encoding.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.translate(view.origin);
    painter.scale(view.scaleX, view.scaleY);
    const QPaintDevice& page = *painter.device();
    extent = QRectF(-view.origin.x() / view.scaleX, -view.origin.y() / view.scaleY, page.width() / view.scaleX,
                    page.height() / view.scaleY);
  }
  // Sets the painter's mode; false if nothing is to be drawn.
  bool Begin() {
    if (pen.mode == DrawMode::Nop) return false;
    const bool copy = pen.mode == DrawMode::Copy;
    if (copy ? modes == PageModes::CombiningOnly : modes == PageModes::CopyOnly) return false;
    const bool combine = modes == PageModes::Combining || modes == PageModes::CombiningOnly;
    painter.setCompositionMode(Composition_Of(combine ? pen.mode : DrawMode::Copy));
    return true;
  }

  QPainter own;
  QPainter& painter;
  QRectF extent;
  PageModes modes;
};

void PageSurface::Draw(const QPainterPath& path, bool filled, Qt::PenJoinStyle join) {
  if (!Begin()) return;
  if (filled && pen.fill == FillStyle::Solid)
    painter.fillPath(path, QColor::fromRgb(pen.FillColor));
  else if (filled && pen.fill != FillStyle::None)
    Hatch(path);
  if (pen.pen == PenStyle::None) return;
  QPen rim = Pen();
  rim.setJoinStyle(join);
  painter.strokePath(path, rim);
}

// Lines 8 pixels apart that lie fast on the page, so that the hatches of neighbours meet.
void PageSurface::Hatch(const QPainterPath& path) {
  constexpr double apart = 8;
  const QRectF box = path.boundingRect().intersected(extent);
  if (box.isEmpty()) return;
  QList<QLineF> lines;
  const auto first = [](double from, double offset) { return std::ceil((from - offset) / apart) * apart + offset; };
  const bool cross = pen.fill == FillStyle::Cross, diagonals = pen.fill == FillStyle::DiagonalCross;
  if (cross || pen.fill == FillStyle::Horizontal)
    for (double y = first(box.top(), 4.5); y < box.bottom(); y += apart) lines << QLineF(box.left(), y, box.right(), y);
  if (cross || pen.fill == FillStyle::Vertical)
    for (double x = first(box.left(), 4.5); x < box.right(); x += apart) lines << QLineF(x, box.top(), x, box.bottom());
  if (diagonals || pen.fill == FillStyle::Upward)
    for (double sum = first(box.left() + box.top(), 1); sum < box.right() + box.bottom(); sum += apart)
      lines << QLineF(sum - box.top(), box.top(), sum - box.bottom(), box.bottom());
  if (diagonals || pen.fill == FillStyle::Downward)
    for (double less = first(box.left() - box.bottom(), 0); less < box.right() - box.top(); less += apart)
      lines << QLineF(less + box.top(), box.top(), less + box.bottom(), box.bottom());
  painter.save();
  painter.setClipPath(path, Qt::IntersectClip);
  const QPen thin(QColor::fromRgb(pen.FillColor), 1, Qt::SolidLine, Qt::FlatCap);
  if (pen.mode == DrawMode::Copy) {
    painter.setPen(thin);
    painter.drawLines(lines);
  } else {
    QPainterPath all;
    for (const QLineF& line : lines) {
      all.moveTo(line.p1());
      all.lineTo(line.p2());
    }
    painter.strokePath(all, thin);
  }
  painter.restore();
}

// Each line is drawn to the width it has on the screen: the page lays out its fonts unhinted, a little wider or
// narrower.
void PageSurface::PrintRotated(QPointF at, const QString& text, double degrees) {
  if (!Begin()) return;
  painter.save();
  painter.setPen(QColor::fromRgb(pen.ForeColor));
  painter.setFont(face->font);
  painter.translate(Near(at));
  painter.rotate(std::isfinite(degrees) ? -degrees : 0);
  For_Each_Line(text, [&](QStringView line, int number) {
    const QString shown = face->Shown(line.toString());
    if (shown.isEmpty()) return;
    const double drawn = QFontMetricsF(face->font, painter.device()).horizontalAdvance(shown);
    const double wanted = face->LineWidth(line);
    painter.save();
    painter.translate(0, face->LineTop(number) + face->ascent);
    if (drawn > 0 && wanted > 0) painter.scale(wanted / drawn, 1);
    painter.drawText(QPointF(0, 0), shown);
    painter.restore();
  });
  painter.restore();
}

}  // namespace

std::unique_ptr<Surface> Make_Page_Surface(QPaintDevice& page, const PageView& view) {
  return std::make_unique<PageSurface>(page, view);
}

std::unique_ptr<Surface> Make_Page_Surface(QPainter& page, const PageView& view) {
  return std::make_unique<PageSurface>(page, view);
}
