#include "windows/common/frm_look_window.h"

#include "state/events.h"
#include "state/global_state.h"
#include "windows/common/frm_dialogs.h"

LookWindow::LookWindow(QWidget* parent, const QString& helpPage) : QDialog(parent) {
  Prepare_Dialog(*this, helpPage);
  setWindowModality(Qt::NonModal);
  closedListener = events.MapClosed.Connect([this] { close(); });
  stateListener = events.StateChanged.Connect([this] {
    if (isVisible()) Follow();
  });
}

LookWindow::~LookWindow() {
  events.MapClosed.Disconnect(closedListener);
  events.StateChanged.Disconnect(stateListener);
}

void LookWindow::Follow() {
  const EntryLook now = Read_Look();
  if (now == look && shownPalette == Palette) return;
  look = now;
  shownPalette = Palette;
  Show_Look();
}

void LookWindow::showEvent(QShowEvent* event) {
  look = Read_Look();
  shownPalette = Palette;
  Show_Look();
  QDialog::showEvent(event);
}

EntryColors Colors_Of(const EntryLook& look) {
  return {Color_Of(look.VG), Color_Of(look.HG), Color_Of(look.frame.color)};
}
