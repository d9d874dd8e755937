#pragma once
#include <QString>
#include <functional>

class QDialog;
class QWidget;

// A page of the built-in help, "index.htm" where none is named, with an anchor where one is ("options.htm#farben").
// One window for all pages; it can stay open beside a dialog.
void Show_Help(QWidget* parent, const QString& page = {});

// What all dialogs have in common: F1 opens the page, no question mark in the title bar, the map stays visible behind.
void Prepare_Dialog(QDialog& dialog, const QString& helpPage);
void Prepare_Dialog(QDialog& dialog, std::function<QString()> helpPage);  // of what it shows when F1 is pressed
