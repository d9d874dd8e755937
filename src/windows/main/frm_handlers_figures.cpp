#include <QMainWindow>

#include "edit/figure_edit.h"
#include "hand/next_shape.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "windows/common/frm_dialogs.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of figures do.

namespace {

// The tool, and the window for kind and size beside the map. Pressed again the tool goes.
void New_Figure(QMainWindow& window) {
  if (Choose_Figure(static_cast<EntryKind>(NextShape.figure))) Show_frmFigur(&window);
}

}  // namespace

void Add_Figures_Handlers(QHash<QString, Handler>& menu, QHash<QString, Handler>& tools) {
  menu["mnuInsFigur"] = tools["Fig"] = [](QMainWindow& window, int) { New_Figure(window); };
  menu["mnuFigur"] = [](QMainWindow& window, int) { Show_frmFigur(&window); };
  menu["mnuEigenschaften"] = [](QMainWindow& window, int) { Show_frmEigenschaften(&window); };
}
