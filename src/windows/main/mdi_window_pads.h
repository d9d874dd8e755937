#pragma once
#include <QString>

class FrmNotePad;
class QMainWindow;

// The note pads among the child windows of the main window.

// Shows the file in a note pad, in the one that has it already; an empty path is a new text.
void Show_NotePad(QMainWindow& window, const QString& path);
// The note pad in front; nullptr without one.
FrmNotePad* Active_NotePad(QMainWindow& window);
// Asks about every changed text. False if one stays open. `mapGone`: none is asked whether it may stay.
bool Close_NotePads(QMainWindow& window, bool mapGone);
// Once, when the main window is made.
void Watch_NotePads(QMainWindow& window);
