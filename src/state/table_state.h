#pragma once
#include <QSet>
#include <QString>

// Characters of the text columns the program makes.
inline constexpr int textColumnWidth = 79;

// Does UserTable hold what the standard table holds?
enum class TableTag { Clean, Dirty };

// What showed or hid the table last.
enum class TableSwitch { AtOpening, ByUser, MovedOff };

// State of the table window as plain data.
struct TableState {
  TableTag Tag = TableTag::Clean;
  struct {
    QString Caption;  // the table file the user thinks of as open (UserTable)
  } DBGrid1;
  bool Visible = true;
  bool Minimized = false;
  TableSwitch Switched = TableSwitch::AtOpening;
  int EintragSize = textColumnWidth;  // defined width of the column Eintrag
  bool HasUserColumns = false;
  int LeastHeight = 0;           // pixels its window needs at least, kept by the window
  bool WantPlace = false;        // the window shall take its place below the map
  bool MapFilledWindow = false;  // the map was maximised before the table was shown
  bool EditWarned = false;       // the warning before the first change was shown in this session
  QSet<QString> RepairRefused;   // damaged rows the user wants to keep as they are
  QSet<QString> HiddenColumns;   // names of columns that are not shown; not stored
};
extern TableState Tbl;

// Is there anything that was not saved under the name of the user?
inline bool Table_Is_Changed() { return Tbl.Tag == TableTag::Dirty; }
