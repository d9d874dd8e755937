#include "windows/printing/bind_printing.h"

#include "windows/common/bind_window.h"
#include "windows/printing/frm_print.h"

void Bind_Print_Windows(QWidget* mainWindow) {
  Bind_Window("mnuBlattschnitt", mainWindow, Show_frmSeiten);
  Bind_Window("mnuRand", mainWindow, Show_frmRand);
  Bind_Window("mnuDruckpfad", mainWindow, Show_frmDruckpfad);
  Bind_Window("mnuPrintMap", mainWindow, Print_Whole_Map);
}
