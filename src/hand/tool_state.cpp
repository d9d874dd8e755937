#include "hand/tool_state.h"

#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"
#include "view/redraw.h"

namespace {

QString State_Word(ToolMode mode) {
  switch (mode) {
    case ToolMode::Text:
      return QStringLiteral("Text");
    case ToolMode::Area:
      return QStringLiteral("Ply");
    case ToolMode::Line:
      return QStringLiteral("Ln");
    case ToolMode::Figure:
      return QStringLiteral("Fig");
    case ToolMode::Picture:
      return QStringLiteral("Bild");
    case ToolMode::Symbol:
      return QStringLiteral("Symbol");
    case ToolMode::Norm:
      break;
  }
  return QStringLiteral("Norm");
}

}  // namespace

void Set_Toolbar(int active, ToolMode mode) {
  const BusyPointer busy;
  if (mode == ToolMode::Norm) {
    if (active == 0) Map.LupeOn = false;  // its button is gone
  } else {
    const MapTool* tool = Map_Tool_In_Use();
    if (!tool || !tool->Keeps_Hand()) {
      Drop_Map_Tool();
      Map.Tool.clear();
    }
  }
  Toolbar1.Tag = State_Word(mode);
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

void Toggle_Lupe() {
  Map.LupeOn = !Map.LupeOn;
  if (Map.LupeOn) {
    Delete_Regions();
    InfoBar.Panel[0] = hand_texts::lupe;
  } else {
    InfoBar.Panel[0] = Entry_Status_Text();
    Map_Redraw();
  }
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

void Choose_Tool(const QString& tool) {
  const bool again = Map.Tool == tool;
  Drop_Map_Tool();
  if (Entry_In_Hand() && !End_Entry()) return;
  Map.Tool = again ? QString() : tool;
  InfoBar.Panel[0] = Map.Tool == QLatin1String("Text")   ? hand_texts::placeText
                     : Map.Tool == QLatin1String("Symb") ? hand_texts::placeSymbol
                     : Map.Tool == QLatin1String("Bild") ? hand_texts::placePicture
                                                         : QString();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}
