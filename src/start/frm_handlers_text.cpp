#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of texts and symbols do.

void Add_Text_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                       [[maybe_unused]] QHash<QString, Handler>& tools) {}
