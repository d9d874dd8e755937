// Menus and toolbar of the main window: the loops that turn the tables into widgets and show their states.
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include "desktop/application.h"
#include "start/frm_handlers.h"
#include "start/mdi_state.h"
#include "start/mdi_window.h"
#include "start/toolbar_table.h"
#include "start/window_support.h"

namespace {

Qt::ToolBarArea Area_Of(ToolbarPlace place) {
  switch (place) {
    case ToolbarPlace::Bottom:
      return Qt::BottomToolBarArea;
    case ToolbarPlace::Left:
      return Qt::LeftToolBarArea;
    case ToolbarPlace::Right:
      return Qt::RightToolBarArea;
    case ToolbarPlace::Top:
      break;
  }
  return Qt::TopToolBarArea;
}

QString Tool_Icon(const QString& key) {
  static const QHash<QString, QString> names = {{"Map", "map"}, {"SAV", "save"}};
  return names.value(key);
}

QList<QKeySequence> Shortcuts(const QString& text) {
  QList<QKeySequence> keys;
  for (const QString& key : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
    keys << QKeySequence(key, QKeySequence::PortableText);
  return keys;
}

}  // namespace

void MdiWindow::Build_Menus() {
  QHash<QString, QMenu*> menus;
  for (const MenuRow& row : Menu_Table()) {
    QMenu* parent = menus.value(row.parent);
    if (row.kind == MenuKind::Separator) {
      parent->addSeparator();
    } else if (row.kind == MenuKind::Menu) {
      QMenu* menu = parent ? parent->addMenu(row.caption) : menuBar()->addMenu(row.caption);
      menu->setToolTipsVisible(true);
      menu->menuAction()->setObjectName(row.key);
      menu->setIcon(Program_Icon(row.icon));
      menus.insert(row.key, menu);
      items.push_back({&row, 0, menu->menuAction()});
    } else {
      const bool list = row.kind == MenuKind::List;
      for (int line = list ? 1 : 0; line <= (list ? menuListLines : 0); ++line) Add_Entry(*parent, row, line);
    }
  }
}

QAction* MdiWindow::Add_Entry(QMenu& menu, const MenuRow& row, int line) {
  QAction* action = menu.addAction(row.caption);
  action->setObjectName(line == 0 ? row.key : QStringLiteral("%1(%2)").arg(row.key).arg(line));
  action->setCheckable(row.kind == MenuKind::Check);
  action->setStatusTip(row.help);
  action->setIcon(Program_Icon(row.icon));
  action->setShortcuts(Shortcuts(row.shortcut));
  action->setMenuRole(QAction::NoRole);
  connect(action, &QAction::triggered, this, [this, key = row.key, line] { Call_Handler(key, line); });
  items.push_back({&row, line, action});
  return action;
}

QAction* MdiWindow::Action(const QString& key, int line) const {
  for (const MenuItem& item : items)
    if (item.line == line && item.row->key == key) return item.action;
  return nullptr;
}

void MdiWindow::Sync_Menus() {
  for (const MenuItem& item : items) {
    const bool list = item.line > 0;
    const MenuState& state = list ? Menu(item.row->key, item.line) : Menu(item.row->key);
    const QString caption = list ? Escaped_Caption(state.Caption) : Menu_Caption(*item.row);
    if (item.action->text() != caption) item.action->setText(caption);
    item.action->setVisible(state.Visible && !caption.isEmpty());
    item.action->setEnabled(state.Enabled);
    if (item.action->isCheckable()) item.action->setChecked(state.Checked);
  }
}

void MdiWindow::Rebuild_Toolbar() {
  if (!toolbar) {
    toolbar = new QToolBar(QStringLiteral("Werkzeuge"), this);
    toolbar->setObjectName(QStringLiteral("Toolbar1"));
    toolbar->setMovable(false);
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolbar->setIconSize({28, 28});
  }
  toolbar->clear();
  toolbarKeys.clear();
  for (const ToolButton& button : Toolbar1.buttons) {
    QAction* action = toolbar->addAction(Program_Icon(Tool_Icon(button.Key)), button.Caption);
    action->setObjectName(button.Key);
    action->setStatusTip(Tool_Help(Toolbar1.Tag, button.Key));
    connect(action, &QAction::triggered, this, [this, key = button.Key] {
      const auto handler = Tool_Handlers().constFind(key);
      if (handler != Tool_Handlers().constEnd()) Run_Guarded([&] { (*handler)(*this, 0); });
      Sync();
    });
    toolbarKeys << Toolbar1.Tag + button.Key;
  }
}

void MdiWindow::Sync_Toolbar() {
  QStringList wanted;
  for (const ToolButton& button : Toolbar1.buttons) wanted << Toolbar1.Tag + button.Key;
  if (!toolbar || wanted != toolbarKeys) Rebuild_Toolbar();
  const Qt::ToolBarArea place = Area_Of(frmMDI.toolbarPlace);
  if (toolBarArea(toolbar) != place) addToolBar(place, toolbar);
  toolbar->setVisible(Toolbar1.Visible && !Toolbar1.buttons.empty());
  const auto actions = toolbar->actions();
  for (qsizetype i = 0; i < actions.size(); ++i) {
    const ToolButton& button = Toolbar1.buttons[static_cast<size_t>(i)];
    QAction* action = actions[i];
    action->setText(button.Caption);
    action->setToolTip(button.ToolTipText.isEmpty() ? button.Caption : button.ToolTipText);
    action->setVisible(button.Visible);
    action->setEnabled(button.Enabled);
    // Flat buttons show their frame only under the pointer.
    if (auto* widget = qobject_cast<QToolButton*>(toolbar->widgetForAction(action)))
      widget->setAutoRaise(!frmMDI.raisedButtons);
  }
}
