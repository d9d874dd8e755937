#pragma once
#include <QString>
#include <QStringList>

// The coordinates of the open map: loading, showing, deleting the net. The tool that makes calibration files is started
// by start/map_grid.h.

// Full paths of the calibration files that getCalFileName found last.
extern QStringList CalFileChoice;

// Looks for calibration files of the open map and reads the one there is; several leave the choice to the window
// (dialogHooks.ChooseCalibration). -1 when there is one or a choice, 0 when there is none.
int Load_Cal();
// Reads this file for the open map, sets the menus and asks for a redraw. False if the user stopped.
bool Take_Cal_File(const QString& calFile);
// Empty: no calibration file; a path: exactly one; "many".
QString getCalFileName();
// mnuChooseGrid: looks for the files again; several are offered in the window, a single one is read.
void Choose_Cal_File();
// A calibration was found or not (frmMDI.HasCalibration); off drops the coordinates (Coord.Grid = 0). Whether the net
// is shown is told by the header row.
void Set_Grid_Menus(bool on);
// The map closes: no coordinates, no choice.
void Drop_Coordinates();
// Shows or hides the net; the header row keeps it (Typ -1, -2).
void Toggle_Grid();
// mnuGridDel: deletes the net's row (Typ 15), resets margins made for it, switches the menus off.
void Delete_Grid();
// mnuGridXYShow: the status bar tells the position in coordinates or, switched back, in pixels. True: in coordinates.
bool Toggle_Position_Unit();
