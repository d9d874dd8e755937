#pragma once
#include <vector>

#include "maps/command.h"

// The rows of the command table, by the menus they stand in.

std::vector<Command> Map_Commands();      // maps, zoom, printing, help, program
std::vector<Command> Table_Commands();    // the table of the entries: files, columns, imports
std::vector<Command> Exchange_Commands();  // to and from files of other programs
std::vector<Command> Text_Commands();     // note pads
std::vector<Command> Result_Commands();   // evaluations
std::vector<Command> Entry_Commands();    // all entries or many of them
std::vector<Command> Object_Commands();   // a new entry, or the one in hand
std::vector<Command> Grid_Commands();     // net and plan squares
std::vector<Command> Toolbar_Commands();  // what only tool buttons call

// A procedure that needs to know nothing of the call.
template <typename Work>
Procedure Do(Work work) {
  return [work](const CommandCall&) { work(); };
}
// Opens a window: bound by the windows.
inline const Procedure opensWindow = nullptr;
