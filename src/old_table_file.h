#pragma once
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "platform/database.h"

// A table file of the old database engine, read page by page. The library behind it trusts what it reads: on damaged
// files it crashes or never ends. So this is for the reader program alone, which may.

struct OldColumn {
  FieldInfo field;      // as ours will hold it
  bool known = true;    // false: pictures and other bytes, which are not read
  bool wholes = false;  // of whole numbers
  bool counts = false;  // the engine numbered the rows in it
};

struct OldTable {
  QString name;
  int rows = 0;  // as the file says
  std::vector<OldColumn> columns;
};

class OldTableFile {
 public:
  // Raises 3343 with a German text for a file that is none, is damaged or has a password.
  explicit OldTableFile(const QString& path);
  ~OldTableFile();
  OldTableFile(const OldTableFile&) = delete;
  OldTableFile& operator=(const OldTableFile&) = delete;

  // The user's tables; those of the engine are left out.
  const std::vector<OldTable>& Tables() const;
  // Every row of the table of that number, in the order in which they were made; Null where a field has no value.
  // Returns how many rows could not be read.
  int Read_Rows(size_t table, const std::function<void(const std::vector<Value>&)>& take);

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};

// Parts that can be tested by themselves.
namespace old_table {
// A text as the newer format keeps it: two bytes a character, or packed behind FF FE.
QString Unicode_Text(const QByteArray& bytes);
// Days since 1899-12-30, with the time behind the point: "17.05.1998 13:45:00", one of both where only one is told.
QString Date_Text(double days);
// Is the password in the first page of the file set?
bool Has_Password(const QByteArray& firstPage);
}  // namespace old_table
