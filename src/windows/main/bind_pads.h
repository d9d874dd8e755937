#pragma once
class QMainWindow;

// Binds the commands of the note pads, and printing what a window shows.
void Bind_NotePads(QMainWindow& window);
