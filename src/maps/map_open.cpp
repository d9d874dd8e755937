#include "maps/map_open.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include "edit/table_edit.h"
#include "maps/map_coordinates.h"
#include "maps/map_open_texts.h"
#include "maps/menu_state.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/map_log.h"
#include "store/table_file.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

constexpr int endingLength = 4;             // ".BMP"
constexpr qint64 bigMapPixels = 7'000'000;  // above it the hint for big maps appears
constexpr int damagedTable = 5000, openNotEnded = 5010;

// The open was given up by the user or after its message was shown: nothing more to tell.
struct GivenUp {};

// The marker beside the map: it exists only while a map is being opened.
struct OpenMarker {
  QString path;
  bool existed = false;
  QStringList lines;

  void Begin(const QString& map) {
    path = map.left(map.size() - endingLength) + QStringLiteral(".map");
    existed = File_Exists(path);
    if (!existed) Add(map);
  }
  void Add(const QString& line) {
    if (existed) return;
    lines += line;
    Write_Lines(path, lines);
  }
  void Remove() const { Kill_Quietly(path); }
};

void Show_Background(const QString& text) {
  Map.PicText = text;
  events.BackgroundText.Emit(text);
}

void Show_Read_Only(const Error& error, const QString& path) {
  Message_Box(map_texts::Read_Only(error, path), MsgButtons::Ok, MsgIcon::Critical, map_texts::openTitle);
}

void Begin_Marker(OpenMarker& marker, const QString& path) {
  try {
    marker.Begin(path);
  } catch (const Error& error) {
    Show_Read_Only(error, path);
    throw GivenUp{};
  }
}

void Load_Scan(const QString& path) {
  if (Capitals(path).contains(QLatin1String(".BMP"))) Check_Bitmap(path);
  const QImage picture = Load_Picture(path);
  MapFile = path;
  MapWidthPx = picture.width();
  MapHeightPx = picture.height();
  MapWidthMm = static_cast<float>(MapWidthPx * 25.4 / 96);
  MapHeightMm = static_cast<float>(MapHeightPx * 25.4 / 96);
  Set_Map_Picture(picture);
  Map.Zoom = Map.ClipScale = 1.0F;
  Clear_Zoom_Checks();
  Menu(QStringLiteral("mnuZoom100")).Checked = true;
}

void Tell_Safe(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, map_texts::safeTitle); }

// Safe mode: the user decides what becomes of the standard table before it is loaded.
void Ask_Safe_Mode(const QString& table) {
  if (!frmMDI.SafeMode || !File_Exists(table)) return;
  const QString backup = Free_Backup_Name(table);
  const int choice = dialogHooks.Abgesichert ? dialogHooks.Abgesichert({MapFile, table, backup}) : 0;
  if (choice == 1) {
    Table_File_Copy(table, backup);
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
    Menu(QStringLiteral("mnuNoTable")).Checked = false;
    Menu(QStringLiteral("mnuNoTable")).Caption = map_texts::safeMenuOff;
    Tell_Safe(map_texts::unchanged);
  } else {
    Tell_Safe(map_texts::stopped);
    throw GivenUp{};
  }
}

void Load_Entries(OpenMarker& marker) {
  Show_Background(map_texts::loadingTable);
  const QString table = Table_Name_Of_Map();
  marker.Add(table);
  Ask_Safe_Mode(table);
  if (Load_Table(LoadMode::First)) return;
  Message_Box(map_texts::noTable, MsgButtons::Ok, MsgIcon::Warning, map_texts::openTitle);
  throw GivenUp{};
}

void Show_Map() {
  frmMDI.MapOpen = true;
  Map.Visible = true;
  Map.Minimized = false;
  Menu(QStringLiteral("mnuDBGridOn")).Caption = QStringLiteral("&ausblenden");
  frmMDI.TblVisible = true;
  events.StateChanged.Emit();  // the window takes its place before the layout measures it
  Show_Background({});
  Map_Geometry();
}

void Check_Table(OpenMarker& marker) {
  if (Scan_Table()) {
    Close_Table(CloseMode::WithCopy);
    if (!Load_Table(LoadMode::Reload)) throw GivenUp{};
    marker.Remove();
    return;
  }
  marker.existed = false;
  marker.lines = QStringList{MapFile, TableFile};
  marker.Add(QStringLiteral("Datenbank beschädigt?"));
  Recover_Table();
  Raise(damagedTable);
}

void Finish_Open() {
  Tbl.Tag = QStringLiteral("Clean");
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  Menu(QStringLiteral("mnuReset")).Caption = QStringLiteral("Rückgängig");
  Set_Buttons(Current_Button_State());
  if (!frmMDI.TblVisible) Menu(QStringLiteral("mnuDBGridOn")).Caption = QStringLiteral("&Einblenden");
  Choose_Arrangement();
  events.StateChanged.Emit();
  Zoom_Map();
  events.MapOpened.Emit();
}

// Takes down what a failed open has built.
void Give_Up(OpenMarker& marker) {
  if (!marker.existed && !marker.path.isEmpty()) marker.Remove();
  Close_Map();
  MapHeightMm = -1.0F;
}

void Report(const Error& error, OpenMarker& marker) {
  const QString stem = TableFile.left(TableFile.size() - endingLength);
  const QString what = QStringLiteral("Fehler:    %1 %2").arg(error.number).arg(error.text);
  switch (error.number) {
    case damagedTable: {
      const MsgAnswer answer = Message_Box(map_texts::Damaged(stem), MsgButtons::YesNo, MsgIcon::Critical,
                                           QStringLiteral("Datenbankfehler"));
      Close_Map();  // the marker stays: the next open tells of it
      MapHeightMm = -1.0F;
      if (answer == MsgAnswer::No) events.EndWanted.Emit();
      return;
    }
    case 0:
    case errors::outOfMemory:
    case errors::fileNotFound:
    case errors::badPicture:
    case errors::pathNotFound:
      Message_Box(what + QStringLiteral("\nDie Karte kann nicht geladen werden.\n Karte öffnen. \n"
                                        "Die Ladeprozedur der Karteneinträge wurde abgebrochen."),
                  MsgButtons::Ok, MsgIcon::Critical, map_texts::openTitle);
      break;
    default: {
      // Without a table there is nothing to go on with; with one the map can be shown as far as it came.
      const MsgAnswer answer = Message_Box(what + QStringLiteral("\nMöchten Sie die Ladeprozedur abbrechen?"),
                                           MsgButtons::YesNo, MsgIcon::Question, map_texts::openTitle);
      if (answer == MsgAnswer::No && rsEntries && !Map.MapClip[0].image.isNull()) {
        Show_Map();
        Finish_Open();
        return;
      }
    }
  }
  Give_Up(marker);
}

void Open_Steps(const QString& path, OpenMarker& marker) {
  const QString found = Find_File(Clean_Path(path));
  Check_Map_File(found.isEmpty() ? path : found);
  if (found.isEmpty()) Raise(errors::fileNotFound, Error_Text(errors::fileNotFound) + QLatin1Char('\n') + path);
  Begin_Marker(marker, found);
  Map.Text2 = {};
  EntFont = QStringLiteral("Arial");
  EntFontSize = 14;
  Map.Caption = QStringLiteral("Map: ") + Capitals(found);
  frmMDI.Caption = QStringLiteral("FLURAX - 100%");
  Tbl.DBGrid1.Caption.clear();
  Show_Background(map_texts::loadingMap + QLatin1Char('\n') + found);
  Load_Scan(found);
  Load_Entries(marker);
  Show_Map();
  Check_Table(marker);
  Finish_Open();
  if (marker.existed) {
    const QString stem = TableFile.left(TableFile.size() - endingLength);
    Message_Box(map_texts::Not_Ended(stem), MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Datenbank"));
  }
  if (static_cast<qint64>(MapWidthPx) * MapHeightPx > bigMapPixels && frmMDI.Tips && dialogHooks.BigMapHint) {
    dialogHooks.BigMapHint({MapWidthPx, MapHeightPx}, Map.MapClip[0].image.depth());
    Map_Redraw();
  }
}

}  // namespace

void Open_Map(const QString& path) {
  if (frmMDI.MapOpen) {
    if (!Save_Table(SaveStep::AtMapChange)) return;
    Close_Map();
  }
  OpenMarker marker;
  try {
    Open_Steps(path, marker);
  } catch (const GivenUp&) {
    Give_Up(marker);
  } catch (const Error& error) {
    Report(error, marker);
  } catch (const std::bad_alloc&) {
    Report({errors::outOfMemory, Error_Text(errors::outOfMemory)}, marker);
  }
  if (frmMDI.MapOpen) Guarded(QStringLiteral("Koordinatennetz"), [] { Load_Cal(); });
}

void Open_User_Map(const QString& path) {
  Open_Map(path);
  if (!frmMDI.MapOpen || MapHeightMm < 0) return;
  Write_Log(MapFile, 1);
  Read_Log(1);
  Read_Log(2);
  events.StateChanged.Emit();
}

void Choose_Map() {
  FileRequest request;
  request.title = QStringLiteral("Karte laden ");
  request.defaultExtension = QStringLiteral("BMP");
  request.filter = QStringLiteral("Bitmap (*.bmp;  *.gif;   *.jpg;   *.wmf)|*.bmp;*.gif;*.jpg;*.wmf");
  QString start = Menu(QStringLiteral("mnuMapFile"), 1).Tag;
  if (start.isEmpty()) start = Program_File(QStringLiteral("Karte.bmp"));
  if (!start.contains(QLatin1Char('/'))) start = Program_File(start);
  request.folder = QFileInfo(start).path();
  request.name = QFileInfo(start).fileName();
  if (const auto path = File_Dialog(request)) Open_User_Map(*path);
}

void Open_Recent_Map(int index) {
  const QString path = Menu(QStringLiteral("mnuMapFile"), index).Tag;
  if (!path.isEmpty()) Open_User_Map(path);
}

void Reload_Map() {
  if (!frmMDI.MapOpen) return;
  const QString path = MapFile;
  Open_Map(path);
}

void Close_Map() {
  const bool wasOpen = frmMDI.MapOpen;
  const bool bound = static_cast<bool>(rsEntries);
  frmMDI.MapOpen = false;
  Map.Visible = false;
  if (bound) Close_Table(CloseMode::CloseOnly);
  Delete_Regions();
  Delete_Lock_Files();
  Clear_Map_Picture();
  Map.PlanLabels.clear();
  Drop_Coordinates();
  Map.Text2 = Map.imgBild = Map.imgRfLine = Map.lblShape = Map.lblPLQ = {};
  Map.CurBookmark.clear();
  Map.Caption.clear();
  Map.canvas = {};
  Map.MarkCount = Map.HiddenCount = Map.InactiveCount = 0;
  frmMDI.Caption = QStringLiteral("FLURAX - 100%");
  frmMDI.TblVisible = false;
  MapFile.clear();
  TableFile.clear();
  Tbl.DBGrid1.Caption.clear();
  Tbl.Tag = QStringLiteral("Clean");
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  Reset_InfoBar();
  Set_Buttons(ButtonState::NoMap);
  if (wasOpen) events.MapClosed.Emit();
}

void Table_Replaced() {
  if (!frmMDI.MapOpen) return;
  Scan_Table();
  Set_Buttons(Current_Button_State());
}

void Toggle_Safe_Mode() {
  frmMDI.SafeMode = !frmMDI.SafeMode;
  MenuState& menu = Menu(QStringLiteral("mnuNoTable"));
  menu.Checked = frmMDI.SafeMode;
  menu.Caption = frmMDI.SafeMode ? map_texts::safeMenuOn : map_texts::safeMenuOff;
  if (!frmMDI.MapOpen) InfoBar.Panel[0] = frmMDI.SafeMode ? map_texts::pleaseOpenSafe : map_texts::pleaseOpen;
  events.StateChanged.Emit();
  if (frmMDI.SafeMode)
    Message_Box(map_texts::safeOnText, MsgButtons::Ok, MsgIcon::Information, map_texts::safeOnTitle);
  else
    Message_Box(map_texts::safeOffText, MsgButtons::Ok, MsgIcon::Information, map_texts::safeOffTitle);
}

void Map_Geometry() {
  if (MapWidthPx < 1 || MapHeightPx < 1) return;
  if (PrintFactor <= 0) PrintFactor = 1.0F;
  MapPixelMm = static_cast<double>(MapWidthMm) / MapWidthPx * static_cast<double>(PrintFactor);
  MapPixelMmY = static_cast<double>(MapHeightMm) / MapHeightPx * static_cast<double>(PrintFactor);
}
