#pragma once
#include <QString>
#include <QStringList>
#include <functional>

// External paint programs: the user's list in "Flurax.ini", starting one with the open map's picture, and loading the
// map again when the picture was changed.

// Writes the list with the chosen program in front, each program once, empty ones left out.
void Keep_Paint_Programs(const QStringList& programs, const QString& chosen);
// The program in front of the list; empty if there is none.
QString Chosen_Paint_Program();

enum class PaintStart { Started, NoMap, NoProgram, Failed };
// Starts it with MapFile. A program is a path, or a name that is looked for in the program folder and on PATH.
// `returned` is called when the program ends.
PaintStart Start_Paint_Program(const QString& program, std::function<void()> returned = {});

// Reload_Map if a program was started with the open map and its file has another time or size since. A file that is
// missing or empty at the moment is looked at again the next time. True if the map was loaded.
bool Reload_Changed_Map();
