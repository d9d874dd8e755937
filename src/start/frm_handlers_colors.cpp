#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of colours, fills, widths and line styles do.

void Add_Colors_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                         [[maybe_unused]] QHash<QString, Handler>& tools) {}
