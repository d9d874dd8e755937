#include "state/mdi_state.h"

#include <algorithm>

MdiState frmMDI;
ToolbarState Toolbar1;
InfoBarState InfoBar;

ToolButton* ToolbarState::Button(const QString& key) {
  const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const ToolButton& b) { return b.Key == key; });
  return found == buttons.end() ? nullptr : &*found;
}

QMap<QString, MenuState>& All_Menus() {
  static QMap<QString, MenuState> menus;
  return menus;
}
MenuState& Menu(const QString& name) { return All_Menus()[name]; }
MenuState& Menu(const QString& list, int i) { return Menu(list + QStringLiteral("(%1)").arg(i)); }
