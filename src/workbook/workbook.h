#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "workbook/workbook_errors.h"
#include "workbook/workbook_sheet.h"

// Workbooks: one file of many sheets, Office Open XML whatever its name ends with. Sheets are replaced or added one at
// a time; every other sheet, chart, picture or part of the file stays byte for byte.

// The workbook beside a table: its name cut at the last point and ".XLS" behind. Error 1004, naming the table, for a
// name without a point.
QString Workbook_Name(const QString& table);

// Who has the workbook open in the spreadsheet program, by the lock file that it keeps beside it.
struct WorkbookLock {
  QString file;         // path of the lock file
  QString user, since;  // may be empty
};
std::optional<WorkbookLock> Workbook_Lock(const QString& path);  // nothing if nobody has it open
// What to tell the user of it: the workbook, who has it and since when.
QString Lock_Text(const QString& path, const WorkbookLock& lock);

class Workbook {
 public:
  // Reads the workbook; a new one if there is no such file. Only Save writes. Error 321 with a German text for a file
  // that is damaged or no workbook; 53, 70 as reading files.
  explicit Workbook(const QString& path);
  ~Workbook();
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  bool IsNew() const;  // there is no file yet
  // A file of the former binary kind lies under the name: the path it is put aside to when this one is saved; else "".
  QString AsidePath() const;

  QStringList SheetNames() const;            // in the order of the book
  bool HasSheet(const QString& name) const;  // in any case
  // Values, looks, widths, merged cells of a sheet. A formula gives the value it had last, a truth value 1 or 0, an
  // error its text. Dates are days since 1899-12-30. Colours by theme are left out. Error 9 if there is no such sheet,
  // 321 if it is damaged.
  Sheet Read(const QString& name) const;
  // No cell, no picture, no chart, nothing else on it.
  bool IsEmpty(const QString& name) const;

  // Replaces the sheet of that name, or adds it; it becomes the last one. Error 1004 for a name that cannot be.
  void Put(const Sheet& sheet);
  // Removes the empty sheets whose name contains `part`, but never the last one that can be seen.
  void RemoveEmpty(const QString& part);

  // Written aside, flushed and renamed. Nothing is written if nothing was changed. Error 55 while the spreadsheet
  // program has it open, 75 if the file was changed since it was read, 61, 70, 76 as writing files. After an error the
  // former file is there as it was.
  void Save();

 private:
  struct Inner;
  std::unique_ptr<Inner> inner;
};
