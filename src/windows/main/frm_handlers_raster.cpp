#include <QMainWindow>

#include "tools/plan_squares.h"
#include "windows/main/frm_handlers_rooms.h"
#include "windows/plansquares/frmRaster.h"

// What the menu entries and tool buttons of plan squares do.

void Add_Raster_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu["mnuRasterErstellen"] = [](QMainWindow& window, int) { Show_frmRaster(&window, false); };
  menu["mnuRasterBearbeiten"] = [](QMainWindow& window, int) { Show_frmRaster(&window, true); };
  menu["mnuRasterEinblenden"] = [](QMainWindow&, int) { Toggle_Raster_Visible(); };
  menu["mnuRasterAktiv"] = [](QMainWindow&, int) { Toggle_Raster_Active(); };
  menu["mnuRasterDelete"] = [](QMainWindow&, int) { mnuRasterDelete_Click(); };
}
