// Where the map window and the start window stand in the main window, and what room they have.
#include <QMdiArea>
#include <QMdiSubWindow>

#include "edit/table_edit.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "state/table_state.h"
#include "store/settings.h"
#include "view/view.h"
#include "windows/canvas/map_window.h"
#include "windows/main/mdi_window.h"
#include "windows/maps/frmMapStart.h"

void MdiWindow::Sync_Map() {
  if (!Map_Window_Wanted()) {
    mapChild->hide();
    return;
  }
  mapWindow->Sync();
  if (Map.Minimized) {
    mapChild->showMinimized();
    return;
  }
  if (Map.Maximized) {
    if (!mapChild->isMaximized() || !mapChild->isVisible()) mapChild->showMaximized();
    return;
  }
  if (mapChild->isMaximized() || mapChild->isMinimized() || !mapChild->isVisible()) mapChild->showNormal();
  Place_Map();
}

// Once for every wish of the layout step: afterwards the frame is the user's.
void MdiWindow::Place_Map() {
  if (Map.WantWidth <= 0 || Map.WantHeight <= 0) return;
  const QSize frame = mapChild->size() - mapWindow->size();
  const QSize wanted = QSize(Map.WantWidth, Map.WantHeight) + frame;
  mapChild->resize(wanted.boundedTo(area->viewport()->size()));
  mapChild->move(Map.Left, Map.Top);
  Map.WantWidth = Map.WantHeight = 0;
}

void MdiWindow::Place_Start() {
  const bool wanted = !frmMDI.MapOpen && !Map_Window_Wanted();
  if (!wanted) {
    if (frmMapStart) {
      frmMapStart->hide();  // a dialog that waits while a map is opened would keep it on the map
      frmMapStart->deleteLater();
    }
    frmMapStart = nullptr;
    return;
  }
  if (!frmMapStart) {
    if (ProgramFolder.isEmpty()) return;  // the program has not started yet
    frmMapStart = Make_frmMapStart(area);
    frmMapStart->setObjectName(QStringLiteral("frmMapStart"));
    frmMapStart->setAutoFillBackground(true);
    frmMapStart->show();
  }
  frmMapStart->adjustSize();  // the list of maps may have grown
  const QRect room = area->rect();
  frmMapStart->move(std::max(0, (room.width() - frmMapStart->width()) / 2),
                    std::max(0, (room.height() - frmMapStart->height()) / 2));
}

void MdiWindow::Map_State_Changed(Qt::WindowStates state) {
  if (syncing > 0 || !Map.Visible) return;
  Run_Guarded([&] {
    Map.Minimized = state.testFlag(Qt::WindowMinimized);
    if (!Map.Minimized) Map.Maximized = state.testFlag(Qt::WindowMaximized);
    Map_Was_Maximized(Map.Maximized);
    Report_Inner_Size();
    if (Map.Minimized) return;
    mapWindow->Report_Size();
    Layout_Map();
  });
}

// Room for the inside of a child window: maximised it has no frame, in the normal state it has.
void MdiWindow::Report_Inner_Size() {
  QSize inner = area->viewport()->size();
  if (!Map.Maximized) {
    const QSize frame = mapChild->isVisible() && !mapChild->isMaximized() && !mapChild->isMinimized()
                            ? mapChild->size() - mapWindow->size()
                            : QSize(8, 30);
    inner -= frame;
  }
  Tbl.LeastHeight = Least_Table_Height();
  frmMDI.InnerWidth = std::max(1, inner.width());
  frmMDI.InnerHeight = std::max(1, inner.height());
}

void MdiWindow::Inner_Resized() {
  Report_Inner_Size();
  Place_Start();
  if (frmMDI.Dgs > 0) Write_Ini(QStringLiteral("DGS: ") + Number_Text(frmMDI.Dgs));
  if (Map.Visible && !Map.Maximized && !Map.Minimized) Layout_Map();
}
