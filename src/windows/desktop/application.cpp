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

// A key that is held comes as pairs of a release and a press of the same moment, and is told as a repeated one only
// where both had come when the first was looked at.
bool Application::Is_Held(const QKeyEvent& key) {
  constexpr quint64 sameMoment = 5;  // ms; nobody's fingers are as quick
  if (key.type() == QEvent::KeyRelease) {
    released = {key.key(), key.timestamp()};
    return false;
  }
  const bool pair = key.timestamp() != 0 && key.key() == released.first && key.timestamp() >= released.second &&
                    key.timestamp() - released.second <= sameMoment;
  return key.isAutoRepeat() || pair;
}

// One press of the keys for steps is one step, however long they are held. An editor takes them even if it has no step
// of its own: then they belong to whom they belong elsewhere.
bool Application::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::ShortcutOverride && type != QEvent::KeyPress && type != QEvent::KeyRelease) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool held = Is_Held(*key);
  const bool back = key->matches(QKeySequence::Undo);
  const bool forward =
      key->matches(QKeySequence::Redo) || QKeySequence(key->keyCombination()) == QKeySequence("Ctrl+Y");
  if (type == QEvent::KeyRelease || !watched->isWidgetType() || !(back || forward)) return false;
  const std::optional<bool> own = Has_Own_Step(static_cast<QWidget*>(watched), back);
  if (own.value_or(false) || (!own && !held)) return false;
  event->setAccepted(held);
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
