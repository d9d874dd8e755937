#include "store/table_file.h"

#include <algorithm>
#include <optional>

#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/header_row.h"
#include "store/history.h"
#include "store/old_table.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

namespace texts = table_texts;
using namespace table_file;

// Closing ------------------------------------------------------------------------------------------------------------

void table_file::Close_Quietly() {
  Leave_Table();
  rsEntries.reset();
  if (dbEntries) {
    try {
      if (dbEntries->InTrans()) dbEntries->Rollback();
      dbEntries->Close();
    } catch (const Error&) {
      // A full disk at the last checkpoint: the rows wait in the log and are read at the next opening.
    }
    dbEntries.reset();
    events.TableChanged.Emit();
  }
}

namespace {

Copies Close_With_User_Copy() {
  const QString user = Tbl.DBGrid1.Caption;
  Close_Quietly();
  Copies copies;
  if (!user.isEmpty() && !Same_Name(user, TableFile)) {
    try {
      Compact_Over(TableFile, user);
    } catch (const Error& error) {
      copies.user = false;
      Report_Copy_Error(user, error);
    }
  }
  return copies;
}

}  // namespace

Copies table_file::Close_With_Copies() {
  Copies copies = Close_With_User_Copy();
  copies.snapshot = Take_Snapshot();
  return copies;
}

void Close_Table(CloseMode mode) {
  if (mode == CloseMode::CloseOnly) {
    Write_Pending_Snapshot();
    Keep_Before_Closing();
    Close_Quietly();
  } else if (mode == CloseMode::WithUserCopy) {
    Close_With_User_Copy();
  } else {
    Close_With_Copies();
  }
}

// Loading ------------------------------------------------------------------------------------------------------------

namespace {

enum class Opened { Yes, Again, AskedAgain, No };  // AskedAgain: the user wants one more try

void Check_Columns() {
  const std::vector<FieldInfo>& fields = rsEntries->Fields();
  const bool ours = fields.size() >= static_cast<size_t>(column::fixedCount) &&
                    fields[0].name.compare(QLatin1String("ID"), Qt::CaseInsensitive) == 0 &&
                    fields[1].name.compare(QLatin1String("Eintrag"), Qt::CaseInsensitive) == 0;
  if (!ours) Raise(errors::databaseDamaged, QStringLiteral("Die Spalten der Tabelle MapData stimmen nicht."));
  Tbl.HasUserColumns = fields.size() > static_cast<size_t>(column::fixedCount);
  const int size = fields[column::Eintrag].size;
  Tbl.EintragSize = size > 0 ? size : textColumnWidth;
}

void Write_New_Header() {
  if (CurVG < 0 || CurVG > 15) CurVG = 0;
  if (CurHG < 0 || CurHG > 15) CurHG = 15;
  HeaderRow header;
  header.tablePath = TableFile;
  header.mapName = Shortened_Path(MapFile);
  header.width = MapWidthPx;
  header.height = MapHeightPx;
  Append_Entry(header.ToEntry());
  rsEntries->MoveLast();
  Tbl.Tag = TableTag::Dirty;
}

// Puts right what is wrong in the header and takes over what it tells.
void Take_Header() {
  rsEntries->MoveFirst();
  EntryRow row = Read_Entry(*rsEntries, ownPlaces, Beyond16::Nearest);
  bool repaired = false;
  HeaderRow header = HeaderRow::FromEntry(row, &repaired);
  PrintFactor = static_cast<float>(header.printFactor);
  GridVisible = header.netVisible;
  header.tablePath = Tbl.DBGrid1.Caption;
  const EntryRow sound = header.ToEntry();
  const bool moved = row.Eintrag != sound.Eintrag;  // the file was copied to another place
  if (!repaired && !moved) return;
  const TableTag tag = Tbl.Tag;
  row.ID = sound.ID;
  row.Eintrag = sound.Eintrag;
  row.Xline = sound.Xline;
  row.Typ = sound.Typ;
  try {
    Update_Entry(row);
    if (!repaired) Tbl.Tag = tag;
  } catch (const Error&) {
    // A full disk: the table can be read all the same, and the next loading tries again.
  }
}

void Set_Current_Row() {
  rsEntries->MoveLast();
  Map.CurBookmark = rsEntries->Position() >= 0 ? rsEntries->Bookmark() : QString();
  events.TableChanged.Emit();
  events.CurrentRowChanged.Emit();
  events.StateChanged.Emit();
}

void Bind() {
  dbEntries = Workspace::OpenDatabase(TableFile);
  if (!dbEntries->HasTable(QStringLiteral("MapData")))
    Raise(errors::databaseDamaged, QStringLiteral("Die Tabelle MapData fehlt."));
  rsEntries = dbEntries->OpenRecordset(QStringLiteral("MapData"));
  Check_Columns();
  if (Tbl.DBGrid1.Caption.isEmpty()) Tbl.DBGrid1.Caption = TableFile;
  if (rsEntries->RecordCount() == 0) {
    PrintFactor = 1.0F;
    Write_New_Header();
  } else {
    Take_Header();
  }
  Follow_Table();
  rsEntries->MoveFirst();
}

bool Make_New_Table() {
  Tbl.DBGrid1.Caption = TableFile;
  const QString pattern = Program_File(QStringLiteral("MUSTER.MDB"));
  try {
    CompactDatabase(pattern, TableFile);
    return true;
  } catch (const Error& error) {
    if (!File_Exists(pattern) || !Table_Fault(pattern).isEmpty()) {
      const QString text = texts::damaged + error.text + texts::noTemplate + ProgramFolder;
      if (Message_Box(text, MsgButtons::YesNo, MsgIcon::Critical, texts::errorTitle) == MsgAnswer::Yes)
        events.EndWanted.Emit();
    } else if (Is_Access_Error(error)) {
      Show_No_Access(TableFile);
    } else {
      Report_Copy_Error(TableFile, error);
    }
    return false;
  }
}

void Tell_Rescued(const RepairReport& report, const QString& damagedCopy) {
  QString text =
      texts::renamed + u'\n' + damagedCopy +
      QStringLiteral("\n\nAus ihr wurden %1 Karteneinträge gerettet und geladen.").arg(Rescued_Entries(report));
  if (report.droppedTexts > 0) text += QStringLiteral("\nUnlesbare Texte: %1.").arg(report.droppedTexts);
  Message_Box(text, MsgButtons::Ok, MsgIcon::Information, texts::errorTitle);
}

// True if the damaged file was put together again and is a table of ours. The damaged one is kept as "_err.mdb".
bool Rescue() {
  RepairReport report;
  try {
    report = RepairDatabase(TableFile);
    if (report.wasSound || !Table_Fault(TableFile).isEmpty()) return false;
  } catch (const Error&) {
    return false;
  }
  QString kept = report.damagedCopy;
  try {
    kept = Free_Aside_Name(TableFile, QStringLiteral("_err.mdb"));
    Table_File_Rename(report.damagedCopy, kept);
  } catch (const Error&) {
    kept = report.damagedCopy;
  }
  Tell_Rescued(report, kept);
  return true;
}

// A damaged or foreign file. What can be rescued is loaded; else a reload takes the snapshot, a first load begins a new
// table. The file itself is always kept.
Opened Treat_Bad_File(LoadMode mode, const Error& error) {
  Message_Box(TableFile + u'\n' + texts::damaged + error.text + texts::foreign, MsgButtons::Ok, MsgIcon::Critical,
              texts::errorTitle);
  try {
    if (Rescue()) {
      Tbl.Tag = TableTag::Dirty;
      return Opened::Again;
    }
    const bool fromSnapshot = mode == LoadMode::Reload && Snapshot_Fits();
    const QString kept = Put_Aside(TableFile, QStringLiteral("_err.mdb"));
    if (fromSnapshot) {
      Tbl.Tag = TableTag::Dirty;
      Compact_Over(Snapshot_File(), TableFile);
      Message_Box(texts::restored + QStringLiteral("\n\n") + texts::renamed + u'\n' + kept, MsgButtons::Ok,
                  MsgIcon::Information, texts::saveTitle);
    } else {
      Delete_Lock_Files();
      Message_Box(texts::renamed + u'\n' + kept + QStringLiteral("\n\n") + texts::loadBackup, MsgButtons::Ok,
                  MsgIcon::Information, texts::errorTitle);
    }
    return Opened::Again;
  } catch (const Error& failure) {
    if (Is_Access_Error(failure)) {
      Show_No_Access(TableFile);
    } else {
      Report_Copy_Error(TableFile, failure);
    }
    return Opened::No;
  }
}

Opened Treat_File_In_Use() {
  const QString holder = Lock_Holder(TableFile);
  const QString text = QStringLiteral("Diese Tabelle der Karteneinträge ist bereits geöffnet:\n") + TableFile +
                       QStringLiteral("\n\nSie wird benutzt von: ") +
                       (holder.isEmpty() ? QStringLiteral("einem anderen Programm") : holder) +
                       QStringLiteral(
                           "\nBitte schließen Sie dort die Karte."
                           "\n\nMöchten Sie noch einmal versuchen, die Tabelle zu öffnen?");
  const MsgAnswer answer =
      Message_Box(text, MsgButtons::YesNo, MsgIcon::Warning, texts::errorTitle, MsgDefault::Second);
  return answer == MsgAnswer::Yes ? Opened::AskedAgain : Opened::No;
}

Opened Ask_For_New_Table(const Error& error) {
  const QString text = TableFile + u'\n' + error.text + QStringLiteral("\n\n") + texts::askNewTable;
  const MsgAnswer answer =
      Message_Box(text, MsgButtons::YesNo, MsgIcon::Question, texts::errorTitle, MsgDefault::Second);
  if (answer != MsgAnswer::Yes) return Opened::No;
  try {
    if (File_Exists(TableFile)) Put_Aside(TableFile, QStringLiteral("_err.mdb"));
    return Opened::Again;
  } catch (const Error& failure) {
    Report_Copy_Error(TableFile, failure);
    return Opened::No;
  }
}

bool Is_Bad_File(const Error& error) {
  return error.number == errors::databaseDamaged || error.number == errors::tableNotFound ||
         error.number == errors::fieldNotFound;
}

Opened Treat(const Error& error, LoadMode mode, bool lastTry) {
  if (error.number == errors::fileInUse || error.number == errors::databaseInUse) return Treat_File_In_Use();
  if (Is_Access_Error(error)) {
    Show_No_Access(TableFile);
    return Opened::No;
  }
  if (error.number == errors::diskFull) {
    Report_Copy_Error(TableFile, error);
    return Opened::No;
  }
  if (lastTry) {
    Message_Box(TableFile + u'\n' + error.text, MsgButtons::Ok, MsgIcon::Critical, texts::errorTitle);
    return Opened::No;
  }
  const bool missing = error.number == errors::databaseNotFound || error.number == errors::fileNotFound;
  if (missing) return Opened::Again;
  return Is_Bad_File(error) ? Treat_Bad_File(mode, error) : Ask_For_New_Table(error);
}

Opened Try_Load(LoadMode mode, bool lastTry) {
  if (!File_Exists(TableFile) && !Make_New_Table()) return Opened::No;
  std::optional<Error> failed;
  try {
    if (Is_Old_Table(TableFile)) Convert_In_Place(TableFile);
    Bind();
  } catch (const Error& error) {
    failed = error;
  }
  if (!failed) return Opened::Yes;
  Close_Quietly();                                                 // before anything is done with the file
  if (Is_Old_Table(TableFile)) return Ask_For_New_Table(*failed);  // there is nothing in it to be mended
  return Treat(*failed, mode, lastTry);
}

}  // namespace

bool Load_Table(LoadMode mode) {
  Tell_Known_Tables();
  if (mode == LoadMode::First) Write_Pending_Snapshot();
  Close_Quietly();
  TableFile = Table_Name_Of_Map();
  if (!TableFile.contains(u'/')) TableFile = Program_File(TableFile);
  if (mode == LoadMode::First) {
    Tbl.DBGrid1.Caption = TableFile;
    Forget_Snapshot();
  }
  bool lastTry = false;
  for (Opened opened = Opened::Again; opened != Opened::Yes;) {
    opened = Try_Load(mode, lastTry);
    if (opened == Opened::No) return false;
    if (opened == Opened::Again) lastTry = true;
  }
  Set_Current_Row();
  return true;
}

void table_file::Go_Back_To(const QString& row) {
  if (row.isEmpty() || !rsEntries->HasRow(row)) return;
  rsEntries->SetBookmark(row);
  Map.CurBookmark = row;
  events.CurrentRowChanged.Emit();
}

table_file::Checkpointed table_file::Checkpoint() {
  Checkpointed result;
  if (const Standing standing = Stand(); standing != Standing::InPlace) {
    result.user = standing == Standing::Kept;
    result.snapshot = false;  // an undo would have no place to go back to
    result.loaded = dbEntries != nullptr;
    return result;
  }
  QString row;
  if (rsEntries && rsEntries->Position() >= 0) row = rsEntries->Bookmark();
  static_cast<Copies&>(result) = Close_With_Copies();
  result.loaded = Load_Table(LoadMode::Reload);
  if (result.loaded) Go_Back_To(row);
  return result;
}

// Where the user's table is the standard table there is nothing to bring up to date but the snapshot.
void Undo_Point(const QString& caption) {
  if (dbEntries && !dbEntries->InTrans() && !Stands_Away()) {
    const QString user = Tbl.DBGrid1.Caption;
    const bool standard = Same_Name(user, TableFile);
    if (rsEntries->Editing()) rsEntries->CancelUpdate();
    if (standard) {
      Take_Snapshot_Of_Open_Table() ? Arm_Undo(caption) : Disarm_Undo();
      return;
    }
    if (!user.isEmpty() && Mark_Snapshot_And_User(user)) {
      if (rsEntries->Position() >= 0) Go_Back_To(rsEntries->Bookmark());
      return Arm_Undo(caption);
    }
  }
  const Checkpointed point = Checkpoint();
  if (point.loaded && point.snapshot) {
    Arm_Undo(caption);
  } else {
    Disarm_Undo();
  }
}

bool Table_Idle_Some(int milliseconds) {
  if (!dbEntries || dbEntries->InTrans()) return false;
  if (Snapshot_Is_Pending()) {
    Write_Pending_Snapshot(QDeadlineTimer(milliseconds));
    return true;  // the log in a piece of its own
  }
  Table_Idle();
  return false;
}

void Table_Idle() {
  if (!dbEntries || dbEntries->InTrans()) return;
  Write_Pending_Snapshot();
  try {
    dbEntries->Checkpoint();
  } catch (const Error&) {
    // The rows are safe in the log; the next idle moment tries again.
  }
}
