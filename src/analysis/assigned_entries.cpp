#include "analysis/assigned_entries.h"

namespace {
// The name by which an entry is assigned. Older tables hold the whole ID there, with the code of a line's ends.
QString Target_Key(const QString& assignment) {
  const QString name = assignment.trimmed();
  return name.contains(u'-') ? EntryId::Parse(name).name.trimmed() : name;
}
}  // namespace

AssignedEntries::AssignedEntries(std::span<const EntryRow> rows) {
  for (size_t i = 0; i < rows.size(); ++i) {
    const QString& stored = rows[i].ID;
    if (!stored.contains(u'>') && !stored.contains(u'<')) continue;
    if (EntryType::Parse(rows[i].Typ).Kind() == EntryKind::Reference) continue;
    const EntryId id = EntryId::Parse(stored);
    const auto number = static_cast<int>(i);
    if (!id.assignment.isEmpty()) {
      for (const QString& target : id.assignment.split(u'>')) {
        std::vector<int>& list = byTarget[Target_Key(target)];
        if (list.empty() || list.back() != number) list.push_back(number);
      }
    }
    if (!id.hasGroup) continue;
    std::vector<int>& list = byGroup[id.group.trimmed()];
    if (list.empty()) groups.push_back(id.group.trimmed());
    list.push_back(number);
  }
}

const std::vector<int>& AssignedEntries::To(const EntryId& target) const {
  const auto found = byTarget.constFind(target.name.trimmed());
  return found == byTarget.constEnd() ? none : *found;
}

const std::vector<int>& AssignedEntries::In_Group(const QString& group) const {
  const auto found = byGroup.constFind(group);
  return found == byGroup.constEnd() ? none : *found;
}
