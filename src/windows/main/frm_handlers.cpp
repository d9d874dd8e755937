#include "windows/main/frm_handlers.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include "edit/table_edit.h"
#include "maps/map_open.h"
#include "maps/note_pads.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/table_file.h"
#include "view/view.h"
#include "windows/common/frm_dialogs.h"
#include "windows/main/frm_handlers_object.h"
#include "windows/main/frm_handlers_rooms.h"
#include "windows/main/mdi_window_pads.h"
#include "windows/maps/frmNotePad.h"
#include "windows/store/tbl_window_columns.h"

namespace {

constexpr double zoomStep = 1.25;

// Larger or smaller about the middle of the window.
void Zoom_By(double factor) { Zoom_At(static_cast<double>(Map.Zoom) * factor, Map.ViewWidth / 2, Map.ViewHeight / 2); }

void Close_Map_Window() {
  if (!Hands_Free()) return;
  Map.Tag = QStringLiteral("Map");
  Close_Map();
}

void Load_Overlay(int line) {
  const QString path = Menu(QStringLiteral("mnuOverlay"), line).Tag;
  // The line of the open table itself only tells its name.
  if (path.isEmpty() || path == TableFile || !Hands_Free()) return;
  Load_Other_Table(path);
  Table_Replaced();
}

void Map_Button(QMainWindow& window) {
  if (frmMDI.MapOpen)
    Set_Window_Layout();
  else
    Open_Menu(window, QStringLiteral("mnuKarte"));
}

void Add_Map_Handlers(QHash<QString, Handler>& all) {
  all["mnuMapNeu"] = [](QMainWindow& window, int) {
    if (Hands_Free()) Show_frmMapNeu(&window);
  };
  all["mnuFOpen"] = [](QMainWindow&, int) {
    if (Hands_Free()) Choose_Map();
  };
  all["mnuMapLoad"] = [](QMainWindow&, int) {
    if (Hands_Free()) Reload_Map();
  };
  all["mnuNoTable"] = [](QMainWindow&, int) { Toggle_Safe_Mode(); };
  all["mnuMapClose"] = [](QMainWindow&, int) { Close_Map_Window(); };
  all["mnuMapSize"] = [](QMainWindow& window, int) { Show_frmMapSize(&window); };
  all["mnuMalprgOpen"] = [](QMainWindow& window, int) { Show_frmMalprgOpen(&window); };
  all["mnuMalprg"] = [](QMainWindow& window, int) { Show_frmMalprg(&window); };
  all["mnuOptionen"] = [](QMainWindow& window, int) { Show_frmOptions(&window); };
  all["mnuMapFile"] = [](QMainWindow&, int line) {
    if (Hands_Free()) Open_Recent_Map(line);
  };
  all["mnuFluraxFini"] = [](QMainWindow& window, int) { window.close(); };
}

void Add_View_Handlers(QHash<QString, Handler>& all) {
  for (const char* name : {"mnuZoom200", "mnuZoom100", "mnuZoom75", "mnuZoom50", "mnuZoom25", "mnuZoom10",
                           "mnuZoomBreite", "mnuZoomHoehe"}) {
    const QString key = QString::fromLatin1(name);
    all[key] = [key](QMainWindow&, int) { Set_Zoom_By_Menu(key); };
  }
  all["mnuZoomIn"] = [](QMainWindow&, int) { Zoom_By(1 / zoomStep); };
  all["mnuZoomOut"] = [](QMainWindow&, int) { Zoom_By(zoomStep); };
  all["mnuZoomFak"] = [](QMainWindow& window, int) { Show_frmBildZoom(&window); };
  all["mnuBildHell"] = [](QMainWindow&, int) { Set_Light(true); };
  all["mnuBildDunkel"] = [](QMainWindow&, int) { Set_Light(false); };
  all["mnuWEinpass"] = [](QMainWindow&, int) { Set_Window_Layout(); };
}

void Add_Table_Handlers(QHash<QString, Handler>& all) {
  all["mnuTableNeu"] = Replacing(New_Table);
  all["mnuTableLoad"] = Replacing([] { Load_Other_Table({}); });
  all["mnuTableSave"] = [](QMainWindow&, int) { Save_Table(SaveStep::Save); };
  all["mnuTableSaveAs"] = [](QMainWindow&, int) { Save_Table(SaveStep::SaveAs); };
  all["mnuTableRe"] = Replacing([] { Save_Table(SaveStep::Restore); });
  all["mnuTabComp"] = Replacing(Compress_Table);
  all["mnuTabRep"] = Replacing(Repair_Table);
  all["mnuOverlay"] = [](QMainWindow&, int line) { Load_Overlay(line); };
}

void Add_Column_Handlers(QHash<QString, Handler>& all) {
  all["mnuDBGridOn"] = [](QMainWindow&, int) { Toggle_Table(); };
  all["mnuSpaltAppend"] = [](QMainWindow& window, int) { Show_frmSpalteApp(&window); };
  all["mnuSpaltDelete"] = [](QMainWindow& window, int) { Show_frmSpalteDel(&window); };
  all["mnuSpaltHide"] = [](QMainWindow& window, int) { Show_frmSpltHide(&window); };
  all["mnuSpaltShow"] = [](QMainWindow&, int) { Show_All_Columns(); };
}

// Work on the note pad in front.
Handler On_NotePad(void (FrmNotePad::*work)()) {
  return [work](QMainWindow& window, int) {
    if (FrmNotePad* pad = Active_NotePad(window)) (pad->*work)();
  };
}

void Add_Note_Handlers(QHash<QString, Handler>& all) {
  all["mnuTextNew"] = [](QMainWindow& window, int) { Show_NotePad(window, {}); };
  all["mnuTextOpen"] = [](QMainWindow& window, int) {
    const QString path = Choose_NotePad();
    if (!path.isEmpty()) Show_NotePad(window, path);
  };
  all["mnuRecentFile"] = [](QMainWindow& window, int line) {
    const QString path = Menu(QStringLiteral("mnuRecentFile"), line).Tag;
    if (!path.isEmpty()) Show_NotePad(window, path);
  };
  all["mnuTextSave"] = On_NotePad(&FrmNotePad::Save);
  all["mnuResultSaveAs"] = On_NotePad(&FrmNotePad::Save_As);
  all["mnuTextFind"] = On_NotePad(&FrmNotePad::Find);
  all["mnuTextCut"] = On_NotePad(&FrmNotePad::Cut);
  all["mnuTextCopy"] = On_NotePad(&FrmNotePad::Copy);
  all["mnuTextPaste"] = On_NotePad(&FrmNotePad::Paste);
}

void Add_Help_Handlers(QHash<QString, Handler>& all) {
  all["mnuHelpIndex"] = [](QMainWindow& window, int) { Show_Help(&window); };
  all["mnuHelpSettings"] = [](QMainWindow& window, int) { Show_Help(&window, QStringLiteral("Einstellungen.htm")); };
  all["mnuTipps"] = [](QMainWindow& window, int) { Show_frmTipps(&window); };
  all["mnuInfo"] = [](QMainWindow& window, int) { Show_frmInfo(&window); };
}

}  // namespace

namespace {

struct AllHandlers {
  QHash<QString, Handler> menu, tools;
};

const AllHandlers& All_Handlers() {
  static const AllHandlers handlers = [] {
    AllHandlers all;
    Add_Map_Handlers(all.menu);
    Add_View_Handlers(all.menu);
    Add_Table_Handlers(all.menu);
    Add_Column_Handlers(all.menu);
    Add_Note_Handlers(all.menu);
    Add_Object_Handlers(all.menu);
    Add_Help_Handlers(all.menu);
    all.tools["Map"] = [](QMainWindow& window, int) { Map_Button(window); };
    all.tools["Tbl"] = [](QMainWindow&, int) { Toggle_Table(); };
    all.tools["Daten"] = [](QMainWindow& window, int) { Popup_Menu(window, QStringLiteral("mnuDaten")); };
    all.tools["SAV"] = [](QMainWindow&, int) { Save_Table(SaveStep::Save); };
    Add_Object_Tools(all.tools);
    Add_Text_Handlers(all.menu, all.tools);
    Add_Lines_Handlers(all.menu, all.tools);
    Add_Figures_Handlers(all.menu, all.tools);
    Add_Colors_Handlers(all.menu, all.tools);
    Add_Scale_Handlers(all.menu, all.tools);
    Add_Grid_Handlers(all.menu, all.tools);
    Add_Import_Handlers(all.menu, all.tools);
    Add_Query_Handlers(all.menu, all.tools);
    Add_Raster_Handlers(all.menu, all.tools);
    Add_Print_Handlers(all.menu, all.tools);
    return all;
  }();
  return handlers;
}

}  // namespace

const QHash<QString, Handler>& Menu_Handlers() { return All_Handlers().menu; }
const QHash<QString, Handler>& Tool_Handlers() { return All_Handlers().tools; }

void Open_Menu(QMainWindow& window, const QString& key) {
  for (QAction* action : window.menuBar()->actions())
    if (action->objectName() == key) window.menuBar()->setActiveAction(action);
}

void Popup_Menu(QMainWindow& window, const QString& key) {
  for (QAction* action : window.findChildren<QAction*>(key))
    if (action->menu()) return action->menu()->popup(QCursor::pos());
}
