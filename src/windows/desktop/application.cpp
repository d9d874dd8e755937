#include "windows/desktop/application.h"

#include "state/run_guarded.h"

bool Application::notify(QObject* receiver, QEvent* event) {
  bool result = false;
  Run_Guarded([&] { result = QApplication::notify(receiver, event); });
  return result;
}
