#pragma once
class QMainWindow;

// The lines of "Fenster": the windows that are open - map, table and note pads, then the windows of tools and the help.

// Tells them to the menu, Menu("mnuWindow", 1..10).
void List_Windows(const QMainWindow& window);
// Brings the window of a line to the front, to its size where it was minimised.
void Bring_To_Front(const QMainWindow& window, int line);
