#pragma once
class QWidget;

// Binds the commands that bring new entries onto the map and open windows for it.
void Bind_Insert_Windows(QWidget* mainWindow);
