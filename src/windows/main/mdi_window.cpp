#include "windows/main/mdi_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStatusTipEvent>

#include "maps/commands.h"
#include "maps/step_walk.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "store/table_file.h"
#include "tools/drag.h"
#include "view/map_copies.h"
#include "windows/canvas/map_window.h"
#include "windows/common/window_support.h"
#include "windows/main/bindings.h"
#include "windows/main/dialog_hooks.h"
#include "windows/main/mdi_window_pads.h"

namespace {

constexpr int idleAfter = 2000;  // ms without a key or button
constexpr int settleAfter = 15;  // ms without a further size

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
  Bind_All_Windows(*this);
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
  Unbind_Commands();
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
  panels = new PanelRow({5, 4, 4}, this);
  bar->addWidget(panels, 1);
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
  listen(events.MapOpened, [this] {
    Sync();
    idleTimer.start();
    // When the map stands there.
    QTimer::singleShot(0, this, [] { Run_Guarded(Tell_Of_Interrupted_Work); });
  });
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
  listen(events.LeftHalfWanted, [this] {
    const QRect room = screen()->availableGeometry();
    showNormal();
    setGeometry(room.adjusted(0, frameGeometry().height() - height(), -room.width() / 2, 0));
  });
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
  for (size_t i = 0; i < InfoBar.Panel.size(); ++i) panels->Show_Text(i, InfoBar.Panel[i]);
  if (zoomPanel->text() == InfoBar.Zoom) return;
  zoomPanel->setText(InfoBar.Zoom);
  zoomPanel->repaint();  // the work it tells of goes on in the same call
}

void MdiWindow::Idle() {
  // Not in the middle of something: a dialog, or work that serves events.
  if (!dbEntries || QApplication::activeModalWidget() || QApplication::overrideCursor()) return;
  constexpr int piece = 8;  // ms: whoever comes back meanwhile does not wait longer
  if (Table_Idle_Some(piece) || Prepare_Ahead(piece))
    QTimer::singleShot(0, this, [this] { Run_Guarded([this] { Idle(); }); });
  Tell_Of_Lost_Steps();
}

void MdiWindow::Run(const QString& command, int line) {
  CommandCall call{line, {}};
  if (popup->property("chosen").toBool()) call.at = Map.PopupAt;
  Run_Command(command, call);
  Sync();
}

bool MdiWindow::event(QEvent* event) {
  // Help of the menu entry or button under the pointer, in the second panel.
  if (event->type() == QEvent::StatusTip) {
    const QString tip = static_cast<QStatusTipEvent*>(event)->tip();
    panels->Show_Text(1, tip.isEmpty() ? InfoBar.Panel[1] : tip);
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
