#pragma once
#include <QString>

// What the system says of a fault (errno), in German.
QString System_Fault(int code);
// To be told where a temporary folder or file cannot be made; without a folder the system's own for them.
QString No_Work_Folder(const QString& where = {});
