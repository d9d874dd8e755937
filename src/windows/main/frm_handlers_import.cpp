#include <QMainWindow>

#include "import/csv_import.h"
#include "windows/import/frmCSVImport.h"
#include "windows/main/frm_handlers_rooms.h"

// What the menu entries and tool buttons of imports do.

void Add_Import_Handlers(QHash<QString, Handler>& menu, [[maybe_unused]] QHash<QString, Handler>& tools) {
  menu[QStringLiteral("mnuImportCSV")] = [](QMainWindow& window, int) { Show_frmCSVImport(&window); };
  menu[QStringLiteral("mnuImportXL")] = [](QMainWindow&, int) { Tell_Excel_Import(); };
}
