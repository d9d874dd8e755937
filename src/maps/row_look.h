#pragma once
#include <optional>

#include "store/entry.h"

// A row as menus and buttons ask about it.
struct RowLook {
  EntryRow row;
  EntryType type;
  EntryId id;
  QString name;  // for messages and tips

  bool IsHidden() const;   // a north arrow never is
  bool IsRounded() const;  // a line, area or free figure without corners
};
// The cursor of the table stays where it is. Nothing for the header row, a row that is not there, is being written or
// cannot be read.
std::optional<RowLook> Look_Of(const QString& bookmark);
// Nothing for a new text that is still being typed.
std::optional<RowLook> Look_Of_Hand();
// What "aktuelles Objekt" means: in hand or not.
std::optional<RowLook> Look_Of_Current();
