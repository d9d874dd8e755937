#pragma once
#include <QString>

class QWidget;

// Files that are dropped on an open map: each opens the import it belongs to and shows what is in it. Nothing is
// imported before the user says so.

bool Can_Be_Imported(const QString& path);  // by its ending
// Opens the window with the file in it. What is wrong with it is told.
void Import_Dropped_File(QWidget* parent, const QString& path);
