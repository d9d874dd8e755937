#include "windows/desktop/clipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "edit/copy.h"

void Install_Clipboard() {
  clipboardFace.text = [] { return QGuiApplication::clipboard()->text(); };
  clipboardFace.picture = [] { return QGuiApplication::clipboard()->image(); };
  clipboardFace.setText = [](const QString& text) { QGuiApplication::clipboard()->setText(text); };
}

namespace {

bool Is_Empty(QClipboard::Mode mode) {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData(mode);
  return !data || data->formats().isEmpty();
}

bool Is_Text_Box(const QObject* object) {
  return qobject_cast<const QTextEdit*>(object) || qobject_cast<const QPlainTextEdit*>(object);
}

// Pasting comes by a key, or by the middle button: then it is what is selected elsewhere.
class PasteGuard : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress)
      return static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste) && Is_Text_Box(watched) &&
             Is_Empty(QClipboard::Clipboard);
    if (event->type() == QEvent::MouseButtonRelease)
      return static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton && Is_Text_Box(watched->parent()) &&
             Is_Empty(QClipboard::Selection);
    return false;
  }
};

}  // namespace

void Guard_Pasting(QApplication& application) { application.installEventFilter(new PasteGuard(&application)); }

bool Clipboard_Is_Empty() { return Is_Empty(QClipboard::Clipboard); }
