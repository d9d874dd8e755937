#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of lines and areas do.

void Add_Lines_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                        [[maybe_unused]] QHash<QString, Handler>& tools) {}
