#pragma once
#include <QString>

// What a command that opens no window and asks nothing has done: in the task panel of the status bar, until the next
// thing stands there.
void Tell_Done(const QString& text);
// Takes it away where it still stands there: something else is done now.
void Forget_Done();
// "1 Eintrag", "3 Einträge".
QString Entries_Text(qsizetype count);
