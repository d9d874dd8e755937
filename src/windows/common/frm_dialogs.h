#pragma once
#include <QKeySequence>
#include <QString>
#include <functional>
#include <vector>

class QDialog;
class QWidget;

// A page of the built-in help, "index.htm" where none is named, with an anchor where one is ("options.htm#farben").
// One window for all pages; it can stay open beside a dialog.
void Show_Help(QWidget* parent, const QString& page = {});

// What all dialogs have in common: F1 opens the page, no question mark in the title bar, the map stays visible behind.
void Prepare_Dialog(QDialog& dialog, const QString& helpPage);
void Prepare_Dialog(QDialog& dialog, std::function<QString()> helpPage);  // of what it shows when F1 is pressed

// A line in the menu bar of a dialog, by its object name.
struct DialogMenuLine {
  const char* name;
  QString caption;
  QKeySequence key;
  std::function<void()> work;
};
// Gives the dialog a menu bar of these lines; their keys work in all of it.
void Give_Menu_Bar(QDialog& dialog, const std::vector<DialogMenuLine>& lines);
