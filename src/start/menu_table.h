#pragma once
#include <QString>
#include <vector>

// The menus as data: one row an entry, in the order shown. A loop of the main window turns the rows into widgets; what
// an entry looks like at the moment (caption, enabled, visible, checked) is its state Menu(key), and what it does is
// the handler of the same key.

enum class MenuKind {
  Menu,  // holds other entries
  Entry,
  Check,      // shows Menu(key).Checked
  List,       // ten lines Menu(key, 1..10), shown while their state has a caption
  Separator,  // a line; shown only between shown entries
};

struct MenuRow {
  QString parent;  // key of the menu that holds it; empty = menu bar
  QString key;
  QString caption;   // shown until the state has one; "&" marks the access key
  QString shortcut;  // portable form ("Ctrl+O"), several separated by blanks
  QString help;      // for the status bar
  QString icon;      // name of a drawing without folder and ending
  MenuKind kind = MenuKind::Entry;
};

const std::vector<MenuRow>& Menu_Table();
// nullptr if no row has the key.
const MenuRow* Menu_Row(const QString& key);
inline constexpr int menuListLines = 10;

// Caption of the entry as it is to be shown now.
QString Menu_Caption(const MenuRow& row);
// "&" of a file name is no access key.
QString Escaped_Caption(const QString& text);
