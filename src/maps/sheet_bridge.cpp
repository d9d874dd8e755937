#include "maps/sheet_bridge.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTimer>
#include <memory>
#include <optional>

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
  std::optional<qint64> changes;  // of the open table; not known of an exchange that was begun before it was opened
  QByteArray given;               // fingerprint of the copy
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

QByteArray Fingerprint(const QString& path) {
  return QCryptographicHash::hash(Read_Bytes(path), QCryptographicHash::Sha256).toHex();
}

// A tool that was killed leaves its last changes in the log.
bool Is_Changed(const QString& copy, const QByteArray& given) {
  return File_Exists(copy) && (QFileInfo(copy + QStringLiteral("-wal")).size() > 0 || Fingerprint(copy) != given);
}

// Says of the copy whose it is and how it was, as long as its changes were neither taken over nor refused: this program
// may end before the tool does.
QString Note_File() { return Program_File(sheet_bridge::exchangeWord + QStringLiteral(".stamp")); }

void Write_Note(const Running& exchange) {
  Write_Lines(Note_File(), {exchange.table, QString::fromLatin1(exchange.given)});
}

std::shared_ptr<const Running> Read_Note() {
  if (!File_Exists(Note_File())) return {};
  const QStringList lines = Read_Lines(Note_File());
  if (lines.size() < 2) return {};
  return std::make_shared<Running>(Running{lines[0], {}, lines[1].toLatin1()});
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
  Kill_Quietly(Note_File());
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

bool Wants_What_Was_Left() {
  return Message_Box(
             QStringLiteral(
                 "TabBridge hat Einträge dieser Karte geändert, als Flurax schon beendet war.\nWas seitdem in der "
                 "Tabelle geändert wurde, geht verloren, wenn der Austausch übernommen wird (Rückgängig bringt "
                 "es wieder).\n\nSoll der Austausch übernommen werden?"),
             MsgButtons::YesNo, MsgIcon::Question, title) == MsgAnswer::Yes;
}

void Tool_Has_Ended(const std::shared_ptr<const Running>& which) {
  if (running != which) return;  // of an exchange that nobody waits for any more
  if (QGuiApplication::modalWindow()) {
    // The table must not be closed under a dialog that works on it.
    QTimer::singleShot(askAgainMilliseconds, [which] { Run_Guarded([which] { Tool_Has_Ended(which); }); });
    return;
  }
  running.reset();
  if (!Is_Changed(Exchange_File(), which->given)) {
    Kill_Quietly(Note_File());
    return;
  }
  if (!dbEntries || TableFile != which->table)
    return Tell(
        QStringLiteral("Die Karte, deren Einträge ausgetauscht wurden, ist nicht mehr geöffnet.\nDie Änderungen "
                       "werden angeboten, wenn sie wieder geöffnet wird."));
  if (!which->changes ? Wants_What_Was_Left() : dbEntries->ChangeCount() == *which->changes || Wants_To_Lose_Changes())
    return Take_Over();
  Kill_Quietly(Note_File());
}

// The tool of a program that has ended may still run.
void Take_What_Was_Left(const std::shared_ptr<const Running>& which) {
  if (running != which) return;
  if (!dbEntries || TableFile != which->table) return running.reset();
  if (Lock_Holder(Exchange_File()).isEmpty()) return Tool_Has_Ended(which);
  QTimer::singleShot(askAgainMilliseconds, [which] { Run_Guarded([which] { Take_What_Was_Left(which); }); });
}

// False if what another exchange has left shall stay.
bool May_Begin() {
  const auto left = Read_Note();
  if (!left || !Is_Changed(Exchange_File(), left->given)) return true;
  return Message_Box(
             QStringLiteral("Ein früherer Austausch hat Änderungen hinterlassen, die noch nicht übernommen sind:\n"
                            "%1\nSie werden beim Öffnen dieser Karte angeboten.\n\nSollen sie verworfen werden?")
                 .arg(left->table),
             MsgButtons::YesNo, MsgIcon::Question, title, MsgDefault::Second) == MsgAnswer::Yes;
}

}  // namespace

QString Exchange_File() { return Program_File(sheet_bridge::exchangeWord + QStringLiteral(".mdb")); }

void Export_Table() {
  if (!dbEntries || !Table_In_Place()) return;
  const bool armed = Menu(QStringLiteral("mnuReset")).Enabled;
  Close_Table(armed ? CloseMode::WithUserCopy : CloseMode::WithCopy);
  const bool open = Load_Table(LoadMode::Reload);
  Table_Replaced();
  events.RedrawWanted.Emit();
  if (!open) return;
  Tbl.Tag = TableTag::Clean;
  events.LeftHalfWanted.Emit();
  if (Start_Tool({}, {})) Tell_Done(QStringLiteral("TabBridge schreibt die Tabelle in die Arbeitsmappe"));
}

void Exchange_With_Sheet() {
  if (!dbEntries) return;
  const QString copy = Exchange_File();
  if (running || (File_Exists(copy) && !Lock_Holder(copy).isEmpty()))
    return Tell(QStringLiteral("TabBridge läuft schon.\nBitte schließen Sie zuerst sein Fenster."));
  if (!Table_In_Place() || !May_Begin()) return;
  try {
    Kill_Quietly(copy);
    dbEntries->Copy_To(copy);
    running = std::make_shared<Running>(Running{TableFile, dbEntries->ChangeCount(), Fingerprint(copy)});
    Write_Note(*running);
  } catch (const Error& error) {
    return Tell_Fault(Error_Text(error) + u'\n' + copy);
  }
  const auto ended = [which = running] { Run_Guarded([&which] { Tool_Has_Ended(which); }); };
  if (!Start_Tool({sheet_bridge::exchangeWord}, ended)) running.reset();
}

void Offer_Left_Exchange() {
  if (running) return;
  const auto left = Read_Note();
  if (!left || left->table != TableFile) return;
  running = left;
  // Not in the middle of opening.
  QTimer::singleShot(0, [left] { Run_Guarded([&left] { Take_What_Was_Left(left); }); });
}
