#include "windows/desktop/application.h"

bool Application::notify(QObject* receiver, QEvent* event) {
  bool result = false;
  Run_Guarded([&] { result = QApplication::notify(receiver, event); });
  return result;
}
