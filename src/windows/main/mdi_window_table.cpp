// The table window among the child windows of the main window.
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "edit/table_edit.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "state/table_state.h"
#include "view/view.h"
#include "windows/common/window_support.h"
#include "windows/main/mdi_window.h"
#include "windows/store/tbl_window.h"

namespace {

constexpr int afterMoving = 150;                  // ms without a further move
constexpr int leastWidth = 40, leastHeight = 16;  // pixels of it that can still be gripped
constexpr int iconHeight = 40;                    // of a minimised map window

}  // namespace

void MdiWindow::Build_Table_Window() {
  tblWindow = new TblWindow;
  tblChild = area->addSubWindow(tblWindow);
  tblChild->setAttribute(Qt::WA_DeleteOnClose, false);
  tblChild->setWindowIcon(tblWindow->windowIcon());
  tblChild->hide();
  for (QAction* action : tblChild->systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  area->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
  connect(tblChild, &QMdiSubWindow::windowStateChanged, this, [this](Qt::WindowStates, Qt::WindowStates state) {
    if (syncing > 0 || !frmMDI.TblVisible) return;
    Run_Guarded([&] {
      const bool minimized = state.testFlag(Qt::WindowMinimized);
      if (minimized == Tbl.Minimized) return;
      Tbl.Minimized = minimized;
      Arrange_Windows();
    });
  });
  tableTimer.setSingleShot(true);
  tableTimer.setInterval(afterMoving);
  connect(&tableTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Check_Table_Place(); }); });
}

void MdiWindow::Sync_Table(bool place) {
  if (!frmMDI.TblVisible || !frmMDI.MapOpen) {
    if (tblChild->isVisible()) tblChild->hide();
    return;
  }
  if (Tbl.Minimized) {
    if (!tblChild->isMinimized()) tblChild->showMinimized();
    return;
  }
  if (!tblChild->isVisible() || tblChild->isMinimized()) {
    tblWindow->Sync();
    const bool mapInFront = area->activeSubWindow() == mapChild;
    tblChild->showNormal();
    if (mapInFront) area->setActiveSubWindow(mapChild);
    place = true;
  }
  if (place || Tbl.WantPlace) Place_Table();
}

int MdiWindow::Least_Table_Height() const { return tblChild->minimumSizeHint().height(); }

// Below the map, as wide as the main window.
void MdiWindow::Place_Table() {
  if (tblChild->isMaximized()) return;
  Tbl.WantPlace = false;
  const QSize room = area->viewport()->size();
  const int least = Least_Table_Height();
  int top = Map.Minimized ? 0 : mapChild->geometry().bottom() + 1;
  const int bottom = Map.Minimized ? room.height() - iconHeight : room.height();
  top = std::max(0, std::min(top, bottom - least));
  tblChild->setGeometry(0, top, room.width(), std::max(least, bottom - top));
}

void MdiWindow::Check_Table_Place() {
  if (QApplication::mouseButtons() != Qt::NoButton) {  // it is still being dragged
    tableTimer.start();
    return;
  }
  if (!tblChild->isVisible() || tblChild->isMinimized() || tblChild->isMaximized()) return;
  const QRect seen = tblChild->geometry() & area->viewport()->rect();
  if (seen.width() < leastWidth || seen.height() < leastHeight) Table_Moved_Off();
}
