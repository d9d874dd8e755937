#include "windows/store/tbl_window_columns.h"

#include "edit/table_edit.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/tool_place.h"
#include "windows/store/tbl_window.h"

TblWindow* Table_Of(QWidget* mainWindow) {
  return mainWindow ? mainWindow->findChild<TblWindow*>(QStringLiteral("Tbl")) : nullptr;
}

void Prepare_Column_Window(QDialog& dialog, const QString& helpPage) {
  Prepare_Dialog(dialog, helpPage);
  dialog.setWindowModality(Qt::NonModal);
  dialog.setAttribute(Qt::WA_DeleteOnClose);
  const int number = events.MapClosed.Connect([&dialog] { dialog.close(); });
  QObject::connect(&dialog, &QObject::destroyed, [number] { events.MapClosed.Disconnect(number); });
}

void Place_Column_Window(QDialog& dialog) {
  if (!frmMDI.TblVisible || Tbl.Minimized) Table_On_Off(QStringLiteral("On"));
  Works_Beside(dialog, Table_Of(dialog.parentWidget()));
  dialog.show();
  dialog.raise();
  dialog.activateWindow();
}

void Hide_Column(const QString& name) {
  if (!rsEntries || name.isEmpty()) return;
  const int left = static_cast<int>(rsEntries->Fields().size() - static_cast<size_t>(Tbl.HiddenColumns.size()));
  if (left < 2) return;
  Tbl.HiddenColumns << name;
  events.TableChanged.Emit();
}

void Show_All_Columns() {
  Tbl.HiddenColumns.clear();
  events.TableChanged.Emit();
}
