#include "windows/common/window_support.h"

#include <QFile>
#include <QPainter>
#include <QStyleOption>

QIcon Program_Icon(const QString& name) {
  const QString path = QStringLiteral(":/icons/%1.svg").arg(name);
  return !name.isEmpty() && QFile::exists(path) ? QIcon(path) : QIcon();
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::Show_Text(const QString& whole) {
  if (whole == text) return;
  text = whole;
  setAccessibleName(whole);
  Update_Tip();
  update();
}

// Lines of a longer text stand one behind the other.
static QString One_Line(const QString& text) { return text.simplified(); }

void ElidedLabel::Update_Tip() {
  const bool fits = fontMetrics().horizontalAdvance(One_Line(text)) <= contentsRect().width();
  setToolTip(fits ? QString() : text);
}

QSize ElidedLabel::sizeHint() const { return {120, fontMetrics().height() + 6}; }
QSize ElidedLabel::minimumSizeHint() const { return {40, fontMetrics().height() + 6}; }

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Update_Tip();
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  drawFrame(&painter);
  const QRect room = contentsRect().adjusted(2, 0, -2, 0);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   fontMetrics().elidedText(One_Line(text), Qt::ElideRight, room.width()));
}
