#pragma once
#include <QString>
#include <QStringList>

// "Flurax.ini" in the program folder: one setting a line.

// Reads TLB, FL, Tipps, DGS into frmMDI. A missing or unreadable file leaves the defaults.
void Read_Ini();
// Replaces the line of the key named in `line` ("Tipps", else "TLB:", else "FL:", else "DGS:") or appends it.
void Write_Ini(const QString& line);
// First area template into EntVG, EntHG, EntRA and the two results; false if there is none.
struct AreaTemplate {
  int VG = 0, HG = 15, RA = 13, TX = -3, SB = 1;  // TX hatching (Yline), SB line width (Xline)
};
bool Read_Template(AreaTemplate& found);
void Write_Template(const QString& name, const AreaTemplate& area);
// "MPG:" lines: paint programs.
QStringList Paint_Programs();
void Set_Paint_Programs(const QStringList& programs);
// Lines of "Tipps.txt" under the heading "Tipp n" (n from 1); the built-in ones if the file is missing.
QStringList Tip_Text(int number);
