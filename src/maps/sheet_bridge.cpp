#include "maps/sheet_bridge.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QTimer>
#include <memory>

#include "hand/leave_hand.h"
#include "maps/map_open.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/shell.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "state/run_guarded.h"
#include "state/table_state.h"
#include "state/task_line.h"
#include "store/file_names.h"
#include "store/table_file.h"

namespace {

const QString faultTitle = QStringLiteral("Fehler - Export der Einträge nach EXCEL");
const QString title = QStringLiteral("Einträge austauschen");
constexpr int askAgainMilliseconds = 500;

// An exchange that runs: which table was given away, and how it was then.
struct Running {
  QString table;
  qint64 changes = 0;  // of the open table
  QByteArray given;    // the copy
};
std::shared_ptr<const Running> running;
const OnReset fresh(running);

void Tell_Fault(const QString& reason) {
  Message_Box(reason + QStringLiteral("\n\nBitte starten Sie das Programm TabBridge.exe\ndirekt vom Windows-Explorer."),
              MsgButtons::Ok, MsgIcon::Warning, faultTitle);
}

// False if it was not started; that was told.
bool Start_Tool(const QStringList& arguments, std::function<void()> ended) {
  const QString tool = Find_Program(sheet_bridge::program, ProgramFolder);
  if (tool.isEmpty())
    Tell_Fault(Error_Text(errors::fileNotFound) + u'\n' + Program_File(sheet_bridge::program));
  else if (Start_Program(tool, arguments, std::move(ended)))
    return true;
  else
    Tell_Fault(QStringLiteral("Das Programm kann nicht gestartet werden:\n") + tool);
  return false;
}

// A tool that was killed leaves its last changes in the log.
bool Is_Changed(const QString& copy, const QByteArray& given) {
  return File_Exists(copy) && (QFileInfo(copy + QStringLiteral("-wal")).size() > 0 || Read_Bytes(copy) != given);
}

void Tell(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title); }

// The changed copy over the table. What stands there now is the undo point.
void Take_Over() {
  const QString copy = Exchange_File();
  if (!Leave_Hand() || !Table_In_Place())
    return Tell(QStringLiteral("Die Änderungen stehen noch in der Datei:\n") + copy);
  const BusyPointer busy;
  // The table is replaced as a file: no row tells that something was written.
  Undo_Point(QStringLiteral("Rückgängig: Einträge austauschen"));
  Close_Table(CloseMode::CloseOnly);
  try {
    Table_File_Copy(copy, TableFile);
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + u'\n' + copy, MsgButtons::Ok, MsgIcon::Critical, title);
    Load_Table(LoadMode::Reload);
    return;
  }
  if (Load_Table(LoadMode::Reload)) Tbl.Tag = TableTag::Dirty;
  Table_Replaced();
  events.RedrawWanted.Emit();
  Tell_Done(QStringLiteral("Einträge ausgetauscht"));
}

bool Wants_To_Lose_Changes() {
  return Message_Box(
             QStringLiteral("Die Tabelle wurde geändert, während TabBridge lief.\nDiese Änderungen gehen verloren, "
                            "wenn der Austausch übernommen wird\n(Rückgängig bringt sie wieder).\n\nSoll der "
                            "Austausch übernommen werden?"),
             MsgButtons::YesNo, MsgIcon::Question, title, MsgDefault::Second) == MsgAnswer::Yes;
}

void Tool_Has_Ended(const std::shared_ptr<const Running>& which) {
  if (running != which) return;  // of an exchange that nobody waits for any more
  if (QGuiApplication::modalWindow()) {
    // The table must not be closed under a dialog that works on it.
    QTimer::singleShot(askAgainMilliseconds, [which] { Run_Guarded([which] { Tool_Has_Ended(which); }); });
    return;
  }
  running.reset();
  const QString copy = Exchange_File();
  if (!Is_Changed(copy, which->given)) return;
  if (!dbEntries || TableFile != which->table)
    return Tell(QStringLiteral("Die Karte, deren Einträge ausgetauscht wurden, ist nicht mehr geöffnet.\nDie geänderte "
                               "Tabelle steht in der Datei:\n") +
                copy);
  if (dbEntries->ChangeCount() == which->changes || Wants_To_Lose_Changes()) Take_Over();
}

}  // namespace

QString Exchange_File() { return Program_File(sheet_bridge::exchangeWord + QStringLiteral(".mdb")); }

void Export_Table() {
  if (!dbEntries || !Table_In_Place()) return;
  Close_Table(CloseMode::WithCopy);
  const bool open = Load_Table(LoadMode::Reload);
  Table_Replaced();
  events.RedrawWanted.Emit();
  if (!open) return;
  Tbl.Tag = TableTag::Clean;
  if (Start_Tool({}, {})) Tell_Done(QStringLiteral("TabBridge schreibt die Tabelle in die Arbeitsmappe"));
}

void Exchange_With_Sheet() {
  if (!dbEntries) return;
  const QString copy = Exchange_File();
  if (running || (File_Exists(copy) && !Lock_Holder(copy).isEmpty()))
    return Tell(QStringLiteral("TabBridge läuft schon.\nBitte schließen Sie zuerst sein Fenster."));
  if (!Table_In_Place()) return;
  try {
    Kill_Quietly(copy);
    dbEntries->Copy_To(copy);
    running = std::make_shared<Running>(Running{TableFile, dbEntries->ChangeCount(), Read_Bytes(copy)});
  } catch (const Error& error) {
    return Tell_Fault(Error_Text(error) + u'\n' + copy);
  }
  const auto ended = [which = running] { Run_Guarded([&which] { Tool_Has_Ended(which); }); };
  if (!Start_Tool({sheet_bridge::exchangeWord}, ended)) running.reset();
}
