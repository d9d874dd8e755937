#pragma once
#include "windows/main/frm_handlers.h"

// The menu entries and tool buttons room by room.
void Add_Text_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Lines_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Figures_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Colors_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Scale_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Grid_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Import_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Query_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Raster_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
void Add_Print_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools);
