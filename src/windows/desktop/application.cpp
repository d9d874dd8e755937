#include "windows/desktop/application.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>
#include <cstring>
#include <optional>

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

// Can what is typed there go a step back, or forward? Nothing for a widget that is no editor.
std::optional<bool> Has_Own_Step(QWidget* widget, bool back) {
  if (const auto* box = qobject_cast<QComboBox*>(widget))
    widget = box->lineEdit();
  else if (qobject_cast<QAbstractSpinBox*>(widget))
    widget = widget->findChild<QLineEdit*>();
  if (const auto* line = qobject_cast<QLineEdit*>(widget))
    return back ? line->isUndoAvailable() : line->isRedoAvailable();
  const auto* text = qobject_cast<QTextEdit*>(widget);
  const auto* plain = qobject_cast<QPlainTextEdit*>(widget);
  if (!text && !plain) return {};
  const QTextDocument* document = text ? text->document() : plain->document();
  return back ? document->isUndoAvailable() : document->isRedoAvailable();
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  installNativeEventFilter(this);
  installEventFilter(this);
}
Application::~Application() { removeNativeEventFilter(this); }

// An editor takes the keys for steps even if it has none: then they belong to whom they belong elsewhere.
bool Application::eventFilter(QObject* watched, QEvent* event) {
  if ((event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) || !watched->isWidgetType())
    return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool back = key->matches(QKeySequence::Undo);
  if (!back && !key->matches(QKeySequence::Redo)) return false;
  if (Has_Own_Step(static_cast<QWidget*>(watched), back).value_or(true)) return false;
  event->ignore();
  return true;
}

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
