#include "maps/map_load.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include "edit/table_edit.h"
#include "maps/map_check.h"
#include "maps/map_close.h"
#include "maps/map_open_texts.h"
#include "maps/menu_state.h"
#include "maps/safe_mode.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/file_names.h"
#include "store/table_file.h"
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
  Map.Zoom = 1.0F;
  Map.ZoomMenu = QStringLiteral("mnuZoom100");
}

void Load_Entries(OpenMarker& marker) {
  Show_Background(map_texts::loadingTable);
  const QString table = Table_Name_Of_Map();
  marker.Add(table);
  if (!Ask_Safe_Mode(table)) throw GivenUp{};
  if (Load_Table(LoadMode::First)) return;
  Message_Box(map_texts::noTable, MsgButtons::Ok, MsgIcon::Warning, map_texts::openTitle);
  throw GivenUp{};
}

void Show_Map() {
  frmMDI.MapOpen = true;
  Map.Visible = true;
  Map.Minimized = false;
  frmMDI.TblVisible = true;
  Tbl.Switched = TableSwitch::AtOpening;
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
  Tbl.Tag = TableTag::Clean;
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  Menu(QStringLiteral("mnuReset")).Caption = QStringLiteral("Rückgängig");
  Set_Buttons();
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

// Without a table there is nothing to go on with; with one the map is shown as far as it came.
bool Go_On(const OpenMarker& marker) {
  if (!rsEntries || Map.MapClip[0].image.isNull()) return false;
  Show_Map();
  Finish_Open();
  if (!marker.existed) marker.Remove();
  return true;
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
    case errors::printer:
      // A map is of use without a printer.
      Message_Box(what + map_texts::noPrinter, MsgButtons::Ok, MsgIcon::Warning, map_texts::openTitle);
      if (Go_On(marker)) return;
      break;
    default:
      if (Message_Box(what + QStringLiteral("\nMöchten Sie die Ladeprozedur abbrechen?"), MsgButtons::YesNo,
                      MsgIcon::Question, map_texts::openTitle) == MsgAnswer::No &&
          Go_On(marker))
        return;
  }
  Give_Up(marker);
}

void Open_Steps(const QString& path, OpenMarker& marker) {
  QString found = Find_File(Clean_Path(path));
  // Whoever writes beside the map need not know what the working folder was.
  if (!found.isEmpty()) found = QFileInfo(found).absoluteFilePath();
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
    events.RedrawWanted.Emit();
  }
}

}  // namespace

void Load_Map(const QString& path) {
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
}

void Map_Geometry() {
  if (MapWidthPx < 1 || MapHeightPx < 1) return;
  if (PrintFactor <= 0) PrintFactor = 1.0F;
  MapPixelMm = static_cast<double>(MapWidthMm) / MapWidthPx * static_cast<double>(PrintFactor);
  MapPixelMmY = static_cast<double>(MapHeightMm) / MapHeightPx * static_cast<double>(PrintFactor);
}
