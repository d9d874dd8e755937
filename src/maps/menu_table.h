#pragma once
#include <QString>
#include <QStringList>
#include <vector>

// The menus as data: one row an entry, in the order shown. A loop of the main window turns the rows into widgets; what
// an entry looks like at the moment (caption, enabled, visible, checked) is its state Menu(key), and what it does is
// the handler of the same key.

enum class MenuKind {
  Menu,  // holds other entries
  Entry,
  Check,      // shows Menu(key).Checked
  List,       // ten lines Menu(key, 1..10), shown while their state has a caption
  Separator,  // a line, shown only between shown entries; with a caption a heading
};

// What must be there for an entry to be of use.
enum class MenuNeeds {
  Nothing,
  EntryInHand,
  NoEntryInHand,
  Picture,  // a picture in hand
  Font,     // what is in hand has a font, or nothing is
  Foot,     // an entry with a foot point in hand
  Corners,  // a line, an area or a free figure in hand
  Fill,     // an area or figure in hand, or nothing: then it is the next one's
  Figure,   // a figure in hand
  Target,   // an area or line in hand, and marks
  Marks,    // at least one marked entry
  TwoMarks,
  Hidden,
  Inactive,
  Template,     // a template of an area was saved
  Entries,      // at least one entry
  Net,          // coordinates of the map
  PlanSquares,  // squares or a raster's design
};

struct MenuRow {
  QString parent;  // key of the menu that holds it; empty = menu bar
  QString key;
  QString caption;   // shown until the state has one; "&" marks the access key
  QString shortcut;  // portable form ("Ctrl+O"), several separated by blanks
  QString help;      // for the status bar
  QString icon;      // name of a drawing without folder and ending
  MenuKind kind = MenuKind::Entry;
  MenuNeeds needs = MenuNeeds::Nothing;
};

const std::vector<MenuRow>& Menu_Table();
// nullptr if no row has the key.
const MenuRow* Menu_Row(const QString& key);
inline constexpr int menuListLines = 10;

// What an entry looks like now is a function of the state. Caption of the entry:
QString Menu_Caption(const MenuRow& row);
// The check mark of a MenuKind::Check.
bool Menu_Checked(const MenuRow& row);
// Its state, and what it needs is there.
bool Menu_Enabled(const MenuRow& row);
// Keys of the popup menu of the map in order; an empty one is a line.
const QStringList& Popup_Table();
// The shortcut is meant for the map alone: in the grid and in texts the same keys have their own meaning.
bool Shortcut_Of_Map(const MenuRow& row);
// "&" of a file name is no access key.
QString Escaped_Caption(const QString& text);
