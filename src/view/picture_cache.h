#pragma once
#include <QImage>
#include <QString>

// Pictures of picture entries, kept between redraws; a file that changed is read anew.

// The file an entry names: as it stands, else beside the map, else in the program folder. Empty if it is nowhere.
QString Find_Picture(const QString& name);
// The picture at 100 %; null if it is missing or damaged.
const QImage& Entry_Picture(const QString& name);
// The same reduced by a zoom above 1.
const QImage& Entry_Picture(const QString& name, double zoom);
void Forget_Entry_Pictures();  // they are read anew at the next drawing
