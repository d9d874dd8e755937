#include <optional>

#include "platform/file_dialog.h"
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
#include "store/map_log.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

namespace texts = table_texts;
using namespace table_file;

void table_file::Arm_Undo(const QString& caption) {
  MenuState& menu = Menu(QStringLiteral("mnuReset"));
  menu.Caption = caption;
  menu.Enabled = Snapshot_Is_Pending() || File_Exists(Snapshot_File());
  events.StateChanged.Emit();
}

void table_file::Disarm_Undo() {
  MenuState& menu = Menu(QStringLiteral("mnuReset"));
  menu.Caption = texts::undo;
  menu.Enabled = false;
  events.StateChanged.Emit();
}

void table_file::Draw_If_Open() {
  if (frmMDI.MapOpen) events.RedrawWanted.Emit();
}

void table_file::Show_Saved(const QString& path) {
  InfoBar.Panel[2] = path + texts::saved;
  events.StateChanged.Emit();
}

void table_file::Write_Header_Names(const QString& path, bool withMap) {
  HeaderRow header = Read_Header();
  header.tablePath = path;
  if (withMap) header.mapName = Shortened_Path(MapFile);
  Write_Without_Step([&header] { Write_Header(header); });
}

namespace {

struct SaveJob {
  SaveStep step;
  QString target;
};

void Report_Save_Error(const SaveJob& job, const QString& source, const Error& error, const QString& more = {}) {
  QString text = QStringLiteral("Step: ") + QString::number(static_cast<int>(job.step)) + QStringLiteral("\nQuelle: ") +
                 source + QStringLiteral("\nZiel: ") + job.target + u'\n';
  if (Is_Access_Error(error)) text += texts::noAccess + u'\n';
  if (!error.text.isEmpty()) text += error.text + u'\n';
  text += texts::notSaved + u'\n' + texts::shortNames + more;
  Message_Box(text, MsgButtons::Ok, MsgIcon::Critical, texts::saveErrorTitle);
  if (Is_Access_Error(error)) Show_No_Access(job.target);
}

QString File_Name(const QString& path) { return path.mid(path.lastIndexOf(u'/') + 1); }

// Step 2: the checkpoint itself brings the user's table up to date.
bool Save_Now() {
  if (!Table_Is_Changed()) {
    Show_Saved(Tbl.DBGrid1.Caption);
    return true;
  }
  const Checkpointed point = Checkpoint();
  Draw_If_Open();
  if (!point.loaded || !point.user) return false;
  Tbl.Tag = TableTag::Clean;
  Show_Saved(Tbl.DBGrid1.Caption);
  return true;
}

// Step 3. Where the snapshot is lost or damaged, the table is empty afterwards, and what it held is kept beside it. One
// of another table changes nothing.
bool Restore(const QString& step) {
  if (!Table_Is_Changed()) {
    Message_Box(texts::restored, MsgButtons::Ok, MsgIcon::Information, texts::saveTitle);
    return true;
  }
  if (!Table_In_Place() || !Write_Pending_Snapshot()) return false;
  Close_Quietly();
  const SaveJob job{SaveStep::Restore, TableFile};
  const SnapshotState snapshot = State_Of_Snapshot();
  try {
    if (snapshot != SnapshotState::Fits) Raise(errors::fileNotFound);
    Keep_Former_Table(step);
    Compact_Over(Snapshot_File(), TableFile);
  } catch (const Error& error) {
    QString more;
    try {
      if (snapshot == SnapshotState::Foreign) more = texts::foreignSnapshot;
      if (snapshot == SnapshotState::Unusable && File_Exists(TableFile)) {
        more =
            QStringLiteral("\n\nDie bisherige Tabelle liegt in:\n") + Put_Aside(TableFile, QStringLiteral("_bak.mdb"));
      }
    } catch (const Error&) {
      // It stays where it is.
    }
    Report_Save_Error(job, Snapshot_File(), error, more);
    Load_Table(LoadMode::Reload);
    Draw_If_Open();
    return false;
  }
  if (!User_Of_Snapshot().isEmpty()) Tbl.DBGrid1.Caption = User_Of_Snapshot();
  if (!Load_Table(LoadMode::Reload)) return false;
  Draw_If_Open();
  Message_Box(texts::restored, MsgButtons::Ok, MsgIcon::Information, texts::saveTitle);
  return true;
}

bool Holds_Map_Name(const QString& path) {
  const QString map = File_Name(Cut_At_First_Point(Clean_Path(MapFile)));
  return !map.isEmpty() && File_Name(path).contains(map, Qt::CaseInsensitive);
}

// Asks for the target until the name is fit; nothing if the user cancels.
std::optional<QString> Ask_Target() {
  const QString user = Tbl.DBGrid1.Caption;
  const QString base = Cut_At_First_Point(user);
  QString proposal = user;
  if (Same_Name(user, TableFile) || Holds_Map_Name(user)) proposal = base + QStringLiteral("_Neu.MDB");
  for (;;) {
    FileRequest request;
    request.save = true;
    request.title = texts::saveTitle;
    request.name = File_Name(proposal);
    request.folder = proposal.chopped(request.name.size());
    request.defaultExtension = QStringLiteral("MDB");
    request.filter = texts::saveFilter;
    const std::optional<QString> answer = File_Dialog(request);
    if (!answer) return {};
    const QString chosen = Clean_Path(*answer);
    if (File_Name(chosen).contains(u'-')) {
      Message_Box(texts::minus, MsgButtons::Ok, MsgIcon::Warning, texts::saveErrorTitle);
      proposal = base + QStringLiteral("_Neu.MDB");
      continue;
    }
    if (const QString flaw = Path_Flaw(chosen, longestTablePath, longestTableName); !flaw.isEmpty()) {
      Message_Box(flaw, MsgButtons::Ok, MsgIcon::Warning, texts::saveErrorTitle);
      continue;
    }
    if (Check_File_Name(chosen)) {
      proposal = chosen;
      continue;
    }
    if (!Same_Name(chosen, TableFile) && !Holds_Map_Name(chosen)) return chosen;
    const MsgAnswer sure =
        Message_Box(texts::askReally + u'\n' + chosen, MsgButtons::YesNoCancel, MsgIcon::Question, texts::saveTitle);
    if (sure == MsgAnswer::Yes) return chosen;
    if (sure != MsgAnswer::No) return {};
    proposal = base + QStringLiteral("-Neu.MDB");
  }
}

// Steps 6 to 8: header, copy, names.
bool Copy_To_Target(const SaveJob& job) {
  if (Stands_Away()) return Save_Away(job.target);
  const QString former = Tbl.DBGrid1.Caption;
  QString row;
  if (rsEntries->Position() >= 0) row = rsEntries->Bookmark();
  const auto reload = [&] {
    if (!Load_Table(LoadMode::Reload)) return false;
    Go_Back_To(row);
    return true;
  };
  const TableTag tag = Tbl.Tag;
  Write_Pending_Snapshot();
  try {
    Write_Header_Names(job.target, true);
    Close_Quietly();
    if (!Same_Name(job.target, TableFile)) Table_File_Copy(TableFile, job.target);
  } catch (const Error& error) {
    Report_Save_Error(job, TableFile, error);
    reload();  // the header names the former table again
    Tbl.DBGrid1.Caption = former;
    Tbl.Tag = tag;
    return false;
  }
  Tbl.DBGrid1.Caption = job.target;
  const bool loaded = reload();
  if (job.step == SaveStep::AtMapChange || job.step == SaveStep::SaveAs) {
    Write_Log(job.target, 2);
    Read_Log(2);
  }
  if (loaded) Tbl.Tag = TableTag::Clean;
  Show_Saved(job.target);
  return loaded;
}

QString Old_Name() { return Free_Name(Cut_At_First_Point(TableFile), QStringLiteral("_old.MDB")); }
bool Is_Standard(const QString& user) { return user.isEmpty() || Same_Name(user, TableFile); }
bool Ask_To_Save(const QString& question) {
  return Message_Box(question, MsgButtons::YesNo, MsgIcon::Question, texts::saveTitle) == MsgAnswer::Yes;
}

// Step 0. False only if the entries should have been saved and were not.
bool Save_At_Map_Change() {
  if (Entry_Count() < 2 || !Table_Is_Changed()) return true;
  const QString user = Tbl.DBGrid1.Caption;
  const QString target = Is_Standard(user) ? Old_Name() : user;
  if (!Ask_To_Save(Is_Standard(user) ? texts::askOwnName + u'\n' + target : texts::askChanged)) return true;
  return Copy_To_Target({SaveStep::AtMapChange, target});
}

// UserTable is a file of its own that holds the entries as they were when they were last saved.
bool Have_Own_File() { return !Is_Standard(Tbl.DBGrid1.Caption) && File_Exists(Tbl.DBGrid1.Caption); }

}  // namespace

bool table_file::Save_Before_Replacing() {
  if (Entry_Count() < 1) return true;
  const bool changed = Table_Is_Changed(), alone = !Have_Own_File();
  if (!changed && (!alone || Stand_In_Another_File())) return true;
  const QString old = Old_Name();
  if (!Ask_To_Save(changed ? texts::askChanged : texts::askOwnName + u'\n' + old)) return true;
  if (!(alone ? Copy_To_Target({SaveStep::AtMapChange, old}) : Save_Now())) {
    Message_Box(texts::notSaved, MsgButtons::Ok, MsgIcon::Warning, texts::saveTitle);
    return false;
  }
  if (changed && alone) Message_Box(texts::keptUnder + old, MsgButtons::Ok, MsgIcon::Information, texts::saveTitle);
  return true;
}

void Name_User_Table(const QString& path) {
  QString& user = Tbl.DBGrid1.Caption;
  if (!user.isEmpty() && InfoBar.Panel[2].startsWith(user)) InfoBar.Panel[2] = path;
  user = path;
  events.StateChanged.Emit();
}

bool Save_Table(SaveStep step) {
  const BusyPointer busy;
  if (step == SaveStep::Restore) return Restore(QStringLiteral("Einträge wiederherstellen"));
  if (!rsEntries) return false;
  switch (step) {
    case SaveStep::AtMapChange:
      return Save_At_Map_Change();
    case SaveStep::Save:
      return Save_Now();
    case SaveStep::GivenName:
      return Copy_To_Target({step, Tbl.DBGrid1.Caption});
    case SaveStep::SaveAs:
      break;
    case SaveStep::Restore:
      return false;
  }
  const std::optional<QString> target = Ask_Target();
  return target && Copy_To_Target({step, *target});
}

void Undo_Last() {
  Tbl.Tag = TableTag::Dirty;
  const BusyPointer busy;
  Restore(Menu(QStringLiteral("mnuReset")).Caption);
  Menu(QStringLiteral("mnuReset")).Enabled = false;
  events.StateChanged.Emit();
}
