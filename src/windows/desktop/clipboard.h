#pragma once

// The clipboard of the desktop as the service of the copies. Once, when the program starts.
void Install_Clipboard();
// Nothing at all lies on it.
bool Clipboard_Is_Empty();
