#include "start/frm_handlers_rooms.h"

// What the menu entries and tool buttons of figures do.

void Add_Figures_Handlers([[maybe_unused]] QHash<QString, Handler>& menu,
                          [[maybe_unused]] QHash<QString, Handler>& tools) {}
