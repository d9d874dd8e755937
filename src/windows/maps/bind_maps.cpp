#include "windows/maps/bind_maps.h"

#include "windows/calibration/frmGeodaten.h"
#include "windows/common/bind_window.h"
#include "windows/maps/frmInfo.h"
#include "windows/maps/frmMalprg.h"
#include "windows/maps/frmMalprgOpen.h"
#include "windows/maps/frmMapNeu.h"
#include "windows/maps/frmMapSize.h"
#include "windows/maps/frmOptions.h"
#include "windows/maps/frmTipps.h"

void Bind_Map_Windows(QWidget* mainWindow) {
  Bind_Window("mnuMapNeu", mainWindow, Show_frmMapNeu);
  Bind_Window("mnuMapGeo", mainWindow, Show_frmGeodaten);
  Bind_Window("mnuMapSize", mainWindow, Show_frmMapSize);
  Bind_Window("mnuMalprgOpen", mainWindow, Show_frmMalprgOpen);
  Bind_Window("mnuMalprg", mainWindow, Show_frmMalprg);
  Bind_Window("mnuOptionen", mainWindow, Show_frmOptions);
  Bind_Window("mnuTipps", mainWindow, Show_frmTipps);
  Bind_Window("mnuInfo", mainWindow, Show_frmInfo);
}
