#pragma once
#include <QString>
#include <QStringList>

// "Flurax.ini" in the program folder: one setting a line.

// Reads TLB, FL, Tipps, DGS into frmMDI. A missing or unreadable file leaves the defaults.
void Read_Ini();
// A failure is shown, not raised: false then. Replaces the line of the key named in `line` ("Tipps", else "TLB:", else
// "FL:", else "DGS:") or appends it.
bool Write_Ini(const QString& line);
// First area template into EntVG, EntHG, EntRA and the result; false if there is none. A value that is missing or out
// of its range ends the reading; the others stay what they were set to.
struct AreaTemplate {
  int VG = 0, HG = 15, RA = 13, TX = -3, SB = 1;  // TX hatching (Yline), SB line width (Xline)
};
// The last area's look from the "FL:" line, also into EntVG, EntHG and EntRA. False, and the values above, without one.
bool Read_Template(AreaTemplate& found);
// Puts it in place of the stored one. False if the file could not be written, which was told.
bool Write_Template(const QString& name, const AreaTemplate& area);
// "MPG:" lines: paint programs. Setting raises what the file raises.
QStringList Paint_Programs();
void Set_Paint_Programs(const QStringList& programs);  // in place of those kept
// Lines of "Tipps.txt" under the heading "Tipp n" (n from 1); the built-in ones if the file is missing.
QStringList Tip_Text(int number);
