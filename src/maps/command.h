#pragma once
#include <QPoint>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

// Everything the user can have done by a menu, a tool button or a key is a command: one row of a table (commands.h).
// Menus (menu_table.h) and tool buttons (toolbar_table.h) only name commands: the same thing behind both is one row.

// What must be there for a command to be of use. All but Nothing need an open map.
enum class Needs {
  Nothing,
  More,  // what is not there yet: always grey
  OpenMap,
  NotePad,      // a note pad in front
  Entries,      // at least one entry
  UserColumns,  // a column of the user in the table
  UndoPoint,
  StepBehind,  // a step that can be taken back
  StepAhead,   // one that was taken back
  Template,    // a template of an area was saved
  EntryInHand,
  NoEntryInHand,
  Picture,   // a picture in hand
  Font,      // what is in hand has a font, or nothing is
  FootRoom,  // what is in hand can have a foot point
  Foot,      // an entry with a foot point in hand
  Corners,   // a line, an area or a free figure in hand
  Fill,      // an area or figure in hand, or nothing: then it is the next one's
  Figure,    // a figure in hand
  Area,      // an area in hand
  Shape,     // a line, an area or a figure in hand
  Target,    // an area or line in hand, and marks
  Marks,     // at least one marked entry
  TwoMarks,
  Hidden,
  Inactive,
  Net,          // coordinates of the map
  Calibration,  // several calibration files to choose from
  PlanSquares,  // squares or a raster's design
};

// What a command asks of the hand before it begins.
enum class Hand {
  Keep,       // what is being typed stays as it is
  StoreText,  // it is stored first
  Free,       // and the entry in hand is given up
};

struct CommandCall {
  int line = 0;              // 1..10 of a list, else 0
  std::optional<QPoint> at;  // window pixels of the map where the menu of the right mouse button was opened
};
using Procedure = std::function<void(const CommandCall& call)>;

enum class CommandKind {
  Plain,
  Check,  // shows whether it is on
  List,   // ten lines, Menu(key, 1..10), shown while their state has a caption
};

struct Command {
  QString key;
  QString text;      // in a menu; "&" marks the access key
  QString icon;      // name of a drawing without folder and ending
  QString shortcut;  // portable form ("Ctrl+O"), several separated by blanks
  Needs needs = Needs::OpenMap;
  Hand hand = Hand::StoreText;
  QString step;  // name of the change in the table, for taking it back; empty where the table stays as it is
  QString help;  // for the status bar
  Procedure procedure = nullptr;  // without one it opens a window: Bind_Command
  CommandKind kind = CommandKind::Plain;
};
