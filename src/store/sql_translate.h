#pragma once
#include <QString>
#include <vector>

#include "platform/database.h"

// The user's statements: [names], texts in " or ', like with "*", "?", "#" and [a-z], "Delete * from", &, /, Mod, True,
// Top n and the usual functions, turned into what the database understands. Tables and columns are found ignoring case;
// a name that is not there is an error.

enum class SqlKind { Select, Update, Delete, Insert };

struct SqlTranslation {
  SqlKind kind = SqlKind::Select;
  QString sql;
  QString error;         // German; the rest is empty then
  QString table;         // the one that is read or written first
  bool ownRows = false;  // a Select whose rows are rows of that table
  bool Good() const { return error.isEmpty(); }
};

// Looks at the text and the description of the tables alone.
SqlTranslation Translate_Sql(const QString& statement, const std::vector<TableDef>& tables);
