#pragma once
#include <memory>
#include <vector>

#include "store/versions.h"

// What lies between an earlier state of the table and now. A large table takes its time: it is found piece by piece.

// How an entry of a version stands to the table of now.
enum class VersionEntry { Gone, Changed };
struct VersionDifference {
  VersionEntry how = VersionEntry::Gone;
  qint64 key = 0;  // of its row, in the version
  qint64 now = 0;  // of the row it has become, where it was changed
  QString name;    // for the user: "Fläche: Moor"
};
// An entry is the same while its columns and vertices are; marks and its place in the order of the table do not count,
// nor does the number of its vertex table.
struct VersionDifferences {
  std::vector<VersionDifference> entries;  // gone or changed since, in the order of the version
  int added = 0;                           // entries of now that it has not

  int Count(VersionEntry how) const;  // of the entries
};

// Compares versions with the open table, one after the other. What was read of the open table serves for all of them.
class VersionComparison {
 public:
  VersionComparison();
  ~VersionComparison();
  VersionComparison(const VersionComparison&) = delete;
  VersionComparison& operator=(const VersionComparison&) = delete;

  // Both raise what the database raises; the comparison is over then.
  void Begin(const TableVersion& version);
  bool Go_On(int milliseconds);  // works for about so long; true when all is found
  VersionDifferences Take();     // what was found
  void Forget();                 // the open table changes, or is closed: nothing of it is held

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};

// All at once.
VersionDifferences Differences_To(const TableVersion& version);

// These entries alone become what they were, as one step, with all columns that both tables have: changed ones as they
// were, those that are gone at the end of the table, each with its vertices. Raises what the database raises; nothing
// is changed then. The number of entries taken.
int Take_Entries(const TableVersion& version, const std::vector<VersionDifference>& entries);
