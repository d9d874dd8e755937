#include "windows/store/bind_store.h"

#include "windows/common/bind_window.h"
#include "windows/store/frmPropTransfer.h"
#include "windows/store/frmReplace.h"
#include "windows/store/frmSpalteApp.h"
#include "windows/store/frmSpalteDel.h"
#include "windows/store/frmSpltHide.h"
#include "windows/store/frmSql.h"
#include "windows/store/frmStaende.h"
#include "windows/store/frmVerlauf.h"
#include "windows/store/tbl_window_columns.h"

void Bind_Store_Windows(QWidget* mainWindow) {
  Bind_Window("mnuSpaltAppend", mainWindow, Show_frmSpalteApp);
  Bind_Window("mnuSpaltDelete", mainWindow, Show_frmSpalteDel);
  Bind_Window("mnuSpaltHide", mainWindow, Show_frmSpltHide);
  Bind_Command(QStringLiteral("mnuSpaltShow"), [](const CommandCall&) { Show_All_Columns(); });
  Bind_Window("mnuVerlauf", mainWindow, Show_frmVerlauf);
  Bind_Window("mnuStaende", mainWindow, Show_frmStaende);
  Bind_Window("mnuReplace", mainWindow, Show_frmReplace);
  Bind_Window("mnuPropTransfer", mainWindow, Show_frmPropTransfer);
  Bind_Window("mnuSql", mainWindow, Show_frmSql);
}
