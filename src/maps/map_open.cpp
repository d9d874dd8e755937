#include "maps/map_open.h"

#include "hand/leave_hand.h"
#include "maps/map_check.h"
#include "maps/map_close.h"
#include "maps/map_coordinates.h"
#include "maps/map_load.h"
#include "maps/map_open_texts.h"
#include "maps/menu_state.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "store/table_file.h"

namespace {

// What is gone cannot be opened: for that no open map is closed.
bool Is_Missing(const QString& path) {
  if (File_Exists(Clean_Path(path))) return false;
  Message_Box(QStringLiteral("Diese Karte wurde nicht gefunden:\n") + path, MsgButtons::Ok, MsgIcon::Information,
              map_texts::openTitle);
  return true;
}

}  // namespace

bool Open_Map(const QString& path) {
  if (frmMDI.MapOpen) {
    if (Is_Missing(path)) return false;
    if (!Leave_Hand() || !Save_Table(SaveStep::AtMapChange)) return false;
    Close_Map();
  }
  Load_Map(path);
  if (frmMDI.MapOpen) Guarded(QStringLiteral("Koordinatennetz"), [] { Load_Cal(); });
  return frmMDI.MapOpen && MapHeightMm >= 0;
}

bool Reload_Map() {
  if (!frmMDI.MapOpen) return false;
  const QString path = MapFile;
  return Open_Map(path);
}

bool Leave_Map() {
  if (!frmMDI.MapOpen) return true;
  if (!Leave_Hand()) return false;
  Close_Map();
  return true;
}

void Table_Replaced() {
  if (!frmMDI.MapOpen) return;
  Scan_Table();
  Set_Buttons();
}
