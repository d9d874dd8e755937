#pragma once
#include <QString>

// Note pads: text files of the map in small windows. NotePads holds the file of every slot ("" = a new text without a
// file), NotePadState whether the slot is free and whether its text was changed; ActiveNotePad is the one in front.

// The first free slot, or a new one, for the file. "MAP" is no note pad and takes none (Palette always has its sixteen
// colours): -1.
int New_NotePad(const QString& name);
void Free_NotePad(int slot);
bool Is_Open_NotePad(int slot);
bool NotePad_Changed(int slot);
void Set_NotePad_Changed(int slot, bool changed);
// The slot that shows the file, -1 if none does.
int NotePad_Of(const QString& path);
QString NotePad_Title(int slot);    // file name, "Notiz 1" for a new text; "*" behind a changed one
void Set_Active_NotePad(int slot);  // the one in front; -1 or a free slot: none

// Reads the text of a file, lines ended by LF. Nothing, with a message, if it cannot be read or is no text.
bool Read_NotePad(const QString& path, QString& text);
// Writes the text into the slot's file in Windows-1252 with CR LF; asks for a name where it has none. On top of the
// recent list afterwards. False if the user cancelled or it could not be written: the slot stays changed.
bool Save_NotePad(int slot, const QString& text);
bool Save_NotePad_As(int slot, const QString& text);  // mnuResultSaveAs
// Asks about a changed text and saves it if wanted. False: the window stays open. Without `canStay`
// there are only yes and no.
bool Close_NotePad(int slot, const QString& text, bool canStay = true);
// The file dialog; "" if the user cancelled.
QString Choose_NotePad();
// Position of `wanted` in the text from `start` on, ignoring case; -1 if it does not come any more.
qsizetype Find_Text(const QString& text, const QString& wanted, qsizetype start);
