#pragma once
#include <QStringList>
#include <vector>

#include "maps/command.h"

// The one table of commands, and the one way they are carried out.

const std::vector<Command>& Command_Table();  // all, by the menus they stand in
// nullptr if there is none.
const Command* Find_Command(const QString& key);

// What a command without a procedure of its own does: opens a window. Bound by the windows when they are made, until
// Unbind_Commands; binding a key that is not there, or that has a procedure, is a mistake of the program (error 5).
void Bind_Command(const QString& key, Procedure procedure);
void Unbind_Commands();
// Keys of commands that have neither. Empty while the main window stands.
QStringList Unbound_Commands();

// Carries the command out: if what it needs is there, and after the hand has done what it asks. False if it was not
// begun: something is missing, or what is being typed could not be stored (that was told, and it stays). An error is
// told as "Programmfehler ".
bool Run_Command(const QString& key, const CommandCall& call = {});
