#include "windows/common/frm_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QPointer>
#include <QShortcut>
#include <QTimer>

#include "hand/activation.h"
#include "maps/paint_program.h"
#include "state/dialog_hooks.h"
#include "windows/coordinates/frmDialog.h"
#include "windows/desktop/application.h"
#include "windows/maps/frmAbgesichert.h"
#include "windows/maps/frmTipps.h"

namespace {

QMetaObject::Connection activation;

// The map must not change under a dialog; the next activation looks again.
void Return_From_Paint_Program() {
  if (!QApplication::activeModalWidget()) Reload_Changed_Map();
}

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

void Set_Dialog_Hooks(QWidget* mainWindow) {
  const QPointer<QWidget> parent(mainWindow);
  dialogHooks.Abgesichert = [parent](const SafeModeQuestion& question) {
    FrmAbgesichert dialog(question, parent);
    dialog.exec();
    return dialog.Choice();
  };
  dialogHooks.BigMapHint = [parent](QSize map, int colorDepth) {
    FrmTipps dialog(map, colorDepth, parent);
    dialog.exec();
  };
  dialogHooks.Help = [parent](const QString& page) { Show_Help(parent, page); };
  dialogHooks.ColorWindow = [parent] { Show_frmFarb(parent); };
  dialogHooks.FillWindow = [parent] { Show_frmFill(parent); };
  dialogHooks.WidthWindow = [parent] { Show_frmDrawBreite(parent); };
  dialogHooks.ChooseCalibration = [parent] { Show_frmDialog(parent); };
  // Asked for in the middle of a redraw: the window comes after it.
  dialogHooks.FontWindow = [parent](const QString& bookmark, const QString& caption) {
    QTimer::singleShot(0, parent, [parent, bookmark, caption] {
      Run_Guarded([&] {
        if (Take_Entry(bookmark)) Show_frmSchrift(parent, bookmark, caption);
      });
    });
  };
  dialogHooks.ZoomWindow = [parent] { Show_frmBildZoom(parent); };
  QObject::disconnect(activation);
  activation =
      QObject::connect(qApp, &QGuiApplication::applicationStateChanged, mainWindow, [](Qt::ApplicationState now) {
        if (now == Qt::ApplicationActive) Return_From_Paint_Program();
      });
}

void Clear_Dialog_Hooks() {
  dialogHooks = {};
  QObject::disconnect(activation);
}
