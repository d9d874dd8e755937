#include "hand/group.h"

#include "state/global_state.h"
#include "store/entry.h"

QStringList Group_Of(const QString& bookmark) {
  QStringList rows;
  if (!rsEntries || !rsEntries->HasRow(bookmark)) return rows;
  const KeepCurrentRow keep;
  rsEntries->SetBookmark(bookmark);
  const EntryId own = EntryId::Parse(rsEntries->Text(column::ID));
  if (!own.hasGroup) return {bookmark};
  For_Each_Entry([&] {
    const QString text = rsEntries->Text(column::ID);
    if (!text.contains(u'<')) return;
    const EntryId id = EntryId::Parse(text);
    if (id.hasGroup && id.group == own.group) rows.append(rsEntries->Bookmark());
  });
  return rows;
}
