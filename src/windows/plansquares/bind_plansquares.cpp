#include "windows/plansquares/bind_plansquares.h"

#include "windows/common/bind_window.h"
#include "windows/plansquares/frmRaster.h"

void Bind_Raster_Windows(QWidget* mainWindow) {
  Bind_Window("mnuRasterErstellen", mainWindow, [](QWidget* window) { Show_frmRaster(window, false); });
  Bind_Window("mnuRasterBearbeiten", mainWindow, [](QWidget* window) { Show_frmRaster(window, true); });
}
