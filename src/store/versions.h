#pragma once
#include <QDateTime>
#include <QList>
#include <QString>
#include <vector>

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

// How an entry of a version stands to the table of now.
enum class VersionEntry { Gone, Changed };
struct VersionDifference {
  qint64 key = 0;  // of its row, in the version
  VersionEntry how = VersionEntry::Gone;
  QString name;  // for the user: "Fläche: Moor"
};
struct VersionDifferences {
  std::vector<VersionDifference> entries;  // gone or changed since, in the order of the version
  int added = 0;                           // entries of now that it has not
};
// Raises what the database raises.
VersionDifferences Differences_To(const TableVersion& version);

// The whole table goes back to the version, as one step; the user's table keeps its name. False if it could not be
// written; that was told.
bool Take_Version(const TableVersion& version);
// These entries alone, as one step: changed ones as they were, those that are gone at the end of the table, each with
// its vertices. Raises what the database raises; nothing is changed then. The number of entries taken.
int Take_Entries(const TableVersion& version, const QList<qint64>& keys);

// Megabytes for the versions of one table; 0: none are kept.
inline constexpr int defaultVersionRoom = 200, mostVersionRoom = 10000;
int Version_Room();
void Set_Version_Room(int megabytes);  // errors of the file are told
