#pragma once
#include <QPoint>

#include "state/mdi_state.h"
#include "store/entry.h"

// Gives Toolbar1 its tool state; its buttons follow when the windows are synced.
void Set_Toolbar(ToolMode mode);
// State that belongs to a row; Norm for rows without tools of their own (scale bar, north arrow, plan squares).
ToolMode Tool_Mode_Of(const EntryRow& row);
// Popup of the right mouse button at a window position: "Objekt einfügen" on the empty map, else what an entry can do.
void Insert_Popup(int x, int y);
