#pragma once
#include <QString>
#include <functional>

#include "exchange/exchange_reader.h"
#include "exchange/exchange_record.h"

// Exchange files of the open table: names, files, questions, rows.

// Menu entries: the whole table into a file; the entry lines of a file; all that a file holds. They ask for the name,
// tell what came of it and what went wrong.
void Export_Trakkor();
void Import_Trakkor();
void Import_All_Trakkor();

// The open table as values, for a file of that name. Raises 5000 if it holds no entry.
ExchangeTable Read_Exchange_Table(const QString& file);

struct ExchangeTaken {
  int entries = 0;
  std::vector<ExchangeRefusal> refused;    // the table has no name left for them
  std::vector<ExchangeRefusal> shortened;  // texts longer than their column, whole
};
// Appends the entries with their vertex tables, under names that are free, in one transaction. `goOn` is asked once an
// entry; false takes all of it back. Raises what the table raises.
ExchangeTaken Append_Exchange_Entries(const std::vector<ExchangeEntry>& entries,
                                      const std::function<bool()>& goOn = {});
