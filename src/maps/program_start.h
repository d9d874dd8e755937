#pragma once
#include <QString>
#include <QStringList>

// First word of the command line if it contains ".bmp" in any case, else empty. Quotes have no meaning.
QString Command_Line_Map(const QString& commandLine);
// The map that the program's arguments name: a file that is there, seen from the folder of the start, with its whole
// path (blanks in it, and a desktop that splits it at them, do no harm); else what Command_Line_Map makes of them.
QString Map_Of_Arguments(const QStringList& arguments);
// Load of the main window: settings, palette, recent lists, then the map of the arguments or the start window. The
// current folder becomes the program folder.
void Program_Start(const QStringList& arguments);
// The main window is closing: closes the map and the table. False if something that is being typed could not be stored.
bool Program_End();
QString Program_Version();  // "1.0.0"
