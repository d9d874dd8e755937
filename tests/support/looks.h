#pragma once
#include "maps/command_look.h"
#include "maps/commands.h"
#include "maps/toolbar_table.h"

// What menus and tool buttons would show now.
inline QString Text_Now(const char* command) { return Command_Text(*Find_Command(QString::fromLatin1(command))); }
inline bool Usable(const char* command) { return Needs_Met(Find_Command(QString::fromLatin1(command))->needs); }
inline ToolButton Button_Now(const char* key) {
  for (const ToolButton& button : Toolbar_Now())
    if (button.Key == QLatin1String(key)) return button;
  ADD_FAILURE() << "no button " << key;
  return {};
}
// Keys of the buttons that can be seen.
inline QStringList Buttons() {
  QStringList keys;
  for (const ToolButton& button : Toolbar_Now())
    if (button.Visible) keys.append(button.Key);
  return keys;
}
