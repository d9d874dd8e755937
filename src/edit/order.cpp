#include "edit/order.h"

#include <functional>

#include "edit/bulk_change.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/map_state.h"
#include "store/table_file.h"

namespace {

const QString orderTitle = QStringLiteral("Reihenfolge");

void Rename_Key(qint64 from, qint64 to) {
  dbEntries->Execute(QStringLiteral("UPDATE MapData SET rowid = %1 WHERE rowid = %2").arg(to).arg(from));
}

qint64 Key_At(int position) {
  rsEntries->MoveTo(position);
  return rsEntries->Key();
}

// Everything that remembers rows by their keys: marks, the entry in hand with its group, what waits for a click.
template <typename NewKey>
void Follow_Keys(NewKey&& newKey) {
  const auto follow = [&newKey](QString& bookmark) {
    if (!bookmark.isEmpty()) bookmark = QString::number(newKey(bookmark.toLongLong()));
  };
  for (qint64& key : Map.MarkOrder) key = newKey(key);
  for (QString& bookmark : Map.GroupInHand) follow(bookmark);
  for (QString* bookmark : {&Map.CurBookmark, &Map.InHand, &Map.ToolRow}) follow(*bookmark);
}

// The order of the table is that of its keys, so rows change places by their keys: all columns go along and none is
// written. Each gives back how old keys become new ones.
using KeyMap = std::function<qint64(qint64)>;

constexpr qint64 gap = 1'000'000;                 // keys between the header row and the first entry
constexpr qint64 lowestKey = -(qint64{1} << 60);  // far more than anybody moves

KeyMap Exchange(qint64 key, qint64 neighbour, qint64 last) {
  const qint64 aside = last + 1;
  Rename_Key(key, aside);
  Rename_Key(neighbour, key);
  Rename_Key(aside, neighbour);
  return [=](qint64 old) { return old == key ? neighbour : old == neighbour ? key : old; };
}

KeyMap To_Last(qint64 key, qint64 last) {
  Rename_Key(key, last + 1);
  return [=](qint64 old) { return old == key ? last + 1 : old; };
}

// It takes the key below the first one. Where that is the header row's, this goes far down first: no other row has to
// be renamed, now and the next million times. No row gets the key 0.
KeyMap To_First(qint64 key, qint64 first, qint64 header) {
  if (first < lowestKey) Raise(errors::overflow);
  const qint64 target = first == 1 ? -1 : first - 1;
  const qint64 newHeader = header < target ? header : target - gap;
  if (newHeader != header) Rename_Key(header, newHeader);
  Rename_Key(key, target);
  return [=](qint64 old) { return old == key ? target : old == header ? newHeader : old; };
}

}  // namespace

bool Move_In_Order(int step) {
  if (!On_Current_Entry()) return false;
  const int position = rsEntries->Position(), last = rsEntries->RecordCount() - 1;
  const qint64 key = rsEntries->Key();
  KeyMap newKey;
  const bool done = In_Told_Transaction(orderTitle, [&] {
    if (step >= 10) {
      newKey = To_Last(key, Key_At(last));
    } else if (step <= -10) {
      newKey = To_First(key, Key_At(1), Key_At(0));
    } else {
      newKey = Exchange(key, Key_At(position + (step > 0 ? 1 : -1)), Key_At(last));
    }
    rsEntries->Requery();
  });
  if (!done) return false;
  Follow_Keys(newKey);
  rsEntries->SetBookmark(QString::number(newKey(key)));
  Map.CurBookmark = rsEntries->Bookmark();
  return true;
}

void Order_Entry(int step) {
  if (!On_Current_Entry() || step == 0) return;
  const int position = rsEntries->Position(), last = rsEntries->RecordCount() - 1;
  if (step > 0 ? position == last : position <= 1) {
    Message_Box(step > 0 ? QStringLiteral("Der Eintrag liegt bereits ganz vorne.")
                         : QStringLiteral("Der Eintrag liegt bereits ganz hinten."),
                MsgButtons::Ok, MsgIcon::Information, orderTitle);
    return;
  }
  const BusyPointer busy;
  const UndoPoint point(QStringLiteral("Rückgängig: Verschieben"));
  if (!Move_In_Order(step)) return;
  events.CurrentRowChanged.Emit();
  Show_Changed_Entries();
}
