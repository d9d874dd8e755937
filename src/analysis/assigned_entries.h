#pragma once
#include <QHash>
#include <QString>
#include <span>
#include <vector>

#include "store/entry.h"

// Which entries are assigned to which area, figure or line, and which belong to a group.

class AssignedEntries {
 public:
  // One pass over the rows. Names are compared whole: what is assigned to "Flaeche10" is not assigned to "Flaeche1".
  // An entry may be assigned to several things. Rows that only draw a reference line stand for no entry.
  explicit AssignedEntries(std::span<const EntryRow> rows);
  // Numbers of the rows that are assigned to the area, figure or line with the ID, in table order.
  const std::vector<int>& To(const EntryId& target) const;
  const std::vector<int>& In_Group(const QString& group) const;  // in table order; empty if there is none
  const std::vector<QString>& Groups() const { return groups; }  // in the order in which they first appear

 private:
  QHash<QString, std::vector<int>> byTarget, byGroup;
  std::vector<QString> groups;
  std::vector<int> none;
};
