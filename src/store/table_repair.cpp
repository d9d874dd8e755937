#include <QFileInfo>
#include <algorithm>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "state/task_line.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/history.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

namespace texts = table_texts;
using namespace table_file;

void Tell_Known_Tables() { Set_Known_Tables({MapData_Def(), Qdata_Def(), Vertex_Def({})}); }

int table_file::Rescued_Entries(const RepairReport& report) {
  return std::max(0, report.Rows_In(MapData_Def().name) - 1);
}

namespace {

QString Bytes_Of(const QString& path) { return QString::number(QFileInfo(path).size()) + QStringLiteral(" Bytes"); }

}  // namespace

void Compress_Table() {
  if (!Table_In_Place()) return;
  const BusyPointer busy;
  events.BackgroundText.Emit(TableFile);
  const QString sorted = Sorted_File();
  Write_Pending_Snapshot();
  Close_Quietly();
  const QString before = Bytes_Of(TableFile);
  bool done = false;
  try {
    Kill_Quietly(sorted);
    CompactDatabase(TableFile, sorted);
    if (Take_Snapshot()) {
      Table_File_Copy(sorted, TableFile);
      done = true;
    }
  } catch (const Error& error) {
    if (Is_Access_Error(error)) {
      Show_No_Access(ProgramFolder);
    } else {
      Report_Copy_Error(TableFile, error);
    }
  }
  Kill_Quietly(sorted);
  const QString after = Bytes_Of(TableFile);
  if (!Load_Table(LoadMode::Reload)) return;
  if (done) {
    Message_Box(Tbl.DBGrid1.Caption + u'\n' + texts::sizeBefore + before + u'\n' + texts::sizeAfter + after,
                MsgButtons::Ok, MsgIcon::Information, texts::compressTitle);
  }
  Draw_If_Open();
}

// The copies are made of the repaired file: a damaged one would spoil them.
QString Repair_Table() {
  if (!Table_In_Place()) return {};
  const BusyPointer busy;
  Tell_Known_Tables();
  Write_Pending_Snapshot();
  Close_Quietly();
  QString text;
  try {
    Keep_Former_Table(QStringLiteral("Tabelle repariert"));
    const RepairReport report = RepairDatabase(TableFile);
    if (!report.wasSound) {
      text = QStringLiteral("Diese Tabelle wurde repariert:\n") + TableFile +
             QStringLiteral("\n\nGerettete Karteneinträge: %1\nDie beschädigte Datei liegt in:\n")
                 .arg(Rescued_Entries(report)) +
             report.damagedCopy;
      Tbl.Tag = TableTag::Dirty;
    }
    Close_With_Copies();
  } catch (const Error& error) {
    text = TableFile + u'\n' + error.text;
  }
  const bool loaded = Load_Table(LoadMode::Reload);
  if (!text.isEmpty()) Message_Box(text, MsgButtons::Ok, MsgIcon::Information, texts::repairTitle);
  Draw_If_Open();
  if (!text.isEmpty() || !loaded) return {};
  return QStringLiteral("Tabelle geprüft und in Ordnung: ") + Entries_Text(Entry_Count());
}

// Leaves three copies beside the table: as it was (_err), repaired (_rep), and the last snapshot (_bak). Without a
// snapshot of this map the third is the repaired one, so that every name that is told exists.
void Recover_Table() {
  Tell_Known_Tables();
  Write_Pending_Snapshot();
  Close_Quietly();
  const QString bak = Free_Aside_Name(TableFile, QStringLiteral("_bak.mdb"));
  const QString rep = Free_Aside_Name(TableFile, QStringLiteral("_rep.mdb"));
  const QString err = Free_Aside_Name(TableFile, QStringLiteral("_err.mdb"));
  Table_File_Copy(TableFile, err);
  try {
    const RepairReport report = RepairDatabase(TableFile);
    if (!report.wasSound) Table_File_Delete(report.damagedCopy);  // the same as "_err.mdb"
  } catch (const Error&) {
    // Nothing can be read any more: then "_rep" is as damaged as "_err".
  }
  Table_File_Rename(TableFile, rep);
  Tbl.Tag = TableTag::Dirty;
  if (Snapshot_Fits() && Save_Table(SaveStep::Restore)) {
    Close_Quietly();
    Table_File_Rename(TableFile, bak);
  } else {
    Close_Quietly();
    Table_File_Copy(rep, bak);
  }
}
