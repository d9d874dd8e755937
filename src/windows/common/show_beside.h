#pragma once
#include <QWidget>

// Brings a window that stays open beside the map to the front. One of its kind is enough; it goes when it is closed.
template <typename Window>
Window* Show_Beside(QWidget* parent) {
  auto* window = parent ? parent->findChild<Window*>() : nullptr;
  if (!window) {
    window = new Window(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
  }
  window->show();
  window->raise();
  window->activateWindow();
  return window;
}
