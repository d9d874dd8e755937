#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of SQL, search and replace do.

void Add_Query_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                        [[maybe_unused]] QHash<QString, Handler>& tools) {}
