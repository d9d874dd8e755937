#pragma once
// Enables and captions menus and tool buttons for a state of the program.
enum class ButtonState { NoMap = 0, NoEntries = 1, Entries = 2 };
void Set_Buttons(ButtonState state, bool enabled = true);
// The state that fits the open map and table.
ButtonState Current_Button_State();
// Panels of the status bar when no map is open.
void Reset_InfoBar();
