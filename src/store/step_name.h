#pragma once
#include <QString>

#include "platform/journal.h"
#include "store/entry.h"

// What a step is called where the user reads it: by the name it was begun with or, without one, by what it has changed:
// "Fläche verschoben (Moor)", "12 Einträge gelöscht".
QString Step_Name(const QString& begun, const StepFacts& facts);

// " (Moor)", as it stands behind a step's name; nothing for an entry whose text says nothing.
QString In_Brackets(const EntryRow& row);
