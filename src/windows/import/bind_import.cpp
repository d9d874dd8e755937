#include "windows/import/bind_import.h"

#include "windows/common/bind_window.h"
#include "windows/import/frmCSVExport.h"
#include "windows/import/frmCSVImport.h"
#include "windows/import/frmGPS.h"
#include "windows/import/frmImport.h"
#include "windows/import/overlay_window.h"

void Bind_Import_Windows(QWidget* mainWindow) {
  Bind_Window("mnuImportCSV", mainWindow, Show_frmCSVImport);
  Bind_Window("mnuImportGPS", mainWindow, Show_frmGPS);
  Bind_Window("mnuOVL_Import", mainWindow, Import_OVL);
  Bind_Window("mnuImportMDB", mainWindow, Show_frmImport);
  Bind_Window("mnuExportCSVTable", mainWindow, Show_frmCSVExport);
}
