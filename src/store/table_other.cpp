#include <optional>

#include "platform/database.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/header_row.h"
#include "store/history.h"
#include "store/map_log.h"
#include "store/old_table.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

// Another table into the standard table, and a new one.

namespace texts = table_texts;
using namespace table_file;

namespace {

void Report_Load_Error(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Critical, texts::loadTitle); }

std::optional<QString> Choose_Other_Table() {
  FileRequest request;
  request.title = texts::loadTitle;
  request.helpPage = QStringLiteral("Tabelle.htm");
  request.defaultExtension = QStringLiteral("MDB");
  request.filter = texts::loadFilter;
  QString name = Clean_Path(MapFile);
  Split_Path(name, request.folder);
  const std::optional<QString> chosen = File_Dialog(request);
  if (!chosen) return {};
  return Clean_Path(*chosen);
}

// What speaks against loading the file, before anything is touched.
QString Fault_Of(const QString& path) {
  if (const QString flaw = Path_Flaw(path, longestTablePath); !flaw.isEmpty()) return flaw;
  if (!File_Exists(path)) return path + QStringLiteral("\n\nDiese Datei wurde nicht gefunden.");
  if (Same_Name(path, TableFile)) return {};
  const QString fault = Table_Fault(path);
  if (fault.isEmpty()) return {};
  return path + u'\n' + texts::damaged + fault + texts::foreign;
}

// False if it is one of the old engine and could not be converted; that was told.
bool Convert_If_Old(const QString& path) {
  try {
    if (Is_Old_Table(path)) Convert_In_Place(path);
    return true;
  } catch (const Error& error) {
    Report_Load_Error(Error_Text(error));
    return false;
  }
}

// The header keeps long paths in a short form: then their last part has to do.
bool Same_Map(const QString& stored) {
  const QString upper = stored.toUpper();
  if (!upper.endsWith(QLatin1String(".BMP")) && !upper.endsWith(QLatin1String(".JPG"))) return true;
  const auto name_of = [](const QString& path) { return path.mid(path.lastIndexOf(u'/') + 1); };
  const QString mine = name_of(Clean_Path(MapFile).toUpper());
  const QString other = name_of(Clean_Path(upper));
  const qsizetype dots = other.indexOf(QLatin1String("..."));
  return dots < 0 ? other == mine : mine.endsWith(other.mid(dots + 3));
}

// Back to what was there before, from the snapshot: it holds changes that were not saved elsewhere as well.
void Put_Back(const QString& user, TableTag tag) {
  Close_Quietly();
  Tbl.DBGrid1.Caption = user;
  try {
    Table_File_Copy(Snapshot_File(), TableFile);
  } catch (const Error& error) {
    Report_Copy_Error(TableFile, error);
  }
  Load_Table(LoadMode::Reload);
  Drop_Steps_Ahead();
  Tbl.Tag = tag;
  Draw_If_Open();
}

bool Take_Other_Map() {
  const QString mapName = Read_Header().mapName;
  if (Same_Map(mapName)) return true;
  Draw_If_Open();  // the question is about what stands on the map now
  return Message_Box(texts::otherMap + mapName + texts::otherMapCheck, MsgButtons::YesNo, MsgIcon::Warning,
                     texts::loadTitle) == MsgAnswer::Yes;
}

}  // namespace

bool Load_Other_Table(const QString& wanted) {
  if (!Table_In_Place()) return false;
  const bool asked = Table_Is_Changed();
  if (asked && !Save_Before_Replacing()) return false;
  QString path = Clean_Path(wanted);
  if (path.isEmpty()) {
    const std::optional<QString> chosen = Choose_Other_Table();
    if (!chosen) return false;
    path = *chosen;
  }
  if (!Convert_If_Old(path)) return false;
  if (const QString fault = Fault_Of(path); !fault.isEmpty()) {
    Report_Load_Error(fault);
    return false;
  }
  if (!asked && !Same_Name(path, TableFile) && !Save_Before_Replacing()) return false;
  const QString user = Tbl.DBGrid1.Caption;
  const TableTag tag = Tbl.Tag;
  const BusyPointer busy;
  Write_Pending_Snapshot();
  Close_Quietly();
  if (!Take_Snapshot()) {
    Load_Table(LoadMode::Reload);
    return false;
  }
  events.BackgroundText.Emit(path);
  try {
    Keep_Former_Table(QStringLiteral("Einträge laden"));
    if (!Same_Name(path, TableFile)) Table_File_Copy(path, TableFile);
  } catch (const Error& error) {
    Report_Copy_Error(TableFile, error);
    Put_Back(user, tag);
    return false;
  }
  Tbl.DBGrid1.Caption = path;
  if (!Load_Table(LoadMode::Reload)) {
    Put_Back(user, tag);
    return false;
  }
  if (!Take_Other_Map()) {
    Put_Back(user, tag);
    return false;
  }
  Tbl.DBGrid1.Caption = path;
  Tbl.Tag = TableTag::Clean;
  Write_Log(path, 2);
  Read_Log(2);
  Draw_If_Open();
  Undo_Goes_Back_To(user);
  Arm_Undo(texts::undoLoad);
  return true;
}

void New_Table() {
  if (!rsEntries || !Table_In_Place() || !Save_Before_Replacing()) return;
  const BusyPointer busy;
  const QString user = Tbl.DBGrid1.Caption;
  const Copies copies = Close_With_Copies();
  if (!copies.snapshot || !copies.user) {  // without the copies the entries would be lost
    Load_Table(LoadMode::Reload);
    return;
  }
  events.BackgroundText.Emit(QStringLiteral("Neu"));
  bool loaded = false;
  try {
    Keep_Former_Table(QStringLiteral("Einträge neu"));
    Table_File_Delete(TableFile);
    loaded = Load_Table(LoadMode::Reload);
  } catch (const Error& error) {
    Report_Copy_Error(TableFile, error);
  }
  if (!loaded) {
    Put_Back(user, TableTag::Clean);
    return;
  }
  Draw_If_Open();
  Undo_Goes_Back_To(user);
  Arm_Undo(texts::undoNew);
}
