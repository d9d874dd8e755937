#pragma once
#include "store/entry_type.h"

// Tool "Fig": the next press on the map begins a figure of this kind, dragging gives its size, a click alone the size
// chosen. Chosen again it goes. False without a map, or if the text in hand could not be stored.
bool Choose_Figure(EntryKind kind);
// The tool "Fig", of either kind: is it in use? Gives it up if it is.
bool Figure_Tool_In_Use();
void Drop_Figure_Tool();  // nothing if another one is in use
