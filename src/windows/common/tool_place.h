#pragma once
#include <QRect>

class QDialog;
class QWidget;

// Where windows stand that are used beside the map.

// What the dialog asks for: it will stand beside it when it is shown, be it modal or not. Dialogs that are not modal
// stand beside the map's picture by themselves.
void Works_Beside(QDialog& dialog, QWidget* asked = nullptr);
// For dialogs that are being shown: where the user left it, else where it hides least of what it asks for and of the
// other open windows; wholly on the screen.
void Place_Tool_Window(QDialog& dialog);
// Any window: made smaller and moved until it is wholly on the screen.
void Keep_On_Screen(QWidget& window);
// Keeps its place for the next time, in this session and later ones, if the user has moved it.
void Remember_Place(const QDialog& dialog);

// Beside that part of the screen, or where least of it is hidden; wholly on the screen, made smaller where it must be.
void Place_Beside(QWidget& window, const QRect& asked);
