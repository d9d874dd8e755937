#pragma once

class QApplication;

// The clipboard of the desktop as the service of the copies. Once, when the program starts.
void Install_Clipboard();
// Nothing at all lies on it.
bool Clipboard_Is_Empty();
// No text box of the application pastes what is not there: those of Qt end the program then.
void Guard_Pasting(QApplication& application);
