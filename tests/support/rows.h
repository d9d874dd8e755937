#pragma once
#include "store/entry.h"

// Rows of the open table by their keys; the current row stays.
struct RowsOfTable {
  static QString Add(const EntryRow& row) {
    Append_Entry(row);
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    return rsEntries->Bookmark();
  }
  static EntryRow Row(const QString& bookmark) {
    const KeepCurrentRow keep;
    rsEntries->SetBookmark(bookmark);
    return Read_Entry(*rsEntries);
  }
  static EntryRow Last_Row() {
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    return Read_Entry(*rsEntries);
  }
  static QString Header_Key() {
    const KeepCurrentRow keep;
    rsEntries->MoveFirst();
    return rsEntries->Bookmark();
  }
  static QPoint At(const QString& bookmark) { return {Row(bookmark).Xmap, Row(bookmark).Ymap}; }
};
