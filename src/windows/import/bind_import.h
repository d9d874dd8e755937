#pragma once
class QWidget;

// Binds the commands that open windows of this folder. Once, when the main window is made.
void Bind_Import_Windows(QWidget* mainWindow);
