// Menus and toolbar of the main window: the loops that turn the tables into widgets and show their states.
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcutEvent>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "maps/command_look.h"
#include "maps/commands.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "windows/canvas/map_window.h"
#include "windows/common/window_support.h"
#include "windows/main/mdi_window.h"
#include "windows/main/window_list.h"
#include "windows/store/tbl_window.h"

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

constexpr int panelWidth = 220;

// What stands below belongs together; it cannot be chosen.
void Add_Heading(QMenu& menu, const QString& caption) {
  QAction* heading = menu.addAction(caption);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  heading->setEnabled(false);
}

QList<QKeySequence> Shortcuts(const QString& text) {
  QList<QKeySequence> keys;
  for (const QString& key : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
    keys << QKeySequence(key, QKeySequence::PortableText);
  return keys;
}

// The access keys of the menus. That of Qt goes on through its list of keys while a menu opens, although the list is
// made anew when a menu becomes of use or of none meanwhile: a second menu opens, or the program ends.
class MenuBar : public QMenuBar {
 public:
  using QMenuBar::QMenuBar;

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::Shortcut) return QMenuBar::event(event);
    const QKeySequence key = static_cast<QShortcutEvent*>(event)->key();
    const auto all = actions();
    for (QAction* action : all) {
      if (!action->menu() || !action->isVisible() || !action->isEnabled() ||
          QKeySequence::mnemonic(action->text()) != key)
        continue;
      setActiveAction(action);
      Go_To_First(*action->menu());
      break;
    }
    return true;
  }

 private:
  static void Go_To_First(QMenu& menu) {
    const auto all = menu.actions();
    const auto first = std::find_if(all.begin(), all.end(), [](const QAction* it) {
      return it->isVisible() && it->isEnabled() && !it->isSeparator();
    });
    if (menu.isVisible() && first != all.end()) menu.setActiveAction(*first);
  }
};

}  // namespace

void MdiWindow::Build_Menus() {
  setMenuBar(new MenuBar(this));
  popup = new QMenu(this);
  popup->setObjectName(QStringLiteral("popup"));
  // What is chosen there comes before or after the menu goes; the next turn of the loop forgets it.
  connect(popup, &QMenu::aboutToShow, this, [this] { popup->setProperty("chosen", true); });
  connect(popup, &QMenu::aboutToHide, this,
          [this] { QTimer::singleShot(0, this, [this] { popup->setProperty("chosen", false); }); });
  for (const QString& key : Menu_Bar()) {
    const MenuRow& row = *Find_Menu(key);
    QMenu& menu = *menuBar()->addMenu(row.text);
    Build_Menu(menu, row);
    connect(&menu, &QMenu::aboutToShow, this, [this] { Sync_Menus(); });  // windows come and go without an event
  }
}

void MdiWindow::Build_Menu(QMenu& menu, const MenuRow& row) {
  menu.setToolTipsVisible(true);
  menu.menuAction()->setObjectName(row.key);
  menu.setIcon(Program_Icon(row.icon));
  items.push_back({&row, nullptr, 0, menu.menuAction()});
  for (const QString& key : row.rows) {
    if (key == QLatin1String("-")) {
      menu.addSeparator();
    } else if (key.startsWith(QLatin1String("- "))) {
      Add_Heading(menu, key.mid(2));
    } else if (const MenuRow* inner = Find_Menu(key)) {
      Build_Menu(*menu.addMenu(inner->text), *inner);
    } else if (const Command& command = *Find_Command(key); command.kind != CommandKind::List) {
      Add_Command(menu, command, 0);
    } else {
      for (int line = 1; line <= menuListLines; ++line) Add_Command(menu, command, line);
    }
  }
}

void MdiWindow::Add_Command(QMenu& menu, const Command& command, int line) {
  QAction* action = menu.addAction(command.text);
  action->setObjectName(line == 0 ? command.key : QStringLiteral("%1(%2)").arg(command.key).arg(line));
  action->setCheckable(command.kind == CommandKind::Check);
  action->setStatusTip(command.help);
  action->setIcon(Program_Icon(command.icon));
  action->setShortcuts(Shortcuts(command.shortcut));
  if (!command.shortcut.isEmpty() && Shortcut_Of_Map(command.key)) {
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    mapWindow->addAction(action);
    tblWindow->addAction(action);  // a row of the table is the entry in hand as well
  }
  action->setMenuRole(QAction::NoRole);
  connect(action, &QAction::triggered, this, [this, key = command.key, line] { Run(key, line); });
  items.push_back({nullptr, &command, line, action});
}

QAction* MdiWindow::Action(const QString& key, int line) const {
  for (const MenuItem& item : items)
    if (item.line == line && item.Key() == key) return item.action;
  return nullptr;
}

void MdiWindow::Sync_Menus() {
  List_Windows(*this);
  for (const MenuItem& item : items) {
    if (item.menu) {
      item.action->setEnabled(Needs_Met(item.menu->needs));
      continue;
    }
    const Command& command = *item.command;
    const MenuState* line = item.line > 0 ? &Menu(command.key, item.line) : nullptr;
    const QString text = line ? Escaped_Caption(line->Caption) : Command_Text(command);
    if (item.action->text() != text) item.action->setText(text);
    item.action->setVisible(!text.isEmpty() && (!line || line->Visible));
    item.action->setEnabled(Needs_Met(command.needs) && (!line || line->Enabled));
    if (item.action->isCheckable()) item.action->setChecked(Command_Checked(command.key));
  }
}

// The menu of the right mouse button, with the menus and entries of the menu bar.
void MdiWindow::Show_Popup() {
  const QPoint at = mapWindow->Canvas().mapToGlobal(Map.PopupAt);
  popup->clear();
  for (const QString& key : Popup_Table()) {
    if (key == QLatin1String("-"))
      popup->addSeparator();
    else
      popup->addAction(Action(key));
  }
  popup->popup(at);
}

void MdiWindow::Rebuild_Toolbar(const std::vector<ToolButton>& buttons) {
  if (!toolbar) {
    toolbar = new QToolBar(QStringLiteral("Werkzeuge"), this);
    toolbar->setObjectName(QStringLiteral("Toolbar1"));
    toolbar->setMovable(false);
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolbar->setIconSize({28, 28});
  }
  // The bar only lets go of its actions; one of them may be the one that is being carried out.
  const auto former = toolbar->actions();
  toolbar->clear();
  for (QAction* action : former) action->deleteLater();
  toolbarKeys.clear();
  for (const ToolButton& button : buttons) {
    toolbarKeys << Tool_Word(Toolbar1.Tag) + button.Key;
    Add_Tool(button);
  }
}

void MdiWindow::Add_Tool(const ToolButton& button) {
  if (button.Command.isEmpty()) {
    auto* label = new QLabel(toolbar);
    label->setTextFormat(Qt::PlainText);
    label->setMargin(4);
    label->setMaximumWidth(panelWidth);
    toolbar->addWidget(label)->setObjectName(button.Key);
    return;
  }
  QAction* action = toolbar->addAction(Program_Icon(Find_Command(button.Command)->icon), button.Caption);
  action->setObjectName(button.Key);
  action->setStatusTip(button.Help);
  connect(action, &QAction::triggered, this, [this, key = button.Command] { Run(key); });
  // Some buttons have a second meaning for the right mouse button.
  QWidget* widget = toolbar->widgetForAction(action);
  widget->setContextMenuPolicy(Qt::CustomContextMenu);
  if (!button.RightCommand.isEmpty())
    connect(widget, &QWidget::customContextMenuRequested, this, [this, key = button.RightCommand] { Run(key); });
}

void MdiWindow::Sync_Tool(QAction& action, const ToolButton& button) {
  QWidget* widget = toolbar->widgetForAction(&action);
  action.setVisible(button.Visible);
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    const QString text = label->fontMetrics().elidedText(button.Caption.simplified(), Qt::ElideRight, panelWidth - 12);
    if (label->text() != text) label->setText(text);
    label->setToolTip(button.Caption);
    return;
  }
  action.setText(button.Caption);
  action.setToolTip(button.ToolTipText.isEmpty() ? button.Caption : button.ToolTipText);
  action.setEnabled(button.Enabled);
  if (button.Value && !action.isCheckable()) action.setCheckable(true);
  if (action.isCheckable()) action.setChecked(button.Value);
  // Flat buttons show their frame only under the pointer.
  if (auto* tool = qobject_cast<QToolButton*>(widget)) tool->setAutoRaise(!frmMDI.raisedButtons);
}

void MdiWindow::Sync_Toolbar() {
  const std::vector<ToolButton> buttons = Toolbar_Now();
  QStringList wanted;
  for (const ToolButton& button : buttons) wanted << Tool_Word(Toolbar1.Tag) + button.Key;
  if (!toolbar || wanted != toolbarKeys) Rebuild_Toolbar(buttons);
  const Qt::ToolBarArea place = Area_Of(frmMDI.toolbarPlace);
  if (toolBarArea(toolbar) != place) addToolBar(place, toolbar);
  toolbar->setVisible(Toolbar1.Visible && !buttons.empty());
  const auto actions = toolbar->actions();
  for (qsizetype i = 0; i < actions.size(); ++i) Sync_Tool(*actions[i], buttons[static_cast<size_t>(i)]);
}
