#include "edit/blanks.h"

#include "edit/bulk_change.h"
#include "platform/message_box.h"
#include "state/task_line.h"
#include "store/font_spec.h"

namespace {

const QString title = QStringLiteral("Leerzeichen entfernen");

bool Is_Blank(QChar sign) { return sign == u' ' || sign == u'\t'; }

// Line ends are no blanks, and the character 160 stands for an empty text.
QString Without_Blanks(QString text, bool all) {
  if (all) {
    text.removeIf(Is_Blank);
  } else {
    while (!text.isEmpty() && Is_Blank(text.front())) text.remove(0, 1);
    while (!text.isEmpty() && Is_Blank(text.back())) text.chop(1);
  }
  return text.isEmpty() ? QString(QChar::Nbsp) : text;
}

bool Has_Text(const EntryRow& row) {
  return EntryType::Parse(row.Typ).IsText() && !FontSpec::Parse(row.Schrift).IsSymbol() && !row.Eintrag.isEmpty();
}

}  // namespace

void Remove_Blanks() {
  if (!Ready_For_Many()) return;
  const MsgAnswer answer =
      Message_Box(QStringLiteral("Sollen aus den Texten aller Einträge sämtliche Leerzeichen entfernt werden,\n"
                                 "auch die zwischen den Wörtern?\n\n"
                                 "Nein: nur die am Anfang und am Ende der Texte."),
                  MsgButtons::YesNoCancel, MsgIcon::Question, title, MsgDefault::Second);
  if (answer == MsgAnswer::Cancel) return;
  const auto changes = Collect_Changes([all = answer == MsgAnswer::Yes](EntryRow& row, qint64) {
    if (Has_Text(row)) row.Eintrag = Without_Blanks(row.Eintrag, all);
  });
  if (!changes.empty() && Write_Changes(changes, title, QStringLiteral("Rückgängig: ") + title) == 0) return;
  Tell_Done(changes.empty() ? QStringLiteral("Kein Text hat Leerzeichen, die zu entfernen wären.")
                            : QStringLiteral("Leerzeichen entfernt: ") + Entries_Text(std::ssize(changes)));
}
