#pragma once
#include "hand/activation.h"
#include "support/records.h"
#include "view/redraw.h"

// One value of the current row of the open table.
template <class Field>
void Set_Field(Field field, const Value& value) {
  Set_Field(*rsEntries, field, value);
}

// Rows of the open table by their keys; the current row stays.
struct RowsOfTable {
  static QString Add(const EntryRow& row) {
    Append_Entry(row);
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    return rsEntries->Bookmark();
  }
  // Adds the row, draws it and takes it in hand.
  static QString Take(const EntryRow& row) {
    const QString bookmark = Add(row);
    Map_Redraw();
    EXPECT_TRUE(Take_Entry(bookmark)) << row.ID.toStdString();
    return bookmark;
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
  static QStringList Texts() {
    QStringList texts;
    For_Each_Entry([&texts] { texts << rsEntries->Text(column::Eintrag); });
    return texts;
  }
  static QPoint At(const QString& bookmark) { return {Row(bookmark).Xmap, Row(bookmark).Ymap}; }
};
