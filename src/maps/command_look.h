#pragma once
#include "maps/command.h"

// What commands look like and whether they are of use: functions of the state, asked when the windows are synced.

bool Needs_Met(Needs needs);  // is it there?
// The text as it is to be shown now.
QString Command_Text(const Command& command);
// The check mark of a CommandKind::Check.
bool Command_Checked(const QString& key);
