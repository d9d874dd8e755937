#pragma once
#include <QPoint>
// Topmost entry under a window position: its row in Map.EntryRegions, 0 if there is none.
int Hit_Entry(QPoint window);
