#include "maps/map_coordinates.h"

#include "coordinates/calibration_file.h"
#include "edit/bulk_change.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/table_state.h"
#include "store/entry_type.h"
#include "store/header_row.h"
#include "store/table_file.h"

QStringList CalFileChoice;

namespace {
const OnReset fresh(CalFileChoice);
}

namespace {

const QString many = QStringLiteral("many");
constexpr int marginOfNet = 5;  // millimetres beside a printed net

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
  Tbl.Tag = TableTag::Dirty;
}

void Go_To_Last_Row() {
  rsEntries->MoveLast();
  if (rsEntries->Position() >= 0) Map.CurBookmark = rsEntries->Bookmark();
  events.CurrentRowChanged.Emit();
}

}  // namespace

QString getCalFileName() {
  CalFileChoice = Cal_Files_Of(MapFile);
  if (CalFileChoice.isEmpty()) return {};
  return CalFileChoice.size() == 1 ? CalFileChoice.first() : many;
}

int Load_Cal() {
  Drop_Coordinates();
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
  frmMDI.HasCalibration = on;
  if (!on)
    Coord = {};
  else if (Has_Header())
    GridVisible = Read_Header().netVisible;
  events.StateChanged.Emit();
}

void Drop_Coordinates() {
  Coord = {};
  CalFileChoice.clear();
  frmMDI.HasCalibration = false;
}

void Toggle_Grid() {
  if (!Has_Header()) return;
  const Step step = Guarded(QStringLiteral("Koordinatennetz"), [] {
    HeaderRow header = Read_Header();
    header.netVisible = !GridVisible;
    Write_Header(header);
    GridVisible = header.netVisible;
  });
  if (step != Step::Done) return;
  events.RedrawWanted.Emit();
  events.StateChanged.Emit();
}

void Delete_Grid() {
  if (!Has_Header()) return;
  try {
    const QStringList rows = Net_Rows();
    std::optional<UndoPoint> point;
    if (!rows.isEmpty()) point.emplace(QStringLiteral("Rückgängig: Netz löschen"));
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

bool Toggle_Position_Unit() {
  const bool coordinates = frmMDI.mouseUnit != MouseUnit::Coordinates;
  frmMDI.mouseUnit = coordinates ? MouseUnit::Coordinates : MouseUnit::Pixel;
  events.StateChanged.Emit();
  return coordinates;
}
