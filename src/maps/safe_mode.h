#pragma once
#include <QString>

// The safe mode (frmMDI.SafeMode): before a map's standard table is loaded the user decides what becomes of it.

void Toggle_Safe_Mode();  // mnuNoTable
// Asks what shall be done to the table file, and does it. False: the user does not want the map to be opened; that was
// told. Outside the safe mode nothing is asked.
bool Ask_Safe_Mode(const QString& table);
