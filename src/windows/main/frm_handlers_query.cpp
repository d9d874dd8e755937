#include <QMainWindow>

#include "edit/bulk_change.h"
#include "windows/common/frm_dialogs.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of SQL, search and replace do.

void Add_Query_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu["mnuReplace"] = [](QMainWindow& window, int) { Show_frmReplace(&window); };
  menu["mnuPropTransfer"] = [](QMainWindow& window, int) { Show_frmPropTransfer(&window); };
  menu["mnuSql"] = [](QMainWindow& window, int) {
    if (Ready_For_Many()) Show_frmSql(&window);
  };
}
