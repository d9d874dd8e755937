#include "hand/tool_state.h"

#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

void Set_Toolbar(ToolMode mode) {
  Toolbar1.Tag = mode;
  events.StateChanged.Emit();
}

ToolMode Tool_Mode_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const EntryId id = EntryId::Parse(row.ID);
  if (id.IsHeader()) return ToolMode::Norm;
  if (type.IsPolygon()) return id.IsArea() ? ToolMode::Area : id.IsLine() ? ToolMode::Line : ToolMode::Norm;
  if (type.IsFigure()) return ToolMode::Figure;
  if (type.Kind() == EntryKind::Picture) return ToolMode::Picture;
  if (!type.IsText()) return ToolMode::Norm;
  return FontSpec::Parse(row.Schrift).IsSymbol() ? ToolMode::Symbol : ToolMode::Text;
}

void Insert_Popup(int x, int y) {
  Map.PopupAt = {x, y};
  events.StateChanged.Emit();
  events.PopupWanted.Emit();
}
