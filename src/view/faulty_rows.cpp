#include "view/faulty_rows.h"

#include <QCryptographicHash>

#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "store/entry_edit.h"
#include "store/table_file.h"

namespace {

QByteArray Bytes_Of(const Value& value) {
  if (const auto* text = std::get_if<QString>(&value)) return text->toUtf8();
  if (const auto* whole = std::get_if<qint64>(&value)) return QByteArray::number(*whole);
  if (const auto* real = std::get_if<double>(&value)) return QByteArray::number(*real, 'g', 17);
  return {};
}

// Key and content: another table may have another row under the same key.
QByteArray Fingerprint() {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  hash.addData(QByteArray::number(rsEntries->Key()));
  for (int field = 0; field < static_cast<int>(rsEntries->Fields().size()); ++field)
    hash.addData(Bytes_Of(rsEntries->Raw(field)) + '\n');
  return hash.result();
}

// The row that cannot be read has no name either.
QString Name_Here() {
  try {
    return Entry_Name();
  } catch (const Error&) {
    return {};
  }
}

QByteArray Fingerprint_Here() {
  try {
    return Fingerprint();
  } catch (const Error&) {
    return QByteArray::number(rsEntries->Key());
  }
}

}  // namespace

void FaultyRows::Meet(const Error& error) {
  const QByteArray row = Fingerprint_Here();
  if (Map.LeftFaulty.contains(row)) return;
  MsgAnswer answer = wanted == Wanted::DeleteAll ? MsgAnswer::Yes : MsgAnswer::No;
  if (wanted == Wanted::Ask)
    answer = Message_Box(QStringLiteral("Fehler: %1 %2\n%3\n\nSoll dieser Eintrag gelöscht werden?")
                             .arg(error.number)
                             .arg(error.text, Name_Here()),
                         MsgButtons::YesNoAll, MsgIcon::Question, QStringLiteral("Fehler"), MsgDefault::Second);
  if (answer == MsgAnswer::YesAll) wanted = Wanted::DeleteAll;
  if (answer == MsgAnswer::NoAll) wanted = Wanted::LeaveAll;
  if (answer == MsgAnswer::Yes || answer == MsgAnswer::YesAll)
    going << rsEntries->Key();
  else
    Map.LeftFaulty << row;
}

int FaultyRows::Delete() {
  if (going.isEmpty() || !rsEntries) return 0;
  int count = 0;
  try {
    const KeepCurrentRow keep;
    if (going.size() > 1) Undo_Point_Of_Open_Table(QStringLiteral("Rückgängig: Einträge löschen"));
    count = Delete_Entries(going);
  } catch (const Error& error) {
    Message_Box(Error_Message(error, QStringLiteral("Die Einträge wurden nicht gelöscht.")), MsgButtons::Ok,
                MsgIcon::Critical, QStringLiteral("Fehler"));
    return 0;  // the next pass asks about them again
  }
  Map.CurBookmark.clear();
  events.TableChanged.Emit();
  return count;
}
