#include "windows/main/mdi_window_pads.h"

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include "maps/note_pads.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/run_guarded.h"
#include "windows/maps/frmNotePad.h"

namespace {

QMdiArea& Area(QMainWindow& window) { return *window.findChild<QMdiArea*>(QStringLiteral("area")); }

FrmNotePad* Pad_In(const QMdiSubWindow* child) { return child ? qobject_cast<FrmNotePad*>(child->widget()) : nullptr; }

QMdiSubWindow* Child_Of_Slot(QMainWindow& window, int slot) {
  for (QMdiSubWindow* child : Area(window).subWindowList())
    if (const FrmNotePad* pad = Pad_In(child); pad && pad->Slot() == slot) return child;
  return nullptr;
}

// Where it stands in front or behind stays as it is.
void Fit_Active(QMainWindow& window) {
  QMdiSubWindow* child = Is_Open_NotePad(ActiveNotePad) ? Child_Of_Slot(window, ActiveNotePad) : nullptr;
  if (!child) return;
  if (child->isMaximized() || child->isMinimized()) child->showNormal();
  child->setGeometry(QRect({0, 0}, Area(window).viewport()->size()));
}

// The note pad that lies uppermost when the one in front has gone.
void Choose_Front(QMainWindow& window) {
  if (Is_Open_NotePad(ActiveNotePad)) return;
  int front = -1;
  for (const QMdiSubWindow* child : Area(window).subWindowList(QMdiArea::StackingOrder))
    if (const FrmNotePad* pad = Pad_In(child); pad && Is_Open_NotePad(pad->Slot())) front = pad->Slot();
  Set_Active_NotePad(front);
}

}  // namespace

void Show_NotePad(QMainWindow& window, const QString& path) {
  const int shown = path.isEmpty() ? -1 : NotePad_Of(path);
  if (QMdiSubWindow* child = shown < 0 ? nullptr : Child_Of_Slot(window, shown)) {
    // A report may have been written anew.
    if (QString now; !NotePad_Changed(shown) && Read_NotePad(path, now)) Pad_In(child)->Show_Text(now);
    child->showNormal();
    Area(window).setActiveSubWindow(child);
    child->widget()->setFocus();
    return;
  }
  QString text;
  if (!path.isEmpty() && !Read_NotePad(path, text)) return;
  const int slot = New_NotePad(path);
  auto* pad = new FrmNotePad(slot, text);
  QMdiSubWindow* child = Area(window).addSubWindow(pad);
  child->setAttribute(Qt::WA_DeleteOnClose);
  child->setWindowIcon(pad->windowIcon());
  for (QAction* action : child->systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  const QSize room = Area(window).viewport()->size();
  child->resize(QSize(480, 320).boundedTo(room));
  // Each a little lower than the one before, within the area.
  const int step = 28 * (slot % 6);
  child->move(std::max(0, room.width() - child->width() - 40 - step), std::min(step, room.height() - child->height()));
  child->show();
  Set_Active_NotePad(slot);
  pad->setFocus();
  events.StateChanged.Emit();
}

FrmNotePad* Active_NotePad(QMainWindow& window) { return Pad_In(Child_Of_Slot(window, ActiveNotePad)); }

bool Close_NotePads(QMainWindow& window, bool mapGone) {
  bool all = true;
  for (QMdiSubWindow* child : Area(window).subWindowList()) {
    FrmNotePad* pad = Pad_In(child);
    if (!pad || !Is_Open_NotePad(pad->Slot())) continue;
    if (mapGone && !pad->Close_With_Map()) {
      all = false;
      continue;
    }
    if (!child->close()) return false;
  }
  Choose_Front(window);
  return all;
}

void Watch_NotePads(QMainWindow& window) {
  QObject::connect(&Area(window), &QMdiArea::subWindowActivated, &window, [&window](const QMdiSubWindow* child) {
    if (const FrmNotePad* pad = Pad_In(child); pad && Is_Open_NotePad(pad->Slot()))
      Set_Active_NotePad(pad->Slot());
    else
      Choose_Front(window);
    events.StateChanged.Emit();
  });
  dialogHooks.FitNotePad = [&window] { Fit_Active(window); };
  dialogHooks.NotePad = [&window](const QString& path) { Show_NotePad(window, path); };
}
