#pragma once
#include <QString>

// Is the file of a line of a recent list (1 maps, 2 tables, 3 texts) there? One that is gone is told and leaves the
// list.
bool Recent_Is_There(const QString& path, int list);
