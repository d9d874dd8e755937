#include "maps/map_load.h"

#include <QDir>
#include <QFileInfo>

#include "maps/map_check.h"
#include "maps/map_close.h"
#include "maps/map_open_texts.h"
#include "maps/map_scan.h"
#include "maps/map_show.h"
#include "maps/open_marker.h"
#include "maps/safe_mode.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "state/dialog_hooks.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"
#include "store/table_file.h"

namespace {

constexpr qint64 bigMapPixels = 7'000'000;  // above it the hint for big maps appears
constexpr int damagedTable = 5000, openNotEnded = 5010;

// The open was given up by the user or after its message was shown: nothing more to tell.
struct GivenUp {};

QString Table_Stem() { return TableFile.left(TableFile.size() - mapEndingLength); }

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

void Load_Entries(OpenMarker& marker) {
  Show_Background(map_texts::loadingTable);
  const QString table = Table_Name_Of_Map();
  marker.Add(table);
  if (!Ask_Safe_Mode(table)) throw GivenUp{};
  if (Load_Table(LoadMode::First)) return;
  Message_Box(map_texts::noTable, MsgButtons::Ok, MsgIcon::Warning, map_texts::openTitle);
  throw GivenUp{};
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
  const QString stem = Table_Stem();
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
  Show_Opening(found);
  Take_Scan(found);
  Load_Entries(marker);
  Show_Map();
  Check_Table(marker);
  Finish_Open();
  if (marker.existed) {
    const QString stem = Table_Stem();
    Message_Box(map_texts::Not_Ended(stem), MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Datenbank"));
  }
  if (static_cast<qint64>(MapWidthPx) * MapHeightPx > bigMapPixels && frmMDI.Tips && dialogHooks.BigMapHint) {
    dialogHooks.BigMapHint({MapWidthPx, MapHeightPx});
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
