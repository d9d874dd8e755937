#include "windows/printing/frm_preview_picture.h"

#include <QMouseEvent>
#include <QPainter>

#include "platform/error.h"

namespace {
constexpr int smallestRectangle = 6;
}

PreviewPicture::PreviewPicture(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(320, 320);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize PreviewPicture::sizeHint() const { return {560, 520}; }

void PreviewPicture::Show_Map(PreviewMap shownMap) { map = std::move(shownMap); }

void PreviewPicture::Show_Sheets(const PrintGeometry& newGeometry, const Paper& newPaper) {
  geometry = newGeometry;
  paper = newPaper;
  text.clear();
  part = {};
  Draw();
}

void PreviewPicture::Show_Text(const QString& newText) {
  text = newText;
  update();
}

void PreviewPicture::Draw() {
  try {
    image = Draw_Preview(map, geometry, paper, size(), part, &shown);
  } catch (const Error& error) {
    text = error.text;
  }
  update();
}

void PreviewPicture::resizeEvent(QResizeEvent*) { Draw(); }

void PreviewPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!text.isEmpty()) {
    painter.fillRect(rect(), palette().window());
    painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, text);
    return;
  }
  painter.drawImage(0, 0, image);
  if (drawn.isEmpty()) return;
  for (const QPen& pen : {QPen(Qt::white, 1), QPen(Qt::black, 1, Qt::DashLine)}) {
    painter.setPen(pen);
    painter.drawRect(drawn);
  }
}

void PreviewPicture::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) drawn = QRect(event->position().toPoint(), QSize(1, 1));
}

void PreviewPicture::mouseMoveEvent(QMouseEvent* event) {
  if (drawn.isEmpty()) return;
  drawn.setBottomRight(event->position().toPoint());
  update();
}

void PreviewPicture::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QRect box = std::exchange(drawn, {}).normalized();
  const double mm = shown.width() / std::max(1, width());
  const bool isClick = box.width() < smallestRectangle || box.height() < smallestRectangle;
  part = isClick ? QRectF() : QRectF(shown.topLeft() + QPointF(box.topLeft()) * mm, QSizeF(box.size()) * mm);
  Draw();
}
