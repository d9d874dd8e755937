#pragma once
#include <QLatin1String>

#include "maps/commands.h"

class QWidget;

// The command opens a window that needs to know nothing but the main window.
inline void Bind_Window(const char* key, QWidget* mainWindow, void (*show)(QWidget*)) {
  Bind_Command(QLatin1String(key), [mainWindow, show](const CommandCall&) { show(mainWindow); });
}
