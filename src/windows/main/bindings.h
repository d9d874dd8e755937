#pragma once
class QMainWindow;

// Gives every command that opens a window its window: those of all rooms, and what only the main window can do itself
// (its menus, its note pads, its own picture and end). Once, when the main window is made; Unbind_Commands when it
// goes.
void Bind_All_Windows(QMainWindow& window);
