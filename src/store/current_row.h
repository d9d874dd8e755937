#pragma once
#include <QString>

// Saves the cursor of rsEntries and puts it back at the end of the scope, even when an error passes through.
class KeepCurrentRow {
 public:
  KeepCurrentRow();
  ~KeepCurrentRow();
  KeepCurrentRow(const KeepCurrentRow&) = delete;
  KeepCurrentRow& operator=(const KeepCurrentRow&) = delete;

 private:
  QString bookmark;
};
