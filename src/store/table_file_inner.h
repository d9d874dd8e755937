#pragma once
#include <QDeadlineTimer>
#include <QString>

#include "platform/database.h"
#include "platform/error.h"

// What the files of the table file share.
namespace table_file {

QString Snapshot_File();  // in the program folder: "TEMP.MDB", of a second program at the same time "TEMP_1.MDB", ...
QString Sorted_File();    // where a table is compressed: "SRTDATA.MDB" in the same way
// The path without its ending ".MDB".
QString Without_Ending(const QString& path);
// Cut at the first point of the file name; folders keep theirs.
QString Cut_At_First_Point(const QString& path);
bool Same_Name(const QString& path, const QString& other);  // ignoring case
// "<base>_old.MDB", "<base>_old_1.MDB", ...: the first that is not taken.
QString Free_Name(const QString& base, const QString& ending);
// "<base>_err.mdb": an earlier copy of that name is moved to "<base>_err_1.mdb", ... first, so that nothing is
// overwritten and the name just told is the newest.
QString Free_Aside_Name(const QString& table, const QString& ending);
// Moves the table there; damaged files too. Returns the name.
QString Put_Aside(const QString& table, const QString& ending);
// CompactDatabase onto a target that may exist: it is replaced when the copy is whole, else it stays.
void Compact_Over(const QString& source, const QString& target);

bool Is_Access_Error(const Error& error);
// Tells that a copy could not be written and that the former file stayed.
void Report_Copy_Error(const QString& target, const Error& error);
// "" for a table of ours, else what is wrong with it.
QString Table_Fault(const QString& path);
// Entries of a repaired table, without its header row.
int Rescued_Entries(const RepairReport& report);

// Is the open table's file still where it was? Where it is not, the user is told and asked where the rows shall go.
// InPlace: it is, or is again. Kept: the rows are in UserTable, elsewhere; the table stays open. Away: it stays open,
// and the rows are nowhere else.
enum class Standing { InPlace, Kept, Away };
Standing Stand();
bool Stands_Away();                     // asks nothing
void Keep_Before_Closing();             // what would be lost is kept in the program folder at the worst
bool Save_Away(const QString& target);  // of a table that stands away; it stays open

// Closes recordsets and database; errors are ignored, what waits in the log is read at the next opening.
void Close_Quietly();
struct Copies {
  bool user = true, snapshot = true;  // written, or not needed
};
Copies Close_With_Copies();
// Brings the snapshot up to date from the closed table; a failure is told and withdraws the undo.
bool Take_Snapshot();
bool Take_Snapshot_Of_Open_Table();  // the same from the open one, by a mark in its journal where that can be
// The mark alone, for a user's table that is another one. It is brought up to date with the snapshot.
bool Mark_Snapshot_And_User(const QString& user);
bool Snapshot_Is_Pending();
// Writes the file that a mark stands for. False if that cannot be now; a failure is told and withdraws the undo.
bool Write_Pending_Snapshot(const QDeadlineTimer& end = QDeadlineTimer(QDeadlineTimer::Forever));
void Go_Back_To(const QString& row);  // if the table still has it
// Close_With_Copies and Load_Table(Reload); the current row stays. `loaded` tells whether the table is open again.
struct Checkpointed : Copies {
  bool loaded = false;
};
Checkpointed Checkpoint();

// Fits: it was taken of this very table of this map, and is as it was written then.
enum class SnapshotState { Fits, Foreign, Unusable };
SnapshotState State_Of_Snapshot();
inline bool Snapshot_Fits() { return State_Of_Snapshot() == SnapshotState::Fits; }
QString User_Of_Snapshot();  // "" = the present one
void Forget_Snapshot();

// Before other entries take the place of those in the standard table: asks where they are changed or in no other file.
// An answer that would save the standard table onto itself keeps them beside it as "_old". False if they should have
// been saved and were not.
bool Save_Before_Replacing();
// Another table of this map, in its list or beside it, holds the very entries of the open table.
bool Stand_In_Another_File();

// State of mnuReset.
void Arm_Undo(const QString& caption);
void Disarm_Undo();
void Draw_If_Open();
void Show_Saved(const QString& path);
// Header row: path of the user's table and the map's name.
void Write_Header_Names(const QString& path, bool withMap);

}  // namespace table_file
