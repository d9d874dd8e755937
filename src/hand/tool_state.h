#pragma once
#include <QPoint>

#include "store/entry.h"

// The tool state: which buttons the toolbar has, by what the user has in hand.
enum class ToolMode { Norm = 0, Text = 1, Area = 2, Line = 3, Figure = 4, Picture = 5, Symbol = 6 };

// Gives Toolbar1 its Tag ("Norm", "Text", "Ply", "Ln", "Fig", "Bild", "Symbol"); its buttons follow when the windows
// are synced.
void Set_Toolbar(ToolMode mode);
// State that belongs to a row; Norm for rows without tools of their own (scale bar, north arrow, plan squares).
ToolMode Tool_Mode_Of(const EntryRow& row);
// Popup of the right mouse button at a window position: "Objekt einfügen" on the empty map, else what an entry can do.
void Insert_Popup(int x, int y);
