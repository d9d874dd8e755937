#include "windows/desktop/application.h"

#include <QTimer>
#include <QWindow>
#include <cstring>

#include "state/run_guarded.h"

namespace {

constexpr int focusIn = 9;           // of the X protocol
constexpr size_t windowOfFocus = 4;  // where the event tells its window
constexpr int afterTheClick = 100;   // ms

// Qt asks for the keys when the window gets them, before it has heard of the click: as a request that is older than the
// user's last deed it is refused.
void Give_Keys_Back(quint32 id) {
  QWindow* const modal = QGuiApplication::modalWindow();
  if (!modal || modal->winId() == id) return;
  for (const QWindow* waits = modal->transientParent(); waits; waits = waits->transientParent())
    if (waits->winId() == id) QTimer::singleShot(afterTheClick, modal, [modal] { modal->requestActivate(); });
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) { installNativeEventFilter(this); }
Application::~Application() { removeNativeEventFilter(this); }

bool Application::notify(QObject* receiver, QEvent* event) {
  bool result = false;
  Run_Guarded([&] { result = QApplication::notify(receiver, event); });
  return result;
}

bool Application::nativeEventFilter(const QByteArray& eventType, void* message, [[maybe_unused]] qintptr* result) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const uchar*>(message);
  if ((event[0] & 0x7f) != focusIn) return false;
  quint32 window = 0;
  std::memcpy(&window, event + windowOfFocus, sizeof window);
  Give_Keys_Back(window);
  return false;
}
