#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of reference lines, the scale bar and the north arrow do.

void Add_Scale_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                        [[maybe_unused]] QHash<QString, Handler>& tools) {}
