#include "windows/desktop/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "edit/copy.h"

void Install_Clipboard() {
  clipboardFace.text = [] { return QGuiApplication::clipboard()->text(); };
  clipboardFace.picture = [] { return QGuiApplication::clipboard()->image(); };
  clipboardFace.setText = [](const QString& text) { QGuiApplication::clipboard()->setText(text); };
}

bool Clipboard_Is_Empty() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return !data || data->formats().isEmpty();
}
