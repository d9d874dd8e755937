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

QString Tool_Word(ToolMode mode) {
  switch (mode) {
    case ToolMode::Text:
      return QStringLiteral("Text");
    case ToolMode::Area:
      return QStringLiteral("Ply");
    case ToolMode::Line:
      return QStringLiteral("Ln");
    case ToolMode::Figure:
      return QStringLiteral("Fig");
    case ToolMode::Picture:
      return QStringLiteral("Bild");
    case ToolMode::Symbol:
      return QStringLiteral("Symbol");
    case ToolMode::Norm:
      break;
  }
  return QStringLiteral("Norm");
}
