#include "maps/note_pads.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/error.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/map_log.h"

namespace {

constexpr int textList = 3;                 // kind of the recent list
constexpr qint64 largestText = 16LL << 20;  // bytes a note pad takes

bool Is_Slot(int slot) { return slot >= 0 && slot < NotePads.size(); }

FileRequest Text_Request(bool save, const QString& path) {
  FileRequest request;
  request.save = save;
  request.title = save ? QStringLiteral("Text speichern unter") : QStringLiteral("Text öffnen");
  request.defaultExtension = QStringLiteral("txt");
  request.helpPage = QStringLiteral("Notizen.htm");
  request.filter = QStringLiteral("Texte (*.txt; *.src)|*.txt;*.src|Alle Dateien (*.*)|*.*");
  request.folder = QFileInfo(!path.isEmpty() ? path : MapFile).path();
  request.name = path.isEmpty() && save ? QStringLiteral("Notiz.txt") : QFileInfo(path).fileName();
  return request;
}

void Show_Error(const QString& path, const Error& error, const QString& what) {
  Message_Box(path + u'\n' + what + QStringLiteral("\n\nError: %1 %2").arg(error.number).arg(error.text),
              MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("Notizen"));
}

void Put_On_Recent_List(const QString& path) {
  Write_Log(path, textList);
  Read_Log(textList);
}

// Writes what the file can hold; what it cannot is told before.
bool Write_Text(const QString& path, const QString& text) {
  QString lines = text;
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n').replace(u'\n', QLatin1String("\r\n"));
  const QByteArray bytes = To_1252(lines);
  if (From_1252(bytes) != lines &&
      Message_Box(
          QStringLiteral("Der Text enthält Zeichen, die in einer Textdatei nicht gespeichert werden können.\n"
                         "An ihrer Stelle steht dort ein Fragezeichen.\n\nSoll er trotzdem gespeichert werden?"),
          MsgButtons::YesNo, MsgIcon::Warning, QFileInfo(path).fileName(), MsgDefault::Second) != MsgAnswer::Yes)
    return false;
  try {
    Replace_File(path, bytes);
    return true;
  } catch (const Error& error) {
    Show_Error(path, error, QStringLiteral("Der Text kann nicht gespeichert werden."));
    return false;
  }
}

bool Write_Slot(int slot, const QString& path, const QString& text) {
  if (!Write_Text(path, text)) return false;
  NotePads[slot] = path;
  Set_NotePad_Changed(slot, false);
  Put_On_Recent_List(path);
  events.StateChanged.Emit();
  return true;
}

}  // namespace

int New_NotePad(const QString& name) {
  if (name == QLatin1String("MAP")) return -1;
  const auto slot = std::find(NotePadState.begin(), NotePadState.end(), PadState::Free) - NotePadState.begin();
  if (slot == NotePads.size()) {
    NotePads.append(QString());
    NotePadState.push_back(PadState::Free);
  }
  NotePads[slot] = name;
  NotePadState[static_cast<size_t>(slot)] = PadState::Clean;
  return static_cast<int>(slot);
}

void Free_NotePad(int slot) {
  if (!Is_Slot(slot)) return;
  NotePads[slot].clear();
  NotePadState[static_cast<size_t>(slot)] = PadState::Free;
  if (ActiveNotePad == slot) Set_Active_NotePad(-1);
}

namespace {
PadState State_Of(int slot) { return Is_Slot(slot) ? NotePadState[static_cast<size_t>(slot)] : PadState::Free; }
}  // namespace

bool Is_Open_NotePad(int slot) { return State_Of(slot) != PadState::Free; }

bool NotePad_Changed(int slot) { return State_Of(slot) == PadState::Dirty; }

void Set_NotePad_Changed(int slot, bool changed) {
  if (Is_Open_NotePad(slot)) NotePadState[static_cast<size_t>(slot)] = changed ? PadState::Dirty : PadState::Clean;
}

int NotePad_Of(const QString& path) {
  const QString wanted = QFileInfo(path).canonicalFilePath();
  for (int slot = 0; slot < NotePads.size(); ++slot) {
    if (!Is_Open_NotePad(slot) || NotePads[slot].isEmpty()) continue;
    if (NotePads[slot] == path || (!wanted.isEmpty() && QFileInfo(NotePads[slot]).canonicalFilePath() == wanted))
      return slot;
  }
  return -1;
}

QString NotePad_Title(int slot) {
  if (!Is_Open_NotePad(slot)) return {};
  const QString& path = NotePads[slot];
  const QString name = path.isEmpty() ? QStringLiteral("Notiz %1").arg(slot + 1) : QFileInfo(path).fileName();
  return NotePad_Changed(slot) ? name + QStringLiteral(" *") : name;
}

void Set_Active_NotePad(int slot) { ActiveNotePad = Is_Open_NotePad(slot) ? slot : -1; }

bool Read_NotePad(const QString& path, QString& text) {
  try {
    const QString found = Find_File(path);
    if (found.isEmpty()) Raise(errors::fileNotFound);
    if (QFileInfo(found).size() > largestText || Read_Bytes(found).contains('\0')) {
      Message_Box(path + QStringLiteral("\nDiese Datei ist kein Text oder zu groß für ein Notizfenster."),
                  MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Notizen"));
      return false;
    }
    text = Read_Lines(found).join(u'\n');
    const QByteArray end = Read_Bytes(found).right(1);
    if (end == "\n" || end == "\r") text += u'\n';
  } catch (const Error& error) {
    Show_Error(path, error, QStringLiteral("Der Text kann nicht geöffnet werden."));
    return false;
  }
  Put_On_Recent_List(path);
  return true;
}

bool Save_NotePad(int slot, const QString& text) {
  if (!Is_Open_NotePad(slot)) return false;
  if (NotePads[slot].isEmpty()) return Save_NotePad_As(slot, text);
  return Write_Slot(slot, NotePads[slot], text);
}

bool Save_NotePad_As(int slot, const QString& text) {
  if (!Is_Open_NotePad(slot)) return false;
  const auto path = File_Dialog(Text_Request(true, NotePads[slot]));
  if (!path) return false;
  const int other = NotePad_Of(*path);
  if (other >= 0 && other != slot) {
    Message_Box(QStringLiteral("Dieser Text ist in einem anderen Notizfenster geöffnet:\n") + *path, MsgButtons::Ok,
                MsgIcon::Information, QStringLiteral("Notizen"));
    return false;
  }
  return Write_Slot(slot, *path, text);
}

bool Close_NotePad(int slot, const QString& text, bool canStay) {
  if (NotePad_Changed(slot)) {
    const QString name = NotePads[slot].isEmpty() ? QStringLiteral("Notiz %1").arg(slot + 1) : NotePads[slot];
    const MsgAnswer answer = Message_Box(
        QStringLiteral("Der Text in [") + name + QStringLiteral("] wurde geändert.\n") +
            QStringLiteral("Möchten Sie die Änderungen speichern?"),
        canStay ? MsgButtons::YesNoCancel : MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Notizen"));
    if (answer == MsgAnswer::Cancel) return false;
    if (answer == MsgAnswer::Yes && !Save_NotePad(slot, text)) return false;
  }
  Free_NotePad(slot);
  events.StateChanged.Emit();
  return true;
}

QString Choose_NotePad() {
  const QString last = Menu(QStringLiteral("mnuRecentFile"), 1).Tag;
  return File_Dialog(Text_Request(false, last)).value_or(QString());
}

qsizetype Find_Text(const QString& text, const QString& wanted, qsizetype start) {
  if (wanted.isEmpty()) return -1;
  return text.indexOf(wanted, std::clamp<qsizetype>(start, 0, text.size()), Qt::CaseInsensitive);
}
