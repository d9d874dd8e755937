#pragma once
#include <QString>
#include <functional>
#include <vector>

#include "state/global_state.h"
#include "store/entry.h"
#include "store/transaction.h"

// What the changes of many entries have in common: one walk, one undo point, one transaction, one redraw.

// The typed text of an entry in hand is stored and the entry given up. False if it could not be stored.
bool Ready_For_Many();

struct RowChange {
  qint64 key = 0;
  EntryRow before, after;
};
// Every entry that `change` alters; rows that cannot be read are left as they are. Writes nothing.
std::vector<RowChange> Collect_Changes(const std::function<void(EntryRow& row, qint64 key)>& change);
// The same for the current entry alone.
std::vector<RowChange> Change_Of_Current(const std::function<void(EntryRow& row, qint64 key)>& change);
// Writes the columns that differ; the cursor goes to the row.
void Write_Change(const RowChange& change);
// Undo point if a caption is given, then all rows in one transaction, then table window, redraw and tool buttons.
// Nothing to write: nothing happens. An error takes all of it back and is told. The number of rows written.
int Write_Changes(const std::vector<RowChange>& changes, const QString& title, const QString& undoCaption = {});

// Runs the work, which appends rows, in one transaction. The first of them is the current entry afterwards. False if an
// error took it back; it was told under the title then.
bool Append_In_Transaction(const QString& title, const std::function<void()>& work);
// How many marked rows cannot be seen. Commands on marked entries leave them alone and say so.
int Hidden_Marked();
// "2 ausgeblendete Einträge bleiben, wie sie sind." Empty for 0.
QString Hidden_Stay_Text(int count);
// What a command on marked entries did, and how many of them stayed, in the status bar; nothing where both are empty.
void Tell_Done_Of_Marked(const QString& done = {});
// Tells the table window, redraws; menus and tool buttons follow.
void Show_Changed_Entries();
// Does the ID still fit its column? Tells it if not.
bool Id_Fits(const QString& id);
