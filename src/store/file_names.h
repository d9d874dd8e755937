#pragma once
#include <QString>
#include <vector>

// Finds and prepares the program folder: FLURAX_HOME if set, else ~/.local/share/flurax, filled from `delivered` with
// what is missing there; files that are there stay as they are. Sets ProgramFolder. Error 70, 61 or 76 if it cannot be
// written; the text names it.
void Prepare_Program_Folder(const QString& delivered);
// Program folder + "/" + name.
QString Program_File(const QString& name);

struct NameFault {
  int position = 0;  // from 1, in the name
  QString reason, character;
};
// Up to eight faults of the file name (folders above it are not judged).
std::vector<NameFault> File_Name_Faults(const QString& path);
// Shows the faults and asks whether to change the name: true = ask for the name again.
bool Check_File_Name(const QString& path);
// Capitals character by character: "ß" stays, so that two names never become one.
QString Capitals(const QString& text);

// Name of the standard table from the map window's caption ("Map: " + path in capitals). The file that is really there
// is found ignoring case; a new one gets the capital name in the real folder.
QString Table_Name_Of_Map();
// A path as it is kept in the header row: beyond 30 characters its first 3, "..." and its last 23.
QString Shortened_Path(const QString& path);
// "File access refused" with the given names, one a line.
void Show_No_Access(const QString& names);
