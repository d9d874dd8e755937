#include "windows/calibration/magnifier.h"

#include <QPainter>
#include <cmath>

static constexpr double enlarged = 8;  // screen pixels a pixel of the picture

Magnifier::Magnifier(QWidget* parent) : QFrame(parent) {
  setFrameStyle(QFrame::Panel | QFrame::Sunken);
  setMinimumHeight(90);
  setMaximumHeight(170);
}

void Magnifier::Show_Place(const QImage& shown, QPointF at, std::optional<QPointF> found) {
  picture = shown;
  place = at;
  crossing = found;
  update();
}

void Magnifier::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect room = contentsRect();
  painter.fillRect(room, palette().color(QPalette::Dark));
  if (!picture.isNull()) {
    painter.setClipRect(room);
    const QPointF middle = QRectF(room).center();
    const auto seen = [&](QPointF pixel) { return middle + (pixel - place) * enlarged; };
    const QSizeF part = QSizeF(room.size()) / enlarged;
    const QRect wanted =
        QRectF(place - QPointF(part.width() / 2, part.height() / 2), part).toAlignedRect().adjusted(-1, -1, 1, 1) &
        picture.rect();
    painter.drawImage(QRectF(seen(QPointF(wanted.topLeft()) - QPointF(0.5, 0.5)), QSizeF(wanted.size()) * enlarged),
                      picture, wanted);
    painter.setPen(QPen(QColor(0, 90, 200), 1));
    painter.drawLine(QPointF(middle.x(), room.top()), QPointF(middle.x(), room.bottom()));
    painter.drawLine(QPointF(room.left(), middle.y()), QPointF(room.right(), middle.y()));
    if (crossing) {
      painter.setPen(QPen(QColor(210, 20, 20), 2));
      painter.drawEllipse(seen(*crossing), 6, 6);
    }
    painter.setClipping(false);
  }
  QFrame::paintEvent(event);
}
