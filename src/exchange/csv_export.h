#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>

#include "store/entry.h"

// The point-like entries of the open table as a text for spreadsheets: running number, text, place in map pixels (the
// foot point where there is one, the upper left corner of a figure), and coordinates by the open map's calibration.

// Has an entry a line? Where it is, in map pixels.
bool Csv_Has_Line(const EntryRow& row);
QPoint Csv_Place(const EntryRow& row);

// Head, a line an entry, "Ende". `name` is the table's file name. Lines, areas, pictures, scale bars and the header row
// have no line.
QStringList Csv_Export_Lines(const QString& name);

// Menu entry: the same into a file beside the table, named like it; then it tells where the file is. A file of that
// name that was not written so is kept as "<name>_alt.csv" (then "_alt2" ...).
void Export_Csv();
