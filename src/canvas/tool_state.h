#pragma once
#include <QPoint>
#include <QString>

#include "store/entry.h"

// The tool state: which buttons the toolbar has, by what the user has in hand.
enum class ToolMode { Norm = 0, Text = 1, Area = 2, Line = 3, Figure = 4, Picture = 5, Symbol = 6 };

// `active` -1: an entry is being edited, 0: none. Rebuilds Toolbar1 (Tag "Norm", "Text", "Ply", "Ln", "Fig", "Bild",
// "Symbol") with captions, tips and tags, and the entry menus. (-1, Norm) in the state "Norm" only sets the menus.
void Set_Toolbar(int active, ToolMode mode);
// Enables the entry menus by the flag and the second group by its opposite.
void Set_Entry_Menus(bool entryInHand);
// State that belongs to a row; Norm for rows that cannot be in hand.
ToolMode Tool_Mode_Of(const EntryRow& row);
// Toggles the magnifier: on, clicks zoom in; off, a redraw.
void Toggle_Lupe();
