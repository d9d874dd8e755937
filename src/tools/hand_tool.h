#pragma once
#include "tools/map_tool.h"

// The tool that has the mouse while no other one is in use: a press takes an entry and drags it, with Ctrl or Shift it
// marks it or sets a vertex on an edge; keys delete, end and move the entry in hand.
const std::shared_ptr<MapTool>& Hand_Tool();
