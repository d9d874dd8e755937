#include "windows/objects/frmFarb_table.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace {
constexpr int columns = 8, rows = 2, count = columns * rows, cellWidth = 34, cellHeight = 28;
}

ColorTable::ColorTable(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColorTable::Show_Colors(const std::array<QRgb, 16>& shown) {
  colors = shown;
  update();
}

void ColorTable::Mark_Color(int number) {
  marked = number;
  if (number >= 0 && number < count) cursor = number;
  update();
}

QRect ColorTable::Cell(int number) const {
  return {number % columns * cellWidth, number / columns * cellHeight, cellWidth, cellHeight};
}

QSize ColorTable::sizeHint() const { return {columns * cellWidth, rows * cellHeight}; }

int ColorTable::At(QPoint place) const {
  for (int i = 0; i < count; ++i)
    if (Cell(i).contains(place)) return i;
  return -1;
}

bool ColorTable::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int number = At(help->pos());
  QToolTip::showText(help->globalPos(), number < 0 ? QString() : QStringLiteral("Farbe %1").arg(number), this);
  return true;
}

void ColorTable::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  for (int i = 0; i < count; ++i) {
    const QRect cell = Cell(i).adjusted(3, 3, -3, -3);
    painter.fillRect(cell, QColor::fromRgb(colors.at(static_cast<size_t>(i))));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(cell.adjusted(0, 0, -1, -1));
    if (i == marked) {
      painter.setPen(QPen(palette().color(isEnabled() ? QPalette::Highlight : QPalette::Mid), 2));
      painter.drawRect(Cell(i).adjusted(1, 1, -1, -1));
    }
    if (i == cursor && hasFocus()) {
      painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
      painter.drawRect(Cell(i).adjusted(0, 0, -1, -1));
    }
  }
}

void ColorTable::mousePressEvent(QMouseEvent* event) {
  const int number = At(event->position().toPoint());
  if (number < 0 || event->button() != Qt::LeftButton) return;
  cursor = number;
  update();
  Q_EMIT Picked(number);
}

void ColorTable::keyPressEvent(QKeyEvent* event) {
  int to = cursor;
  switch (event->key()) {
    case Qt::Key_Left:
      to -= 1;
      break;
    case Qt::Key_Right:
      to += 1;
      break;
    case Qt::Key_Up:
      to -= columns;
      break;
    case Qt::Key_Down:
      to += columns;
      break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Picked(cursor);
      return;
    default:
      return QWidget::keyPressEvent(event);
  }
  if (to >= 0 && to < count) cursor = to;
  update();
}
