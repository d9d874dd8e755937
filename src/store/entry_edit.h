#pragma once
#include <QString>

// Saving a text from the edit box (Map.Text2) at window position x, y. False if nothing was saved (too long: message).
bool Save_Text_Entry(int x, int y, QString text);
inline constexpr int longestText = 253;  // characters the edit box takes
// Deletes the current entry after a question. False if it stayed.
bool Delete_Entry();
// Foot point of the current text row at window position x, y.
void Set_Foot_Point(int x, int y);
// Brings the twelve columns of the current row to sound values. True if something was changed.
bool Repair_Row();
// Takes all blanks out of a text / trims it by the option.
QString Trimmed_Input(const QString& text);
