#include "windows/analysis/bind_analysis.h"

#include "windows/analysis/frmDiagramme.h"
#include "windows/analysis/frmDistanz.h"
#include "windows/analysis/frmNachbar.h"
#include "windows/analysis/frmPopOptions.h"
#include "windows/analysis/frmZuord.h"
#include "windows/common/bind_window.h"

void Bind_Analysis_Windows(QWidget* mainWindow) {
  Bind_Window("mnuPopParm", mainWindow, Show_frmPopOptions);
  Bind_Window("mnuZuordBackgdColor", mainWindow, Show_frmZuord);
  Bind_Window("mnuNachbar", mainWindow, Show_frmNachbar);
  Bind_Window("mnuDiagramme", mainWindow, Show_frmDiagramme);
  Bind_Window("mnuDist_Einfach", mainWindow, [](QWidget* window) { Show_frmDistanz(window, DistanceMode::Simple); });
  Bind_Window("mnuDistPoly", mainWindow, [](QWidget* window) { Show_frmDistanz(window, DistanceMode::Polygon); });
  Bind_Window("mnuDistBundle", mainWindow, [](QWidget* window) { Show_frmDistanz(window, DistanceMode::Bundle); });
}
