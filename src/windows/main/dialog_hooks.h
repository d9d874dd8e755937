#pragma once
class QWidget;

// Connects dialogHooks with the windows, and the return from a paint program with the reloading of the map. Once, when
// the main window is made; Clear_Dialog_Hooks when it goes.
void Set_Dialog_Hooks(QWidget* mainWindow);
void Clear_Dialog_Hooks();
