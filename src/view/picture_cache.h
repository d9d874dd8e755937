#pragma once
#include <QImage>
#include <QString>

// Pictures of picture entries, kept between redraws within a bound of memory; a file that changed is read anew.

// The file an entry names: as it stands, else beside the map, else in the program folder. Empty if it is nowhere.
QString Find_Picture(const QString& name);
// The picture at 100 %; null if it cannot be had, whatever the reason. Never raises.
QImage Entry_Picture(const QString& name);
// The same reduced by a zoom above 1.
QImage Entry_Picture(const QString& name, double zoom);
// What stands in the place of a picture that cannot be had: which one it is and why. Empty for a picture.
QString Entry_Picture_Flaw(const QString& name);
// Gives all of them back; the open map's are not those of the next one.
void Forget_Entry_Pictures();
// Bytes of all that are kept. Beyond the bound those go that were not asked for the longest; the one last asked for
// stays in any case. Setting gives the former bound.
qint64 Entry_Pictures_Kept();
qint64 Bound_Entry_Pictures(qint64 bytes);  // bytes
