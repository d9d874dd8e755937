#include "maps/row_look.h"

#include "hand/activation.h"
#include "state/global_state.h"
#include "state/map_state.h"

bool RowLook::IsHidden() const { return type.hidden && !id.IsNorthArrow(); }

bool RowLook::IsRounded() const {
  return type.Kind() == EntryKind::PolygonRound || type.Kind() == EntryKind::FreeFigureRound;
}

std::optional<RowLook> Look_Of(const QString& bookmark) {
  if (bookmark.isEmpty() || !rsEntries || !rsEntries->IsOpen() || rsEntries->Editing()) return {};
  const KeepCurrentRow keep;
  try {
    if (!rsEntries->HasRow(bookmark)) return {};
    rsEntries->SetBookmark(bookmark);
    if (rsEntries->Position() < 1) return {};
    RowLook look{Read_Entry(*rsEntries), {}, {}, Entry_Name()};
    look.type = EntryType::Parse(look.row.Typ);
    look.id = EntryId::Parse(look.row.ID);
    return look;
  } catch (const Error&) {
    return {};  // a damaged row: the table window repairs it
  }
}

std::optional<RowLook> Look_Of_Hand() { return Entry_In_Hand() ? Look_Of(Map.InHand) : std::nullopt; }
std::optional<RowLook> Look_Of_Current() { return Look_Of(Map.CurBookmark); }
