#pragma once
#include <QString>
#include <QStringList>

// Tables of the old database engine. A program of its own reads them into tables of ours: damaged ones make the library
// behind it crash or run for ever.

// By the first bytes of the file; false if it cannot be read.
bool Is_Old_Table(const QString& path);

struct OldTableReport {
  int tables = 0, rows = 0, entries = 0;  // entries: rows of MapData
  QStringList notes;                      // what was not converted as it stood
  QStringList counters;                   // columns of MapData in which the old engine numbered the rows
  QString Text() const;                   // as lines
};

// Reads it into a new table file; the old one stays as it is. Raises 3343 with a German text if it is damaged, has a
// password or the reader program is missing, 3059 if the user stopped it, 3204 if the target exists.
OldTableReport Convert_Old_Table(const QString& source, const QString& target);

// Puts a table of ours in its place, under its name; the old file is kept beside it with "_alt" in its name. Tells what
// came. Raises what converting and renaming raise; the old file is in its place then.
void Convert_In_Place(const QString& path);
