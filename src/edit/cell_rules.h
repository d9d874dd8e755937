#pragma once
#include <QString>

#include "platform/database.h"
#include "store/entry_type.h"

// What a column of MapData takes from a user's hand, wherever it was typed. Every problem is a German text for him,
// "" where there is none.

// The text as a value of the column, by its kind and width.
QString Value_Problem(const FieldInfo& field, const QString& text, Value& value);
// The same of a number.
QString Value_Problem(const FieldInfo& field, double number, Value& value);
// What one of the fixed columns means to the program, in a row of that kind and stored ID: its name, kind, frame.
// `value` has the kind of the column.
QString Meaning_Problem(const EntryType& type, const QString& id, int number, const Value& value);
// The word in the stored ID by which the program tells the row's kind, where the other ID has it no more; else "".
QString Lost_Keyword(const QString& stored, const QString& other);
