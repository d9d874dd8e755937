#include "windows/main/mdi_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QStatusTipEvent>

#include "edit/table_edit.h"
#include "hand/activation.h"
#include "maps/map_open.h"
#include "maps/program_start.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/settings.h"
#include "store/table_file.h"
#include "tools/drag.h"
#include "view/view.h"
#include "windows/canvas/map_window.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"
#include "windows/desktop/application.h"
#include "windows/main/frm_handlers.h"
#include "windows/main/mdi_window_pads.h"

namespace {

constexpr int idleAfter = 2000;  // ms without a key or button
constexpr int settleAfter = 15;  // ms without a further size

// The map picture of what is dragged over the window; empty if there is none.
QString Dragged_Map(const QMimeData& data) {
  static const QStringList endings = {QStringLiteral("bmp"), QStringLiteral("rle"),  QStringLiteral("jpg"),
                                      QStringLiteral("gif"), QStringLiteral("jpeg"), QStringLiteral("png"),
                                      QStringLiteral("wmf")};
  for (const QUrl& url : data.urls()) {
    const QString path = url.toLocalFile();
    if (!path.isEmpty() && endings.contains(QFileInfo(path).suffix().toLower())) return path;
  }
  return {};
}

}  // namespace

MdiWindow::MdiWindow(QWidget* parent) : QMainWindow(parent) {
  setObjectName(QStringLiteral("frmMDI"));
  setContextMenuPolicy(Qt::PreventContextMenu);  // the toolbar's place is an option, not a popup
  setAcceptDrops(true);
  Build_Child_Windows();
  Build_Menus();
  Build_InfoBar();
  Connect_Events();
  Set_Dialog_Hooks(this);
  Watch_NotePads(*this);
  idleTimer.setSingleShot(true);
  idleTimer.setInterval(idleAfter);
  connect(&idleTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Idle(); }); });
  resizeTimer.setSingleShot(true);
  resizeTimer.setInterval(settleAfter);
  connect(&resizeTimer, &QTimer::timeout, this, [this] { Run_Guarded([this] { Inner_Resized(); }); });
  qApp->installEventFilter(this);
  resize(QSize(1400, 900).boundedTo(screen()->availableSize()));
  Sync();
}

MdiWindow::~MdiWindow() {
  area->disconnect(this);
  qApp->removeEventFilter(this);
  area->viewport()->removeEventFilter(this);
  tblChild->disconnect(this);
  mapChild->disconnect(this);  // it reports its state once more while it goes
  Clear_Dialog_Hooks();
  for (const auto& disconnect : disconnects) disconnect();
}

void MdiWindow::Build_Child_Windows() {
  area = new QMdiArea(this);
  area->setObjectName(QStringLiteral("area"));
  area->setBackground(palette().brush(QPalette::Mid));
  setCentralWidget(area);
  mapWindow = new MapWindow;
  mapChild = area->addSubWindow(mapWindow);
  mapChild->setAttribute(Qt::WA_DeleteOnClose, false);
  mapChild->hide();
  // Its own "Close" would take the keys of the menu entry.
  for (QAction* action : mapChild->systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  connect(mapChild, &QMdiSubWindow::windowStateChanged, this,
          [this](Qt::WindowStates, Qt::WindowStates state) { Map_State_Changed(state); });
  area->viewport()->installEventFilter(this);
  Build_Table_Window();
}

void MdiWindow::Build_InfoBar() {
  QStatusBar* bar = statusBar();
  bar->setObjectName(QStringLiteral("InfoBar"));
  bar->setSizeGripEnabled(true);
  const int stretch[] = {5, 4, 4};
  for (size_t i = 0; i < panels.size(); ++i) {
    panels[i] = new ElidedLabel(this);
    panels[i]->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    panels[i]->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    bar->addWidget(panels[i], stretch[i]);
  }
  zoomPanel = new QLabel(this);
  zoomPanel->setObjectName(QStringLiteral("Zm"));
  zoomPanel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  zoomPanel->setAlignment(Qt::AlignCenter);
  zoomPanel->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000 % ")) + 8);
  bar->addPermanentWidget(zoomPanel);
}

void MdiWindow::Connect_Events() {
  const auto listen = [this](auto& event, auto listener) {
    const int number = event.Connect(listener);
    disconnects.emplace_back([&event, number] { event.Disconnect(number); });
  };
  listen(events.StateChanged, [this] { Sync(); });
  listen(events.MapOpened, [this] { Sync(); });
  listen(events.MapClosed, [this] {
    Close_NotePads(*this, true);
    Sync();
  });
  listen(events.InfoBarChanged, [this] { Sync_InfoBar(); });
  listen(events.HandChanged, [this] {
    mapWindow->Canvas().Sync_Controls();
    if (!dragState.Active()) Sync_Menus();
  });
  listen(events.PopupWanted, [this] { Show_Popup(); });
  listen(events.BackgroundText, [this](const QString&) {
    Sync();
    mapWindow->Show_Loading();
  });
  listen(events.Busy, [](bool on) {
    if (on)
      QApplication::setOverrideCursor(Qt::WaitCursor);
    else
      QApplication::restoreOverrideCursor();
  });
  // The procedure that wants the end runs to its own end first.
  listen(events.EndWanted, [this] {
    QMetaObject::invokeMethod(
        this, [this] { close(); }, Qt::QueuedConnection);
  });
}

void MdiWindow::Sync() {
  if (syncing > 0) return;
  {
    const Syncing guard(syncing);
    if (windowTitle() != frmMDI.Caption) setWindowTitle(frmMDI.Caption);
    Sync_Menus();
    Sync_Toolbar();
    Sync_InfoBar();
    const bool placed = Map.WantWidth > 0 && Map.WantHeight > 0;
    Sync_Map();
    Sync_Table(placed);
    Place_Start();
  }
  Report_Inner_Size();
  mapWindow->Report_Size();
}

void MdiWindow::Sync_InfoBar() {
  for (size_t i = 0; i < panels.size(); ++i) panels[i]->Show_Text(InfoBar.Panel[i]);
  zoomPanel->setText(InfoBar.Zoom);
}

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
  frmMDI.InnerWidth = std::max(1, inner.width());
  frmMDI.InnerHeight = std::max(1, inner.height());
}

void MdiWindow::Inner_Resized() {
  Report_Inner_Size();
  Place_Start();
  if (frmMDI.Dgs > 0) Write_Ini(QStringLiteral("DGS: ") + Number_Text(frmMDI.Dgs));
  if (Map.Visible && !Map.Maximized && !Map.Minimized) Layout_Map();
}

void MdiWindow::Idle() {
  // Not in the middle of something: a dialog, or work that serves events.
  if (!dbEntries || QApplication::activeModalWidget() || QApplication::overrideCursor()) return;
  Table_Idle();
}

void MdiWindow::Call_Handler(const QString& key, int line) {
  const auto handler = Menu_Handlers().constFind(key);
  if (handler == Menu_Handlers().constEnd()) return;
  const bool reading = key.startsWith(QLatin1String("mnuHelp")) || key.startsWith(QLatin1String("mnuZoom"));
  Run_Guarded([&] {
    if (reading || Store_Pending_Text()) (*handler)(*this, line);
  });
  Sync();
}

bool MdiWindow::event(QEvent* event) {
  // Help of the menu entry or button under the pointer, in the second panel.
  if (event->type() == QEvent::StatusTip) {
    const QString tip = static_cast<QStatusTipEvent*>(event)->tip();
    panels[1]->Show_Text(tip.isEmpty() ? InfoBar.Panel[1] : tip);
    return true;
  }
  return QMainWindow::event(event);
}

bool MdiWindow::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
      if (watched == area->viewport()) resizeTimer.start();
      break;
    case QEvent::Move:
      if (watched == tblChild && syncing == 0) tableTimer.start();
      break;
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
      idleTimer.start();
      break;
    default:
      break;
  }
  return QMainWindow::eventFilter(watched, event);
}

void MdiWindow::closeEvent(QCloseEvent* event) {
  // A typed text that cannot be stored is the user's to mend.
  bool stored = true;
  Run_Guarded([&] { stored = Store_Pending_Text(); });
  if (!stored || !Close_NotePads(*this, false)) {
    event->ignore();
    return;
  }
  if (frmMDI.MapOpen) Map.Tag = QStringLiteral("MDI");
  // A map that did not close well stays for once; closing again ends the program in any case.
  const bool wasOpen = frmMDI.MapOpen;
  const bool ended = Run_Guarded([] { Program_End(); });
  Map.Tag.clear();
  if (!ended && wasOpen) {
    event->ignore();
    Sync();
    return;
  }
  const auto windows = QApplication::topLevelWidgets();
  for (QWidget* window : windows)
    if (window != this && window->isVisible() && window->windowType() != Qt::Popup) window->close();
  event->accept();
}

void MdiWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!Dragged_Map(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MdiWindow::dropEvent(QDropEvent* event) {
  const QString path = Dragged_Map(*event->mimeData());
  if (path.isEmpty()) return;
  event->acceptProposedAction();
  // The window the file came from need not wait for the map.
  QMetaObject::invokeMethod(
      this,
      [this, path] {
        Run_Guarded([&] { Open_User_Map(path); });
        Sync();
      },
      Qt::QueuedConnection);
}
