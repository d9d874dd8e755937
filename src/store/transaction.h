#pragma once
#include <QString>
#include <functional>
#include <type_traits>
#include <utility>

#include "platform/database.h"

// Writes that belong together are stored together or not at all.

// Work that may end early: false takes everything back.
using TransactionWork = std::function<bool()>;

namespace transaction {
// Work that returns nothing wants everything stored.
template <typename Work>
TransactionWork Wrapped(Work&& work) {
  if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
    return [work = std::forward<Work>(work)]() mutable { return work(), true; };
  } else {
    return std::forward<Work>(work);
  }
}
// What the procedures below share.
bool Run(Database& database, const TransactionWork& work);            // In_Transaction on a database
bool Run_On_Table(const TransactionWork& work);                       // In_Transaction on the open table
bool Run_Or_Tell(const QString& title, const TransactionWork& work);  // In_Told_Transaction
}  // namespace transaction

// Runs the work (returning nothing or "go on?") in one transaction of the open table and marks the table as changed.
// False if the work wanted it taken back. An error takes all of it back and passes on. Whatever is taken back leaves
// the change mark of the table as it was and no row open for writing. Inside another transaction everything is stored
// by the outermost; what is taken back inside takes the outer ones back as well: they return false then.
template <typename Work>
bool In_Transaction(Work&& work) {
  return transaction::Run_On_Table(transaction::Wrapped(std::forward<Work>(work)));
}

// The same on a database that is not the open table.
template <typename Work>
bool In_Transaction(Database& database, Work&& work) {
  return transaction::Run(database, transaction::Wrapped(std::forward<Work>(work)));
}

// The same on the open table, where nobody above could tell what went wrong: an error is shown under the title, and
// the current row stays. False as well without an open table (that was told when it could not be loaded).
template <typename Work>
bool In_Told_Transaction(const QString& title, Work&& work) {
  return transaction::Run_Or_Tell(title, transaction::Wrapped(std::forward<Work>(work)));
}
