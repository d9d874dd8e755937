#pragma once
#include <QStringList>

// Row keys of the group the row belongs to, itself included; only itself without a group, none if it is not there.
QStringList Group_Of(const QString& bookmark);
