#pragma once
#include <QString>

// The table file of a map: closing with a copy, loading, the save family, compression, repair. UserTable is
// Tbl.DBGrid1.Caption.

enum class CloseMode { WithCopy = 0, CloseOnly = 1, WithUserCopy = 2 };
enum class LoadMode { First = 0, Reload = 1 };  // First: a bad file is put aside and a new table made
enum class SaveStep { AtMapChange = 0, SaveAs = 1, Save = 2, Restore = 3, GivenName = 4 };

// Closes the table; WithCopy also brings UserTable and the snapshot "TEMP.MDB" up to date. A copy that cannot be
// written is told, and the former file stays. WithUserCopy leaves the snapshot as it is, for an undo that is armed.
void Close_Table(CloseMode mode);
// Opens the standard table and binds rsEntries; makes a new one from the template where none is. False: no table. A
// damaged or foreign file is kept as "_err.mdb"; the rows of a damaged one that can be rescued are loaded.
bool Load_Table(LoadMode mode);
// False if the user cancelled or the file could not be saved.
bool Save_Table(SaveStep step);
// Loads another file into the standard table; an empty path asks. False if it was not loaded.
bool Load_Other_Table(const QString& path);
void New_Table();  // mnuTableNeu
// Writes the file anew without gaps and tells both sizes; a failure is told, the file stays.
void Compress_Table();
// Mends the file if it is damaged; rescued rows and the name of the kept file are told.
QString Repair_Table();  // of a sound table what the status bar says of it
void Recover_Table();    // keeps _err, _rep and _bak copies; the caller raises 5000
// Checkpoint + caption of mnuReset. The current row stays.
void Undo_Point(const QString& caption);
// The same for the work of a scope. If nothing was written when it ends (an error took it back, the user stopped it,
// there was nothing to do), mnuReset offers what it offered before.
class UndoPoint {
 public:
  explicit UndoPoint(const QString& caption);
  ~UndoPoint();
  UndoPoint(const UndoPoint&) = delete;
  UndoPoint& operator=(const UndoPoint&) = delete;
};
// The same in the middle of work that needs the table open: the rows are copied as they stand, UserTable is not.
void Undo_Point_Of_Open_Table(const QString& caption);
void Undo_Last();  // mnuReset: back to the snapshot
// Before the table goes back to that step: an undo point behind it has to be a file by then.
void Before_Going_Back(int step);
// How many steps came after the one the undo point was taken for; they go along. 0 where that is not known.
int Steps_After_Undo_Point();
// Before the table is closed to be opened again. Where its file was deleted, moved or renamed under the program, the
// user is told and asked where the rows shall go; False if it is not back at its place: then it has to stay open.
bool Table_In_Place();
// UserTable under another name, wherever it is shown.
void Name_User_Table(const QString& path);
// The last undo point was taken under another UserTable: undo goes back to its name as well, so that the next
// checkpoint does not write the old entries over the file of now.
void Undo_Goes_Back_To(const QString& user);
// Idle work: writes the snapshot of the last undo point, folds the log into the table file.
void Table_Idle();
// The same for about so many milliseconds, so that nobody waits for all of it; true if there is more to do.
bool Table_Idle_Some(int milliseconds);
// Free name "<table>_BAK.MDB", "_BAK_1.MDB", ...
QString Free_Backup_Name(const QString& table);
// At the start of the program: clears the program folder of what programs that were killed have left of their snapshots
// and half-written files. At its end: gives its own work files back.
void Clear_Work_Files();
void Release_Work_Files();  // nothing of them stays but "TEMP.MDB"
// The database service has to know our tables to put a damaged file together again; before every RepairDatabase.
void Tell_Known_Tables();
// Removes every "*.ldb" beside the user table, and that of the standard table; not the locks of running programs.
void Delete_Lock_Files();
