#pragma once
#include <QString>
#include <optional>

#include "import/table_import.h"

// What is asked and told around the import of entries of another table.

// What was told of a source of the old engine; nothing for others.
void Tell_Remarks(const TableSource& source);

// How the places of the source come onto the open map: asks where nets differ or nothing tells of one. Nothing where
// the user gave up.
std::optional<TablePlacing> Ask_Placing(const TableSource& source);

// A fault under the name of the step in which it happened; OK goes on, Cancel gives false.
bool Go_On_After_Step(const QString& step, const Error& error);

// The number of entries, and whether the list of the refused ones shall be shown: true for yes.
bool Tell_Imported(const TableImportResult& result);
