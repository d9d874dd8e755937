#include "tools/map_tool.h"

#include "hand/activation.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"

namespace {

std::unique_ptr<MapTool> inUse;
// A tool that ended itself lives on until its call has returned: it goes when the next one comes or nothing is asked.
std::unique_ptr<MapTool> gone;

void Show_Change() {
  InfoBar.Panel[0] = inUse ? inUse->Status() : Entry_Status_Text();
  events.StateChanged.Emit();
  events.HandChanged.Emit();
}

void Take_Away() {
  gone = std::move(inUse);
  Map.Tool.clear();
}

}  // namespace

bool Use_Map_Tool(std::unique_ptr<MapTool> tool) {
  Drop_Map_Tool();
  if (Entry_In_Hand() && !(tool->Keeps_Hand() ? Store_Pending_Text() : End_Entry())) return false;
  inUse = std::move(tool);
  Map.Tool = inUse->Name();
  Show_Change();
  return true;
}

void End_Map_Tool() {
  if (!inUse) return;
  Take_Away();
  Show_Change();
}

void Drop_Map_Tool() {
  if (!inUse) return;
  Take_Away();
  gone->Dropped();
  Show_Change();
}

// Who clears Map.Tool takes the tool away.
MapTool* Map_Tool_In_Use() { return inUse && Map.Tool == inUse->Name() ? inUse.get() : nullptr; }
