// Menus and toolbar of the main window: the loops that turn the tables into widgets and show their states.
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include "hand/activation.h"
#include "hand/tool_state.h"
#include "hand/toolbar_table.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "windows/canvas/map_window.h"
#include "windows/common/window_support.h"
#include "windows/desktop/application.h"
#include "windows/main/frm_handlers.h"
#include "windows/main/mdi_window.h"

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
  static const QHash<QString, QString> names = {{"Map", "map"},
                                                {"SAV", "save"},
                                                {"Tbl", "table"},
                                                {"Daten", "data"},
                                                {"Linie", "line"},
                                                {"Fl", "area"},
                                                {"LnStil", "line_style"},
                                                {"LnEnd", "line_ends"},
                                                {"LnKorr", "vertices"},
                                                {"PKorr", "vertices"},
                                                {"Bild", "picture"},
                                                {"Text", "text"},
                                                {"Symb", "symbol"},
                                                {"Fig", "figure"},
                                                {"Ein", "show"},
                                                {"Akt", "active"},
                                                {"rechts", "align_right"},
                                                {"links", "align_left"},
                                                {"oben", "align_top"},
                                                {"unten", "align_bottom"},
                                                {"gleich", "equal"},
                                                {"Gruppe", "group"},
                                                {"MarkDel", "mark_delete"},
                                                {"unmark", "unmark"},
                                                {"Ok", "ok"},
                                                {"Schrift", "font"},
                                                {"Rahmen", "frame"},
                                                {"Fill", "fill"},
                                                {"Breite", "width"},
                                                {"Rfline", "footpoint"},
                                                {"Scale", "scale"},
                                                {"Mark", "mark"},
                                                {"Curve", "curve"},
                                                {"FlBez", "label"},
                                                {"LnBez", "label"},
                                                {"Del", "delete"},
                                                {"vor", "front"},
                                                {"back", "back"},
                                                {"Dupl", "duplicate"},
                                                {"Cpy", "copy"},
                                                {"Lupe", "zoom"},
                                                {"Vis", "hide"},
                                                {"Farbe", "color"}};
  return names.value(key);
}

constexpr int panelWidth = 220;
const QStringList rightButtonKeys = {QStringLiteral("vor"), QStringLiteral("back"), QStringLiteral("Lupe"),
                                     QStringLiteral("Rahmen"), QStringLiteral("Rfline")};

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

}  // namespace

void MdiWindow::Build_Menus() {
  popup = new QMenu(this);
  popup->setObjectName(QStringLiteral("popup"));
  // What is chosen there comes before or after the menu goes; the next turn of the loop forgets it.
  connect(popup, &QMenu::aboutToShow, this, [this] { popup->setProperty("chosen", true); });
  connect(popup, &QMenu::aboutToHide, this,
          [this] { QTimer::singleShot(0, this, [this] { popup->setProperty("chosen", false); }); });
  QHash<QString, QMenu*> menus;
  for (const MenuRow& row : Menu_Table()) {
    QMenu* parent = menus.value(row.parent);
    if (row.kind == MenuKind::Separator) {
      if (row.caption.isEmpty())
        parent->addSeparator();
      else
        Add_Heading(*parent, row.caption);
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
  if (Shortcut_Of_Map(row) && !row.shortcut.isEmpty()) {
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    mapWindow->addAction(action);
  }
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
    item.action->setEnabled(list ? state.Enabled : Menu_Enabled(*item.row));
    if (item.action->isCheckable()) item.action->setChecked(Menu_Checked(*item.row));
  }
}

// The menu of the right mouse button, with the menus and entries of the menu bar.
void MdiWindow::Show_Popup() {
  const QPoint at = mapWindow->Canvas().mapToGlobal(Map.PopupAt);
  if (Map.LupeOn) {
    Action(QStringLiteral("mnuZoom"))->menu()->popup(at);
    return;
  }
  popup->clear();
  for (const QString& key : Popup_Table()) {
    if (key.isEmpty())
      popup->addSeparator();
    else
      popup->addAction(Action(key));
  }
  popup->popup(at);
}

void MdiWindow::Call_Tool(const QString& key, int line) {
  const auto handler = Tool_Handlers().constFind(key);
  if (handler == Tool_Handlers().constEnd()) return;
  Run_Guarded([&] {
    // What was typed comes before what is done to the entry; "Ok" stores it itself.
    if (key == QLatin1String("Ok") || Store_Pending_Text()) (*handler)(*this, line);
  });
  Sync();
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
    toolbarKeys << Toolbar1.Tag + button.Key;
    if (button.Key == QLatin1String("Panel")) {
      auto* label = new QLabel(toolbar);
      label->setTextFormat(Qt::PlainText);
      label->setMargin(4);
      label->setMaximumWidth(panelWidth);
      toolbar->addWidget(label)->setObjectName(button.Key);
      continue;
    }
    QAction* action = toolbar->addAction(Program_Icon(Tool_Icon(button.Key)), button.Caption);
    action->setObjectName(button.Key);
    action->setStatusTip(Tool_Help(Toolbar1.Tag, button.Key));
    connect(action, &QAction::triggered, this, [this, key = button.Key] { Call_Tool(key, 0); });
    // Some buttons have a second meaning for the right mouse button.
    QWidget* widget = toolbar->widgetForAction(action);
    widget->setContextMenuPolicy(Qt::CustomContextMenu);
    if (rightButtonKeys.contains(button.Key))
      connect(widget, &QWidget::customContextMenuRequested, this,
              [this, key = button.Key] { Call_Tool(key, rightButton); });
  }
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
  Dress_Toolbar();
  QStringList wanted;
  for (const ToolButton& button : Toolbar1.buttons) wanted << Toolbar1.Tag + button.Key;
  if (!toolbar || wanted != toolbarKeys) Rebuild_Toolbar();
  const Qt::ToolBarArea place = Area_Of(frmMDI.toolbarPlace);
  if (toolBarArea(toolbar) != place) addToolBar(place, toolbar);
  toolbar->setVisible(Toolbar1.Visible && !Toolbar1.buttons.empty());
  const auto actions = toolbar->actions();
  for (qsizetype i = 0; i < actions.size(); ++i) Sync_Tool(*actions[i], Toolbar1.buttons[static_cast<size_t>(i)]);
}
