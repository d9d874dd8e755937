// Ways out of the program, and the way in of a map that is dropped on the main window.
#include <QApplication>
#include <QCloseEvent>
#include <QMimeData>

#include "hand/activation.h"
#include "hand/leave_hand.h"
#include "maps/map_choose.h"
#include "maps/program_start.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "state/mdi_state.h"
#include "state/run_guarded.h"
#include "windows/import/dropped_file.h"
#include "windows/main/mdi_window.h"
#include "windows/main/mdi_window_pads.h"

namespace {

// The map picture of what is dragged over the window; empty if there is none.
QString Dragged_Map(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    const QString path = url.toLocalFile();
    if (Is_Picture_Name(path)) return path;
  }
  return {};
}

// A file for one of the imports that is dragged over an open map.
QString Dragged_Import(const QMimeData& data) {
  if (!frmMDI.MapOpen) return {};
  for (const QUrl& url : data.urls())
    if (Can_Be_Imported(url.toLocalFile())) return url.toLocalFile();
  return {};
}

// Gives up the hand, whatever is being typed. False: it stays, for the user to mend it.
bool Hand_Left() {
  bool left = false;
  if (Run_Guarded([&left] { left = Leave_Hand(); })) return left;
  // It cannot be written. Who wants the program to end all the same has said so just now.
  if (MsgResult != MsgAnswer::Yes) return false;
  Drop_Hand();
  return true;
}

}  // namespace

void MdiWindow::closeEvent(QCloseEvent* event) {
  if (!Hand_Left() || !Close_NotePads(*this, false)) {
    event->ignore();
    return;
  }
  // A map that did not close well stays for once; closing again ends the program in any case.
  const bool wasOpen = frmMDI.MapOpen;
  bool ended = false;
  Run_Guarded([&ended] { ended = Program_End(); });
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
  const QMimeData& dragged = *event->mimeData();
  if (!Dragged_Map(dragged).isEmpty() || !Dragged_Import(dragged).isEmpty()) event->acceptProposedAction();
}

void MdiWindow::dropEvent(QDropEvent* event) {
  const QString path = Dragged_Map(*event->mimeData()), toImport = Dragged_Import(*event->mimeData());
  if (path.isEmpty() && toImport.isEmpty()) return;
  event->acceptProposedAction();
  // The window the file came from need not wait for the map.
  QMetaObject::invokeMethod(
      this,
      [this, path, toImport] {
        Run_Guarded([&] {
          if (path.isEmpty()) return Import_Dropped_File(this, toImport);
          Open_User_Map(path);
        });
        Sync();
      },
      Qt::QueuedConnection);
}
