#include "state/mdi_state.h"

MdiState frmMDI;
ToolbarState Toolbar1;
InfoBarState InfoBar;

QMap<QString, MenuState>& All_Menus() {
  static QMap<QString, MenuState> menus;
  return menus;
}
MenuState& Menu(const QString& name) { return All_Menus()[name]; }
MenuState& Menu(const QString& list, int i) { return Menu(list + QStringLiteral("(%1)").arg(i)); }
