#include "windows/canvas/bind_canvas.h"

#include "maps/map_coordinates.h"
#include "windows/canvas/bind_insert.h"
#include "windows/canvas/dlgBMP.h"
#include "windows/canvas/frmBildZoom.h"
#include "windows/canvas/frmEigenschaften.h"
#include "windows/canvas/frmFigur.h"
#include "windows/canvas/frmFlKord.h"
#include "windows/canvas/frmGPSData.h"
#include "windows/canvas/frmMass.h"
#include "windows/canvas/frmMoveObjects.h"
#include "windows/canvas/frmRfline.h"
#include "windows/common/bind_window.h"

namespace {

void Show_Coordinates(QWidget* mainWindow) {
  if (Toggle_Position_Unit() && Coordinates_By_Click()) Show_frmGPSData(mainWindow);
}

}  // namespace

void Bind_Canvas_Windows(QWidget* mainWindow) {
  Bind_Insert_Windows(mainWindow);
  Bind_Window("mnuMass", mainWindow, [](QWidget* window) { Show_frmMass(window, false); });
  Bind_Window("mnuZoomFak", mainWindow, Show_frmBildZoom);
  Bind_Window("mnuMoveObjects", mainWindow, Show_frmMoveObjects);
  Bind_Window("mnuPicSize", mainWindow, Show_dlgBMP);
  Bind_Window("mnuFigur", mainWindow, Show_frmFigur);
  Bind_Window("mnuEigenschaften", mainWindow, Show_frmEigenschaften);
  Bind_Window("mnuFigKorr", mainWindow, Open_Vertex_Table);
  Bind_Window("mnuRfline", mainWindow, Show_frmRfline);
  Bind_Window("mnuGridXYShow", mainWindow, Show_Coordinates);
  Bind_Window("mnuGridXYInput", mainWindow, Show_frmGPSData);
}
