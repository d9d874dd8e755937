#include "canvas/order.h"

#include <algorithm>

#include "canvas/bulk_change.h"
#include "canvas/map_state.h"
#include "platform/message_box.h"
#include "start/events.h"
#include "start/table_file.h"

namespace {

const QString orderTitle = QStringLiteral("Reihenfolge");

void Rename_Key(qint64 from, qint64 to) {
  dbEntries->Execute(QStringLiteral("UPDATE MapData SET rowid = %1 WHERE rowid = %2").arg(to).arg(from));
}

qint64 Key_At(int position) {
  rsEntries->MoveTo(position);
  return rsEntries->Key();
}

// The order of the table is that of its keys, so rows change places by their keys: all columns go along and none is
// written. Keys below 0 are free meanwhile. Each returns the row's new key.

qint64 Exchange(qint64 key, qint64 neighbour) {
  Rename_Key(key, -key);
  Rename_Key(neighbour, key);
  Rename_Key(-key, neighbour);
  for (qint64& marked : Map.MarkOrder) {
    if (marked == key) {
      marked = neighbour;
    } else if (marked == neighbour) {
      marked = key;
    }
  }
  return neighbour;
}

qint64 To_Last(qint64 key, qint64 last) {
  Rename_Key(key, last + 1);
  std::replace(Map.MarkOrder.begin(), Map.MarkOrder.end(), key, last + 1);
  return last + 1;
}

// The rows before it give way by one.
qint64 To_First(qint64 key, qint64 first) {
  Rename_Key(key, -(key + 1));
  dbEntries->Execute(
      QStringLiteral("UPDATE MapData SET rowid = -(rowid + 1) WHERE rowid >= %1 AND rowid < %2").arg(first).arg(key));
  dbEntries->Execute(
      QStringLiteral("UPDATE MapData SET rowid = -rowid WHERE rowid BETWEEN %1 AND %2").arg(-key).arg(-(first + 1)));
  Rename_Key(-(key + 1), first);
  for (qint64& marked : Map.MarkOrder) {
    if (marked == key) {
      marked = first;
    } else if (marked >= first && marked < key) {
      ++marked;
    }
  }
  return first;
}

}  // namespace

bool Move_In_Order(int step) {
  if (!On_Current_Entry()) return false;
  const int position = rsEntries->Position(), last = rsEntries->RecordCount() - 1;
  const qint64 key = rsEntries->Key();
  qint64 moved = key;
  const bool done = In_One_Transaction(orderTitle, [&] {
    if (step >= 10) {
      moved = To_Last(key, Key_At(last));
    } else if (step <= -10) {
      moved = To_First(key, Key_At(1));
    } else {
      moved = Exchange(key, Key_At(position + (step > 0 ? 1 : -1)));
    }
    rsEntries->Requery();
  });
  if (!done) return false;
  rsEntries->SetBookmark(QString::number(moved));
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
  Undo_Point(QStringLiteral("Rückgängig: Verschieben"));
  if (!Move_In_Order(step)) return;
  events.CurrentRowChanged.Emit();
  Show_Changed_Entries();
}
