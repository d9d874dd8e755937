#include "store/anchor.h"

#include <QSet>
#include <algorithm>

#include "state/map_state.h"
#include "store/entry.h"

void Promote_Anchor() {
  if (!Table_Is_Open()) return;
  QSet<qint64> marked;
  qint64 next = 0;  // without a memory of the order: the last one in the table
  bool there = false;
  For_Each_Entry([&] {
    const Mark mark = Type_Here().mark;
    if (mark == Mark::None) return Walk::On;
    marked.insert(next = rsEntries->Key());
    there = mark == Mark::Last;
    return there ? Walk::Stop : Walk::On;
  });
  if (there || marked.isEmpty()) return;
  const auto remembered = std::find_if(Map.MarkOrder.rbegin(), Map.MarkOrder.rend(),
                                       [&marked](qint64 key) { return marked.contains(key); });
  if (remembered != Map.MarkOrder.rend()) next = *remembered;
  const KeepCurrentRow keep;
  rsEntries->MoveTo(rsEntries->PositionOf(next));
  const int typ = Type_Here().Marked(Mark::Last).ToNumber();
  rsEntries->Edit();
  rsEntries->Set(column::Typ, static_cast<qint64>(typ));
  rsEntries->Update();
}
