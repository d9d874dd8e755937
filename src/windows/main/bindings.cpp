#include "windows/main/bindings.h"

#include <QCursor>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "state/mdi_state.h"
#include "view/view.h"
#include "windows/analysis/bind_analysis.h"
#include "windows/canvas/bind_canvas.h"
#include "windows/common/bind_window.h"
#include "windows/common/frm_dialogs.h"
#include "windows/import/bind_import.h"
#include "windows/main/bind_pads.h"
#include "windows/main/window_list.h"
#include "windows/maps/bind_maps.h"
#include "windows/objects/bind_objects.h"
#include "windows/plansquares/bind_plansquares.h"
#include "windows/printing/bind_printing.h"
#include "windows/store/bind_store.h"

namespace {

// Opens a menu of the menu bar as its access key does.
void Open_Menu(const QMainWindow& window, const QString& key) {
  for (QAction* action : window.menuBar()->actions())
    if (action->objectName() == key) window.menuBar()->setActiveAction(action);
}

// Opens a menu where the pointer is.
void Popup_Menu(const QMainWindow& window, const QString& key) {
  for (const QAction* action : window.findChildren<QAction*>(key))
    if (action->menu()) return action->menu()->popup(QCursor::pos());
}

void Bind_Own(QMainWindow& window) {
  const auto bind = [&window](const char* key, void (*work)(QMainWindow&)) {
    Bind_Command(QLatin1String(key), [&window, work](const CommandCall&) { work(window); });
  };
  bind("mnuFluraxFini", [](QMainWindow& main) { main.close(); });
  bind("ZoomMenu", [](QMainWindow& main) { Popup_Menu(main, QStringLiteral("mnuZoom")); });
  bind("DataMenu", [](QMainWindow& main) { Popup_Menu(main, QStringLiteral("mnuDaten")); });
  bind("MapButton", [](QMainWindow& main) {
    if (frmMDI.MapOpen)
      Set_Window_Layout();
    else
      Open_Menu(main, QStringLiteral("mnuKarte"));
  });
  Bind_Command(QStringLiteral("mnuWindow"), [&window](const CommandCall& call) { Bring_To_Front(window, call.line); });
  bind("mnuHelpIndex", [](QMainWindow& main) { Show_Help(&main); });
  bind("mnuHelpSettings", [](QMainWindow& main) { Show_Help(&main, QStringLiteral("Einstellungen.htm")); });
}

}  // namespace

void Bind_All_Windows(QMainWindow& window) {
  Bind_Own(window);
  Bind_NotePads(window);
  Bind_Map_Windows(&window);
  Bind_Canvas_Windows(&window);
  Bind_Object_Windows(&window);
  Bind_Store_Windows(&window);
  Bind_Raster_Windows(&window);
  Bind_Print_Windows(&window);
  Bind_Analysis_Windows(&window);
  Bind_Import_Windows(&window);
}
