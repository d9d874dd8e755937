#pragma once
#include <QString>
#include <vector>

#include "state/mdi_state.h"

// The tool buttons as data: for every tool state its buttons in order. Buttons whose tool does not exist yet are listed
// as not built and stay away.

struct ToolRow {
  QString state;  // "Norm", "Text", "Symbol", "Bild", "Ply", "Ln", "Fig"; "*" closes every state but "Norm"
  QString key;
  QString caption;
  QString tip;
  QString help;  // for the status bar while the pointer is over the button
  bool built = false;
  bool panel = false;  // a text field instead of a button
};

const std::vector<ToolRow>& Toolbar_Table();
// The built buttons of a state, in order.
std::vector<ToolButton> Toolbar_Buttons(const QString& state);
// Rebuilds Toolbar1 for the state; within a state Visible and Enabled of its buttons are kept. Tips and tags that
// depend on the entry in hand are Set_Toolbar's.
void Fill_Toolbar(const QString& state);
// Help text of a button; empty if there is none.
QString Tool_Help(const QString& state, const QString& key);
