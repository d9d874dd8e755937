#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "state/mdi_state.h"

// The tool buttons as data: for every tool state (Toolbar1.Tag) its buttons in order. A button names a command and has
// a caption and a tip of its own. Buttons of commands that do not exist yet stay away.
struct ToolRow {
  std::optional<ToolMode> state;  // nothing: closes every state but Norm
  QString key;
  QString command;  // empty: a text field instead of a button
  QString caption;
  QString tip;
  QString help;          // for the status bar while the pointer is over the button; empty: the tip
  QString rightCommand;  // of a click with the right mouse button
};
const std::vector<ToolRow>& Toolbar_Table();  // of all states, in the order shown

// A button as it is to be shown now.
struct ToolButton {
  QString Key, Command, RightCommand, Caption, ToolTipText, Help;
  bool Visible = true, Enabled = true, Value = false;
};
// The buttons of the state Toolbar1.Tag, in order.
std::vector<ToolButton> Toolbar_Now();
