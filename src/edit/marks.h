#pragma once
#include <QStringList>

// Marks: Typ + 100, the one marked last + 200. Each is one transaction; rows that do not change are not written.
void Mark_Obj();                               // marks or unmarks the current row
void Mark_Rows(const QStringList& bookmarks);  // marks these too; the last of them becomes the one marked last
void Unmark_All();                             // "zurück"
void Delete_Marked();                          // asks once; undo point "Rückgängig: Markierte löschen"
void Group_Marked();  // "<" + number behind the IDs; pressed again for one group it dissolves it

// Aligns the marked rows with the one marked last. Texts, lines, areas and pictures move their label or upper left
// corner and keep their foot point; figures, plan squares, scale bars and north arrows move as a whole. Equal gives
// figures and plan squares the size of the one marked last.
enum class JustifyMode { Left = 1, Right = 2, Top = 3, Bottom = 4, Equal = 5 };
void Justify(JustifyMode mode);  // undo point "Rückgängig: Justieren"
