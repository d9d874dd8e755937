#include "tools/map_tool.h"

#include <utility>

#include "hand/activation.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"

namespace {

std::shared_ptr<MapTool> inUse, over;
int stepsUnder = 0;
const OnReset fresh(inUse, over, stepsUnder);

void Show_Change() {
  const MapTool* tool = over ? over.get() : inUse.get();
  Map.lblPLQ.Visible = false;
  InfoBar.Panel[0] = tool ? tool->Status() : Entry_Status_Text();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

std::shared_ptr<MapTool> Take_Away() {
  Map.Tool.clear();
  Map.ToolRow.clear();
  return std::exchange(inUse, nullptr);
}

}  // namespace

OverPaint Dashed(const QPainterPath& path) { return path.isEmpty() ? OverPaint() : OverPaint{{path, {}, 1}}; }

bool Use_Map_Tool(std::unique_ptr<MapTool> tool, const QString& row) {
  Take_Tool_Off();
  Drop_Map_Tool();
  if (Entry_In_Hand() && !(tool->Keeps_Hand() ? Store_Pending_Text() : End_Entry())) return false;
  inUse = std::move(tool);
  Map.Tool = inUse->Name();
  Map.ToolRow = row;
  Show_Change();
  return true;
}

bool Toggle_Map_Tool(std::unique_ptr<MapTool> tool) {
  if (!Map_Tool_In_Use() || Map.Tool != tool->Name()) return Use_Map_Tool(std::move(tool));
  Drop_Map_Tool();
  return false;
}

void End_Map_Tool() {
  if (Take_Away()) Show_Change();
}

void Drop_Map_Tool() {
  const bool known = Map_Tool_In_Use() != nullptr;
  const auto tool = Take_Away();
  if (!known) return;
  tool->Dropped();
  Show_Change();
}

// The state may have been made anew under a tool: it is none any more, and whoever it would tell may be gone.
MapTool* Map_Tool_In_Use() { return inUse && inUse->Name() == Map.Tool ? inUse.get() : nullptr; }

StepsUnderTool::StepsUnderTool() {
  if (!Map_Tool_In_Use() || !Map_Tool_In_Use()->Outlives_Steps()) Drop_Map_Tool();
  ++stepsUnder;
}
StepsUnderTool::~StepsUnderTool() { --stepsUnder; }

DrawnPoints* Points_Being_Drawn() {
  MapTool* tool = Map_Tool_In_Use();
  return tool ? tool->Points() : nullptr;
}

void Lay_Tool_Over(std::unique_ptr<MapTool> tool) {
  over = std::move(tool);
  Map.ToolOver = over->Name();
  Show_Change();
}

void Take_Tool_Off() {
  Map.ToolOver.clear();
  if (std::exchange(over, nullptr)) Show_Change();
}

MapTool* Tool_Laid_Over() { return over && over->Name() == Map.ToolOver ? over.get() : nullptr; }

std::shared_ptr<MapTool> Tool_With_The_Mouse() {
  if (Tool_Laid_Over()) return over;
  return Map_Tool_In_Use() ? inUse : nullptr;
}

void Connect_Map_Tools() {
  static int dropped = 0;
  Reconnect(events.HandDropped, dropped, [] {
    if (stepsUnder > 0 && Map_Tool_In_Use() && Map_Tool_In_Use()->Outlives_Steps()) return;
    Take_Tool_Off();
    Drop_Map_Tool();
  });
}
