#include "windows/common/frm_dialogs.h"

#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QShortcut>

namespace {

// Wrapped labels do not know their width when a dialog's first size is worked out: rows are squeezed, or far too high.
// When it is shown, the dialog takes the height that its width needs.
class FitHeight : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (event->type() == QEvent::Show && !event->spontaneous() && dialog->layout()->hasHeightForWidth())
      dialog->resize(dialog->width(), dialog->layout()->totalHeightForWidth(dialog->width()));
    return false;
  }
};

}  // namespace

void Prepare_Dialog(QDialog& dialog, const QString& helpPage) {
  dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  // Only its own main window is blocked, so that the help can be read meanwhile.
  dialog.setWindowModality(dialog.parentWidget() ? Qt::WindowModal : Qt::ApplicationModal);
  dialog.installEventFilter(new FitHeight(&dialog));
  auto* help = new QShortcut(QKeySequence(Qt::Key_F1), &dialog);
  QObject::connect(help, &QShortcut::activated, &dialog, [&dialog, helpPage] { Show_Help(&dialog, helpPage); });
}
