#include "windows/main/dialog_hooks.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include "hand/activation.h"
#include "maps/paint_program.h"
#include "state/dialog_hooks.h"
#include "state/run_guarded.h"
#include "windows/canvas/frmBildZoom.h"
#include "windows/common/frm_dialogs.h"
#include "windows/coordinates/frmDialog.h"
#include "windows/maps/frmAbgesichert.h"
#include "windows/maps/frmTipps.h"
#include "windows/objects/frmDrawBreite.h"
#include "windows/objects/frmFarb.h"
#include "windows/objects/frmFill.h"
#include "windows/objects/frmSchrift.h"

namespace {

QMetaObject::Connection activation;

// The map must not change under a dialog; the next activation looks again.
void Return_From_Paint_Program() {
  if (!QApplication::activeModalWidget()) Reload_Changed_Map();
}

}  // namespace

void Set_Dialog_Hooks(QWidget* mainWindow) {
  const QPointer<QWidget> parent(mainWindow);
  dialogHooks.Abgesichert = [parent](const SafeModeQuestion& question) {
    FrmAbgesichert dialog(question, parent);
    dialog.exec();
    return dialog.Choice();
  };
  dialogHooks.BigMapHint = [parent](QSize map) {
    FrmTipps dialog(map, parent);
    dialog.exec();
  };
  dialogHooks.Help = [parent](const QString& page) {
    QWidget* inFront = QApplication::activeWindow();
    Show_Help(inFront ? inFront : parent.data(), page);
  };
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
