#include "support/recording_surface.h"

#include <QStringList>
#include <algorithm>
#include <iterator>

namespace {

QString Point_Text(QPointF point) { return QStringLiteral("%1,%2").arg(point.x()).arg(point.y()); }

}  // namespace

QString DrawCall::Text() const {
  QStringList parts{what};
  for (const QPointF& point : points) parts << Point_Text(point);
  if (!box.isNull()) parts << Point_Text(box.topLeft()) << QStringLiteral("%1x%2").arg(box.width()).arg(box.height());
  if (!text.isNull()) parts << text;
  if (what == QLatin1String("PrintRotated")) parts << QString::number(degrees);
  if (what == QLatin1String("FilledBox") || what == QLatin1String("Cls"))
    parts << QString::number(color & 0xffffff, 16).rightJustified(6, QLatin1Char('0'));
  return parts.join(QLatin1Char(' '));
}

RecordingSurface::RecordingSurface(QSize size, bool onPaper)
    : extent(QPointF(0, 0), size), paper(onPaper), ground(Make_Canvas(1, 1)), measure(Make_Surface(ground)) {}
RecordingSurface::~RecordingSurface() = default;

std::vector<DrawCall> RecordingSurface::Calls(const QString& what) const {
  std::vector<DrawCall> found;
  std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
               [&](const DrawCall& c) { return c.what == what; });
  return found;
}

QStringList RecordingSurface::Texts() const {
  QStringList texts;
  for (const DrawCall& call : calls) texts << call.Text();
  return texts;
}

DrawCall& RecordingSurface::Note(const char* what) {
  DrawCall& call = calls.emplace_back();
  call.what = QString::fromLatin1(what);
  call.pen = pen;
  call.font = Font();
  return call;
}

void RecordingSurface::Cls(QRgb color) { Note("Cls").color = color; }
void RecordingSurface::SetClip(const QRectF& area) { Note("SetClip").box = area; }
void RecordingSurface::PaintPicture(const QRectF& target, const QImage&, const QRectF& source) {
  DrawCall& call = Note("PaintPicture");
  call.box = target;
  call.source = source;
}
void RecordingSurface::Line(QPointF from, QPointF to) { Note("Line").points = {from, to}; }
void RecordingSurface::Box(const QRectF& box) { Note("Box").box = box; }
void RecordingSurface::FilledBox(const QRectF& box, QRgb color) {
  DrawCall& call = Note("FilledBox");
  call.box = box;
  call.color = color;
}
void RecordingSurface::Ellipse(const QRectF& box) { Note("Ellipse").box = box; }
void RecordingSurface::Polyline(std::span<const QPointF> points) {
  Note("Polyline").points.assign(points.begin(), points.end());
}
void RecordingSurface::Polygon(std::span<const QPointF> points) {
  Note("Polygon").points.assign(points.begin(), points.end());
}
void RecordingSurface::Bezier(std::span<const QPointF> points, bool closed) {
  DrawCall& call = Note("Bezier");
  call.points.assign(points.begin(), points.end());
  call.closed = closed;
}
void RecordingSurface::Print(QPointF at, const QString& text) {
  DrawCall& call = Note("Print");
  call.points = {at};
  call.text = text;
}
void RecordingSurface::PrintRotated(QPointF at, const QString& text, double degrees) {
  DrawCall& call = Note("PrintRotated");
  call.points = {at};
  call.text = text;
  call.degrees = degrees;
}
