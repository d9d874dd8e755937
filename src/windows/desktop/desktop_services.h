#pragma once
#include <QString>
#include <QStringList>

class QApplication;
class QWidget;

// The real faces of the services: message box, file dialog, input box, progress window, programs of the desktop.

// Gives the services their windows. Once, when the program starts.
void Install_Desktop_Services();
// Look, German language and icon of the application.
void Prepare_Application(QApplication& application);
// The window a dialog belongs to: the active one, else the first visible; may be nullptr.
QWidget* Dialog_Parent();

// A service's filter "Text|*.a;*.b|Text|*.c" as the lines of a file dialog: "Text (*.a *.b)". An opening dialog can
// always be switched to all files.
QStringList Dialog_Filters(const QString& filter, bool save);
// CR and CR LF as line feeds.
QString Dialog_Text(QString text);
