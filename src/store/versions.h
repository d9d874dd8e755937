#pragma once
#include <QDateTime>
#include <QList>
#include <QString>
#include <vector>

#include "platform/database.h"

// Earlier states of the open map's table: dated copies, kept in the program folder at every opening where something has
// changed since the last one.

struct TableVersion {
  QString file;
  QDateTime when;
  int entries = 0;  // without the header row
};

// Keeps the open table as it is now, unless the newest copy holds the same. Older ones go: the last ten stay, then one
// a day for a month and one a month for a year, as far as there is room for them. What cannot be kept is not told: the
// table itself is safe.
void Keep_Version();
QList<TableVersion> Table_Versions();  // of the open table, the newest first; what cannot be opened is left out

// Which of the times, the newest first, go by that rule.
QList<int> Versions_To_Drop(const QList<QDateTime>& times, const QDateTime& now);

// Is the open table in the same state, so that nothing has to be compared? False where that cannot be told.
bool Holds_Same_As_Now(Database& version);

// The whole table goes back to the version, as one step; the user's table keeps its name. False if it could not be
// written; that was told.
bool Take_Version(const TableVersion& version);

// Megabytes for the versions of one table; 0: none are kept. A file that cannot be read or is none: the default.
inline constexpr int defaultVersionRoom = 200, mostVersionRoom = 10000;
int Version_Room();                    // as it is set
void Set_Version_Room(int megabytes);  // errors of the file are told
