#pragma once
#include <sqlite3.h>

#include "support/prelude.h"

// As another program would change a table file that nobody has open.
inline void Run_Elsewhere(const QString& path, const char* sql) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(qPrintable(path), &other), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(other);
  sqlite3_close(other);
}
