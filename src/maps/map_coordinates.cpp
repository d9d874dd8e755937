#include "maps/map_coordinates.h"

#include "coordinates/calibration_file.h"
#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry_type.h"
#include "store/header_row.h"
#include "store/table_file.h"

QStringList CalFileChoice;

namespace {

const QString many = QStringLiteral("many");
const QString netMenusOn = QStringLiteral("on");  // tag of the menu of the net
constexpr int marginOfNet = 5;                    // millimetres beside a printed net

MenuState& Grid_Menu() { return Menu(QStringLiteral("mnu_Grid")); }

// The table is there, be it without an entry.
bool Has_Header() { return rsEntries && rsEntries->IsOpen() && rsEntries->RecordCount() > 0; }

// Keys of the rows of the net itself.
QStringList Net_Rows() {
  QStringList keys;
  For_Each_Entry([&keys] {
    if (Type_Here().Kind() == EntryKind::Net) keys << rsEntries->Bookmark();
  });
  return keys;
}

void Delete_Net_Rows(const QStringList& keys) {
  for (const QString& key : keys) {
    rsEntries->SetBookmark(key);
    rsEntries->Delete();
  }
}

void Reset_Net_Margins() {
  HeaderRow header = Read_Header();
  if (header.left != marginOfNet) return;
  header.left = header.right = header.top = header.bottom = 0;
  Write_Header(header);
  Tbl.Tag = QStringLiteral("Dirty");
}

void Go_To_Last_Row() {
  rsEntries->MoveLast();
  if (rsEntries->Position() >= 0) Map.CurBookmark = rsEntries->Bookmark();
  events.CurrentRowChanged.Emit();
}

}  // namespace

QString getCalFileName() {
  CalFileChoice = Cal_Files_Of(MapFile);
  Menu(QStringLiteral("mnuChooseGrid")).Enabled = CalFileChoice.size() > 1;
  if (CalFileChoice.isEmpty()) return {};
  return CalFileChoice.size() == 1 ? CalFileChoice.first() : many;
}

int Load_Cal() {
  Drop_Coordinates();
  Menu(QStringLiteral("mnuChooseGrid")).Enabled = false;
  frmMDI.mouseUnit = MouseUnit::Pixel;
  if (!(MapHeightMm > 0)) return 0;
  const QString found = getCalFileName();
  if (found.isEmpty()) {
    Set_Grid_Menus(false);
    return 0;
  }
  if (found == many) {
    Set_Grid_Menus(true);
    if (dialogHooks.ChooseCalibration) dialogHooks.ChooseCalibration();
  } else {
    Take_Cal_File(found);
  }
  return -1;
}

void Choose_Cal_File() {
  const QString found = getCalFileName();
  if (found == many) {
    if (dialogHooks.ChooseCalibration) dialogHooks.ChooseCalibration();
  } else if (!found.isEmpty()) {
    Take_Cal_File(found);
  }
}

bool Take_Cal_File(const QString& calFile) {
  CoordinateState read;
  bool taken = false;
  {
    const BusyPointer busy;
    taken = Read_Cal(calFile, {MapWidthPx, MapHeightPx}, read) != 0;
  }
  Coord = std::move(read);
  if (taken && Coord.Grid != gridNone) frmMDI.mouseUnit = MouseUnit::Coordinates;
  Set_Grid_Menus(taken && Coord.Grid != gridNone);
  events.RedrawWanted.Emit();
  return taken;
}

void Set_Grid_Menus(bool on) {
  Grid_Menu().Tag = on ? netMenusOn : QString();
  if (!on)
    Coord = {};
  else if (Has_Header())
    GridVisible = Read_Header().netVisible;
  Show_Grid_Menus();
  events.StateChanged.Emit();
}

void Show_Grid_Menus() {
  const bool on = Grid_Menu().Tag == netMenusOn;
  Grid_Menu().Enabled = true;
  for (const char* key : {"mnuGridDel", "mnuGridonoff", "mnuGridXYInput"}) Menu(QLatin1String(key)).Enabled = on;
  Menu(QStringLiteral("mnuGridmake")).Enabled = true;
  Menu(QStringLiteral("mnuGridmake")).Caption = on ? QStringLiteral("bearbeiten") : QStringLiteral("erstellen");
  Menu(QStringLiteral("mnuGridonoff")).Caption =
      GridVisible ? QStringLiteral("ausblenden") : QStringLiteral("einblenden");
  Menu(QStringLiteral("mnuChooseGrid")).Enabled = CalFileChoice.size() > 1;
}

void Drop_Coordinates() {
  Coord = {};
  CalFileChoice.clear();
  Grid_Menu().Tag.clear();
}

void Toggle_Grid() {
  if (!Has_Header() || !Store_Pending_Text()) return;
  const Step step = Guarded(QStringLiteral("Koordinatennetz"), [] {
    HeaderRow header = Read_Header();
    header.netVisible = !GridVisible;
    Write_Header(header);
    GridVisible = header.netVisible;
  });
  if (step != Step::Done) return;
  Show_Grid_Menus();
  events.RedrawWanted.Emit();
  events.StateChanged.Emit();
}

void Delete_Grid() {
  if (!Has_Header() || (Entry_In_Hand() && !End_Entry())) return;
  try {
    const QStringList rows = Net_Rows();
    if (!rows.isEmpty()) Undo_Point(QStringLiteral("Rückgängig: Netz löschen"));
    Delete_Net_Rows(rows);
    Reset_Net_Margins();
  } catch (const Error& error) {
    if (Message_Box(error.text, MsgButtons::OkCancel, MsgIcon::Information, QStringLiteral("mnuGridDel_Click")) !=
        MsgAnswer::Ok)
      return;
  }
  Set_Grid_Menus(false);
  frmMDI.mouseUnit = MouseUnit::Pixel;
  if (!Has_Header()) return;  // could not be loaded again after the undo point; that was told
  Go_To_Last_Row();
  Show_Changed_Entries();
}
