#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "maps/command.h"

// The menus as data: what stands in them, in the order shown, by the keys of commands (commands.h) and of other menus.
// A loop of the main window turns them into widgets.
struct MenuRow {
  QString key;
  QString text;      // "&" marks the access key
  QStringList rows;  // commands and menus; "-" is a line, "- Text" a heading
  Needs needs = Needs::OpenMap;
  QString icon = {};  // name of a drawing without folder and ending
};

// All menus; those of the menu bar first, each menu before the menus in it.
const std::vector<MenuRow>& Menu_Table();
// Keys of the menus in the menu bar, in order.
const QStringList& Menu_Bar();
// nullptr if no menu has the key.
const MenuRow* Find_Menu(const QString& key);
inline constexpr int menuListLines = 10;

// Keys of the popup menu of the map in order; "-" is a line.
const QStringList& Popup_Table();
// The shortcut is meant for the map alone: in the grid and in texts the same keys have their own meaning.
bool Shortcut_Of_Map(const QString& command);
// "&" of a file name is no access key.
QString Escaped_Caption(const QString& text);
