#pragma once
#include <QString>

// Reads the header of a bitmap: size and resolution, warns of a distorted scan. Not a bitmap: a hint, nothing else.
void Check_Bitmap(const QString& path);
// Scale bar, plan squares, lines, hidden rows: sets frmMDI's flags. False on a database error in any row.
bool Scan_Table();
