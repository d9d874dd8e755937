#include <QMainWindow>

#include "maps/map_coordinates.h"
#include "maps/map_grid.h"
#include "state/events.h"
#include "state/mdi_state.h"
#include "windows/canvas/frmGPSData.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of the coordinate net do.

namespace {

// mnuGridXYShow.
void Toggle_Position_Unit(QMainWindow& window) {
  const bool on = frmMDI.mouseUnit != MouseUnit::Coordinates;
  frmMDI.mouseUnit = on ? MouseUnit::Coordinates : MouseUnit::Pixel;
  events.StateChanged.Emit();
  if (on && Coordinates_By_Click()) Show_frmGPSData(&window);
}

}  // namespace

void Add_Grid_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu["mnuGridmake"] = [](QMainWindow&, int) { Make_Grid(); };
  menu["mnuChooseGrid"] = [](QMainWindow&, int) { Choose_Cal_File(); };
  menu["mnuGridonoff"] = [](QMainWindow&, int) { Toggle_Grid(); };
  menu["mnuGridDel"] = [](QMainWindow&, int) { Delete_Grid(); };
  menu["mnuGridXYShow"] = [](QMainWindow& window, int) { Toggle_Position_Unit(window); };
  menu["mnuGridXYInput"] = [](QMainWindow& window, int) { Show_frmGPSData(&window); };
}
