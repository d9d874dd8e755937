#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of the coordinate net do.

void Add_Grid_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                       [[maybe_unused]] QHash<QString, Handler>& tools) {}
