#include "store/current_row.h"

#include "platform/error.h"
#include "state/global_state.h"

KeepCurrentRow::KeepCurrentRow() {
  if (rsEntries && rsEntries->Position() >= 0) bookmark = rsEntries->Bookmark();
}

KeepCurrentRow::~KeepCurrentRow() {
  if (!rsEntries || !rsEntries->IsOpen() || bookmark.isEmpty()) return;
  try {
    if (rsEntries->HasRow(bookmark)) {
      rsEntries->SetBookmark(bookmark);
    } else {
      rsEntries->MoveLast();
    }
  } catch (const Error&) {
    // The table went away under the cursor; whoever loads it again sets the row.
  }
}
