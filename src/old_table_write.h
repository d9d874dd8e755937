#pragma once
#include <QStringList>

// Reads the file of the old engine at `source` into a new table file at `target`, which must not exist. The table of
// the entries gets the program's own columns, with the user's behind them; tables of vertices theirs. Returns what
// came, as lines for the program that asked. Raises what reading and writing raise.
QStringList Write_Old_Table(const QString& source, const QString& target);
