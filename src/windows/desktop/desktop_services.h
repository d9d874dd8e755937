#pragma once
class QApplication;

// The real faces of the services: message box, file dialog, input box, progress window, programs of the desktop.

// Gives the services their windows. Once, when the program starts.
void Install_Desktop_Services();
// Look, German language and icon of the application; numbers of files keep their decimal point.
void Prepare_Application(QApplication& application);
