#include "canvas/map_coordinates.h"
#include "start/frm_handlers_rooms.h"
#include "start/map_grid.h"

// What the menu entries and tool buttons of the coordinate net do.

void Add_Grid_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu["mnuGridmake"] = [](QMainWindow&, int) { Make_Grid(); };
  menu["mnuChooseGrid"] = [](QMainWindow&, int) { Choose_Cal_File(); };
}
