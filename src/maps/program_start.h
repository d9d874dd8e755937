#pragma once
#include <QString>
#include <QStringList>

// First word of the command line if it contains ".bmp" in any case, else empty. Quotes have no meaning.
QString Command_Line_Map(const QString& commandLine);
// Load of the main window: settings, palette, recent lists, then the map of the command line or the start window.
void Program_Start(const QString& commandLine);
// The main window is closing: closes the map and the table. False if something that is being typed could not be stored.
bool Program_End();
QString Program_Version();  // "1.0.0"
