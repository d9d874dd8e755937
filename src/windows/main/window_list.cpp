#include "windows/main/window_list.h"

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <vector>

#include "maps/menu_table.h"
#include "state/mdi_state.h"
#include "windows/common/help_window.h"

namespace {

const QString list = QStringLiteral("mnuWindow");

QMdiArea& Area(const QMainWindow& window) { return *window.findChild<QMdiArea*>(QStringLiteral("area")); }

std::vector<QWidget*> Open_Windows(const QMainWindow& window) {
  std::vector<QWidget*> open;
  for (QMdiSubWindow* child : Area(window).subWindowList())
    if (child->isVisible()) open.push_back(child);
  for (QWidget* other : QApplication::topLevelWidgets())
    if (other->isVisible() && (qobject_cast<QDialog*>(other) || qobject_cast<HelpWindow*>(other)))
      open.push_back(other);
  return open;
}

}  // namespace

void List_Windows(const QMainWindow& window) {
  const auto open = Open_Windows(window);
  for (int line = 1; line <= menuListLines; ++line) {
    const auto at = static_cast<size_t>(line - 1);
    MenuState& entry = Menu(list, line);
    entry.Visible = entry.Enabled = at < open.size();
    entry.Caption = entry.Visible ? open[at]->windowTitle() : QString();
  }
}

void Bring_To_Front(const QMainWindow& window, int line) {
  const auto open = Open_Windows(window);
  if (line < 1 || static_cast<size_t>(line) > open.size()) return;
  QWidget* wanted = open[static_cast<size_t>(line - 1)];
  if (wanted->isMinimized()) wanted->showNormal();
  if (auto* child = qobject_cast<QMdiSubWindow*>(wanted)) {
    Area(window).setActiveSubWindow(child);
    child->widget()->setFocus();
    return;
  }
  wanted->raise();
  wanted->activateWindow();
}
