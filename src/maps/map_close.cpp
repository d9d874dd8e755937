#include "maps/map_close.h"

#include "maps/map_coordinates.h"
#include "maps/menu_state.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/history.h"
#include "store/table_file.h"
#include "view/redraw.h"
#include "view/view.h"

void Close_Map() {
  const bool wasOpen = frmMDI.MapOpen;
  const bool bound = static_cast<bool>(rsEntries);
  frmMDI.MapOpen = false;
  Map.Visible = false;
  if (bound) Close_Table(CloseMode::CloseOnly);
  End_History();
  Delete_Regions();
  Delete_Lock_Files();
  Clear_Map_Picture();
  Map.PlanLabels.clear();
  Drop_Coordinates();
  Map.Text2 = {};
  Map.imgBild = Map.imgRfLine = Map.lblShape = Map.lblPLQ = {};
  Map.CurBookmark.clear();
  Map.Caption.clear();
  Map.canvas = {};
  Map.MarkCount = Map.HiddenCount = Map.InactiveCount = 0;
  frmMDI.Caption = QStringLiteral("FLURAX - 100%");
  frmMDI.TblVisible = false;
  MapFile.clear();
  TableFile.clear();
  Tbl.DBGrid1.Caption.clear();
  Tbl.Tag = TableTag::Clean;
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  Reset_InfoBar();
  Set_Buttons();
  if (wasOpen) events.MapClosed.Emit();
}
