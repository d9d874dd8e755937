#include <QDir>
#include <QFileInfo>
#include <optional>

#include "platform/database.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/on_reset.h"
#include "state/table_state.h"
#include "store/file_names.h"
#include "store/map_log.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

// The file of the open table was deleted, moved or renamed under the program, or a folder above it. The open connection
// still has all rows; they are written to where the user wants them before anything closes it.

namespace texts = table_texts;
using namespace table_file;

namespace {

bool Is_Away() { return dbEntries && dbEntries->IsOpen() && dbEntries->Place_Now() != dbEntries->Name(); }

// UserTable was written here while the table is away: it is kept up to date without a question.
QString keptIn;
const OnReset fresh(keptIn);

QString What_Happened() {
  const QString now = dbEntries->Place_Now();
  return texts::away + TableFile + (now.isEmpty() ? texts::deleted : texts::moved + now) + texts::stillThere;
}

bool Place_Is_Free() { return !File_Exists(TableFile) && QFileInfo(QFileInfo(TableFile).absolutePath()).isWritable(); }

std::optional<QString> Ask_Place() {
  const QFileInfo table(TableFile);
  const bool folderThere = QFileInfo(table.absolutePath()).isWritable();
  const QString proposal = folderThere && File_Exists(TableFile)
                               ? Free_Name(Without_Ending(TableFile), QStringLiteral("_old.MDB"))
                               : (folderThere ? table.absolutePath() : QDir::homePath()) + u'/' + table.fileName();
  FileRequest request;
  request.save = true;
  request.title = texts::saveTitle;
  request.folder = QFileInfo(proposal).path();
  request.name = QFileInfo(proposal).fileName();
  request.defaultExtension = QStringLiteral("MDB");
  request.filter = texts::saveFilter;
  const auto chosen = File_Dialog(request);
  if (!chosen) return {};
  return Clean_Path(*chosen);
}

bool Write_Told(const QString& target) {
  try {
    if (!File_Exists(target)) {
      dbEntries->Copy_To(target);
      return true;
    }
    const QString aside = Aside_Name(target);
    dbEntries->Copy_To(aside);
    try {
      Table_File_Copy(aside, target);
      Kill_Quietly(aside);
    } catch (...) {
      Kill_Quietly(aside);
      throw;
    }
    return true;
  } catch (const Error& error) {
    Report_Copy_Error(target, error);
    return false;
  }
}

// Back at its place: from now on the table there is the open one.
Standing Put_Back_In_Place(bool closing) {
  try {
    dbEntries->Copy_To(TableFile);
  } catch (const Error& error) {
    Report_Copy_Error(TableFile, error);
    return Standing::Away;
  }
  const QString row = rsEntries && rsEntries->Position() >= 0 ? rsEntries->Bookmark() : QString();
  Close_Quietly();
  if (closing) return Standing::InPlace;
  if (!Load_Table(LoadMode::Reload)) return Standing::Away;
  Go_Back_To(row);
  return Standing::InPlace;
}

Standing Keep_Elsewhere(const QString& target, bool closing) {
  if (Same_Name(target, TableFile)) return Put_Back_In_Place(closing);
  if (!Write_Told(target)) return Standing::Away;
  keptIn = target;
  Name_User_Table(target);
  Tbl.Tag = TableTag::Clean;
  Write_Log(target, 2);
  Read_Log(2);
  Show_Saved(target);
  return Standing::Kept;
}

// Asks where the rows shall go.
Standing Keep_Rows(bool closing) {
  if (Place_Is_Free()) {
    const MsgAnswer answer =
        Message_Box(What_Happened() + texts::askBack, MsgButtons::YesNoCancel, MsgIcon::Warning, texts::saveTitle);
    if (answer == MsgAnswer::Yes) return Put_Back_In_Place(closing);
    if (answer != MsgAnswer::No) return Standing::Away;
  } else if (Message_Box(What_Happened() + texts::askPlace, MsgButtons::OkCancel, MsgIcon::Warning, texts::saveTitle) !=
             MsgAnswer::Ok) {
    return Standing::Away;
  }
  const auto place = Ask_Place();
  return place ? Keep_Elsewhere(*place, closing) : Standing::Away;
}

bool Update_Kept() {
  if (keptIn.isEmpty() || !Same_Name(keptIn, Tbl.DBGrid1.Caption)) return false;
  if (!Table_Is_Changed() && File_Exists(keptIn)) return true;
  if (!Write_Told(keptIn)) return false;
  Tbl.Tag = TableTag::Clean;
  return true;
}

}  // namespace

Standing table_file::Stand() {
  if (!Is_Away()) {
    keptIn.clear();
    return Standing::InPlace;
  }
  return Update_Kept() ? Standing::Kept : Keep_Rows(false);
}

bool table_file::Stands_Away() { return Is_Away(); }
bool table_file::Save_Away(const QString& target) { return Keep_Elsewhere(target, false) != Standing::Away; }

void table_file::Keep_Before_Closing() {
  if (!Is_Away() || dbEntries->InTrans() || Update_Kept()) return;
  if (const QString now = dbEntries->Place_Now(); !now.isEmpty()) {
    // All of it goes along there.
    Message_Box(What_Happened(), MsgButtons::Ok, MsgIcon::Warning, texts::saveTitle);
    return;
  }
  if (Keep_Rows(true) != Standing::Away || !dbEntries) return;
  const QString name = QFileInfo(TableFile).completeBaseName();
  const QString last = Free_Name(Program_File(name), QStringLiteral("_old.MDB"));
  if (Write_Told(last)) Message_Box(texts::keptUnder + last, MsgButtons::Ok, MsgIcon::Information, texts::saveTitle);
}

bool Table_In_Place() { return Stand() == Standing::InPlace; }
