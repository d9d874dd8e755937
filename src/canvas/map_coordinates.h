#pragma once
#include <QString>

// The coordinates of the open map: loading, showing, deleting the net.

// Looks for calibration files of the open map and reads the one there is; several leave the choice to the window
// (dialogHooks.ChooseCalibration). -1 when there is one or a choice, 0 when there is none.
int Load_Cal();
// Reads this file for the open map, sets the menus and asks for a redraw. False if the user stopped.
bool Take_Cal_File(const QString& calFile);
// Empty: no calibration file; a path: exactly one; "many".
QString getCalFileName();
// Enables or disables the menus of the net, with their captions; off sets Coord.Grid = 0.
void Set_Grid_Menus(bool on);
// Shows or hides the net; the header row keeps it (Typ -1, -2).
void Toggle_Grid();
// mnuGridDel: deletes the net's row (Typ 15), resets margins made for it, switches the menus off.
void Delete_Grid();
// Starts the tool that makes calibration files, with the map's file.
void Make_Grid();
