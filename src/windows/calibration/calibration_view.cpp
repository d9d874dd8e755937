#include "windows/calibration/calibration_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace {

constexpr double leastZoom = 0.02, mostZoom = 16, zoomStep = 1.25, notch = 120;
constexpr int wheelStep = 90, catchPixels = 10;
constexpr double leastArrow = 1, arrowScale = 10;  // pixels of the map; arrows are drawn ten times as long

const QColor pointColor(0, 90, 200), offColor(130, 130, 130), badColor(210, 20, 20), netColor(200, 0, 160),
    litColor(255, 170, 0);

}  // namespace

CalibrationView::CalibrationView(QWidget* parent) : QAbstractScrollArea(parent) {
  viewport()->setMouseTracking(true);
  viewport()->setCursor(Qt::CrossCursor);
  viewport()->setAutoFillBackground(false);
  setFocusPolicy(Qt::StrongFocus);
}

void CalibrationView::Show_Picture(const QImage& shown) {
  picture = shown;
  reducedZoom = 0;
  Fit_In_Window();
}

void CalibrationView::Show_Content(Content shown) {
  content = std::move(shown);
  viewport()->update();
}

// Places ------------------------------------------------------------------------------------------------------------

QPointF CalibrationView::Origin() const {
  const QSizeF size = QSizeF(picture.size()) * zoom;
  const auto start = [](double length, int room, int scrolled) {
    return length < room ? (room - length) / 2 : -scrolled;
  };
  return {std::floor(start(size.width(), viewport()->width(), horizontalScrollBar()->value())),
          std::floor(start(size.height(), viewport()->height(), verticalScrollBar()->value()))};
}

QPointF CalibrationView::Map_Pixel(QPointF at) const { return (at - Origin()) / zoom - QPointF(0.5, 0.5); }
QPointF CalibrationView::View_Point(QPointF pixel) const { return (pixel + QPointF(0.5, 0.5)) * zoom + Origin(); }
double CalibrationView::Catch_Reach() const { return catchPixels / zoom; }

void CalibrationView::Set_Ranges() {
  const QSizeF size = QSizeF(picture.size()) * zoom;
  const auto set = [](QScrollBar* bar, double length, int room) {
    bar->setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
    bar->setPageStep(room);
    bar->setSingleStep(room / 10);
  };
  set(horizontalScrollBar(), size.width(), viewport()->width());
  set(verticalScrollBar(), size.height(), viewport()->height());
}

void CalibrationView::Zoom_To(double factor, QPointF at) {
  const QPointF pixel = Map_Pixel(at);
  whole = false;
  zoom = std::clamp(factor, leastZoom, mostZoom);
  Set_Ranges();
  const QPointF wanted = (pixel + QPointF(0.5, 0.5)) * zoom - at;
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(wanted.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(wanted.y())));
  viewport()->update();
}

void CalibrationView::Fit_In_Window() {
  if (picture.isNull()) return;
  const double wide = static_cast<double>(viewport()->width()) / picture.width(),
               high = static_cast<double>(viewport()->height()) / picture.height();
  Zoom_To(std::min({wide, high, 1.0}), {});
  whole = true;
}

void CalibrationView::Make_Visible(QPointF pixel) {
  constexpr int margin = 30;
  const QRectF inside = QRectF(viewport()->rect()).adjusted(margin, margin, -margin, -margin);
  const QPointF at = View_Point(pixel);
  if (inside.contains(at)) return;
  const QPointF shift = at - inside.center();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + static_cast<int>(shift.x()));
  verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(shift.y()));
  viewport()->update();
}

// Painting ----------------------------------------------------------------------------------------------------------

void CalibrationView::Paint_Picture(QPainter& painter) {
  const QPointF origin = Origin();
  if (zoom < 1) {
    if (reducedZoom != zoom) {
      const QSize size = (QSizeF(picture.size()) * zoom).toSize().expandedTo({1, 1});
      // Colours of a table would be mixed from the table's few again.
      const QImage colours = picture.convertToFormat(QImage::Format_RGB32);
      reduced = QPixmap::fromImage(colours.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
      reducedZoom = zoom;
    }
    painter.drawPixmap(origin.toPoint(), reduced);
    return;
  }
  const QRectF shown = QRectF((QPointF() - origin) / zoom, QSizeF(viewport()->size()) / zoom);
  const QRect part = shown.toAlignedRect().intersected(picture.rect());
  painter.drawImage(QRectF(QPointF(part.topLeft()) * zoom + origin, QSizeF(part.size()) * zoom), picture, part);
}

void CalibrationView::Paint_Net(QPainter& painter) const {
  if (!content.net) return;
  QPen pen(netColor, 1);
  pen.setCosmetic(true);
  painter.setPen(pen);
  for (const auto* family : {&content.net->NetBLines, &content.net->NetLLines})
    for (const auto& line : *family)
      for (size_t k = 1; k < line.size(); ++k)
        if (line[k - 1].X != netGap && line[k].X != netGap)
          painter.drawLine(View_Point(QPointF(line[k - 1].X, line[k - 1].Y)),
                           View_Point(QPointF(line[k].X, line[k].Y)));
}

void CalibrationView::Paint_Points(QPainter& painter) const {
  constexpr double arm = 9, gap = 2;
  for (size_t i = 0; i < content.points.size(); ++i) {
    const ControlPoint& point = content.points[i];
    const QPointF at = View_Point(point.pixel);
    const bool outlier = content.fit && content.fit->points[i].outlier;
    const QColor color = !point.used ? offColor : outlier ? badColor : pointColor;
    if (content.lit == i || content.selected == i) {
      painter.setPen(QPen(litColor, content.selected == i ? 3 : 2));
      painter.drawEllipse(at, arm + 3, arm + 3);
    }
    painter.setPen(QPen(color, 2));
    for (const QPointF way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
      painter.drawLine(at + way * gap, at + way * arm);
    painter.drawText(at + QPointF(arm + 2, -arm + 2), QString::number(i + 1));
    if (!content.fit || !point.used || content.fit->points[i].pixels < leastArrow / arrowScale) continue;
    const QPointF way = content.fit->points[i].arrow * zoom * arrowScale, tip = at + way;
    painter.setPen(QPen(badColor, 2));
    painter.drawLine(at, tip);
    const double length = std::hypot(way.x(), way.y());
    if (length < 4) continue;
    const QPointF back = way / length * -6, side(back.y() * 0.5, -back.x() * 0.5);
    painter.drawLine(tip, tip + back + side);
    painter.drawLine(tip, tip + back - side);
  }
}

void CalibrationView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().color(QPalette::Dark));
  if (picture.isNull()) return;
  Paint_Picture(painter);
  painter.setRenderHint(QPainter::Antialiasing);
  Paint_Net(painter);
  Paint_Points(painter);
}

void CalibrationView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (whole) Fit_In_Window();
  Set_Ranges();
}

// Mouse and keys ----------------------------------------------------------------------------------------------------

void CalibrationView::mousePressEvent(QMouseEvent* event) {
  if (picture.isNull()) return;
  if (event->button() == Qt::LeftButton) {
    const QPointF pixel = Map_Pixel(event->position());
    if (!QRectF(-0.5, -0.5, picture.width(), picture.height()).contains(pixel)) return;
    dragging = true;
    Q_EMIT Pressed(pixel);
  } else {
    panFrom = event->position().toPoint();
    viewport()->setCursor(Qt::ClosedHandCursor);
  }
}

void CalibrationView::mouseMoveEvent(QMouseEvent* event) {
  if (picture.isNull()) return;
  const QPoint at = event->position().toPoint();
  if (panFrom) {
    const QPoint shift = at - *panFrom;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - shift.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - shift.y());
    panFrom = at;
    viewport()->update();
    return;
  }
  const QPointF pixel = Map_Pixel(event->position());
  if (dragging) Q_EMIT Dragged(pixel);
  Q_EMIT Hovered(pixel);
}

void CalibrationView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && dragging) {
    dragging = false;
    Q_EMIT Released(Map_Pixel(event->position()));
  } else if (event->button() != Qt::LeftButton) {
    panFrom.reset();
    viewport()->setCursor(Qt::CrossCursor);
  }
}

void CalibrationView::wheelEvent(QWheelEvent* event) {
  event->accept();
  const QPoint turned = event->angleDelta();
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    Zoom_To(zoom * std::pow(zoomStep, turned.y() / notch), event->position());
    return;
  }
  QPoint shift = event->pixelDelta();
  if (shift.isNull()) shift = turned * wheelStep / static_cast<int>(notch);
  if (event->modifiers().testFlag(Qt::ShiftModifier)) shift = shift.transposed();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - shift.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - shift.y());
  viewport()->update();
}

void CalibrationView::keyPressEvent(QKeyEvent* event) {
  const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? 0.1 : 1;
  const QPointF middle = QRectF(viewport()->rect()).center();
  switch (event->key()) {
    case Qt::Key_Left:
      return Q_EMIT Nudged({-step, 0});
    case Qt::Key_Right:
      return Q_EMIT Nudged({step, 0});
    case Qt::Key_Up:
      return Q_EMIT Nudged({0, -step});
    case Qt::Key_Down:
      return Q_EMIT Nudged({0, step});
    case Qt::Key_Plus:
      return Zoom_To(zoom * zoomStep, middle);
    case Qt::Key_Minus:
      return Zoom_To(zoom / zoomStep, middle);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}
