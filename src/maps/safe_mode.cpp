#include "maps/safe_mode.h"

#include "maps/map_open_texts.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/map_log.h"
#include "store/table_file.h"

namespace {

void Tell_Safe(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, map_texts::safeTitle); }

}  // namespace

bool Ask_Safe_Mode(const QString& table) {
  if (!frmMDI.SafeMode || !File_Exists(table)) return true;
  const QString backup = Free_Backup_Name(table);
  const int choice = dialogHooks.Abgesichert ? dialogHooks.Abgesichert({MapFile, table, backup}) : 0;
  if (choice == 1) {
    Table_File_Copy(table, backup);
    Tell_Known_Tables();
    RepairDatabase(table);
    Tell_Safe(map_texts::repaired);
    Write_Log(backup, 2);
  } else if (choice == 2) {
    Table_File_Rename(table, backup);
    Tell_Safe(map_texts::renamed + backup);
    Delete_Lock_Files();
    Write_Log(backup, 2);
  } else if (choice == 3) {
    frmMDI.SafeMode = false;
    Tell_Safe(map_texts::unchanged);
  } else {
    Tell_Safe(map_texts::stopped);
    return false;
  }
  return true;
}

void Toggle_Safe_Mode() {
  frmMDI.SafeMode = !frmMDI.SafeMode;
  if (!frmMDI.MapOpen) InfoBar.Panel[0] = frmMDI.SafeMode ? map_texts::pleaseOpenSafe : map_texts::pleaseOpen;
  events.StateChanged.Emit();
  if (frmMDI.SafeMode)
    Message_Box(map_texts::safeOnText, MsgButtons::Ok, MsgIcon::Information, map_texts::safeOnTitle);
  else
    Message_Box(map_texts::safeOffText, MsgButtons::Ok, MsgIcon::Information, map_texts::safeOffTitle);
}
