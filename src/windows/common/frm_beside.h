#pragma once
#include <QWidget>

// Shows the window at the upper right corner of the main window's map, where it hides least of what it changes.
inline void Show_At_The_Side(QWidget& window, const QWidget* parent) {
  constexpr int fromRight = 40, fromTop = 120;
  window.show();
  if (parent) window.move(parent->mapToGlobal(QPoint(parent->width() - window.width() - fromRight, fromTop)));
}
