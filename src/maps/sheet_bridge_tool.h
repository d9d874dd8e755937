#pragma once
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>

#include "exchange/sheet_comparison.h"
#include "platform/database.h"
#include "workbook/workbook.h"

// The work of the tool TabBridge, without its windows.

// The map that was opened last, as far as it is still there; "" if there is none.
QString Last_Map();
// The standard table of a map, whether it is there or not.
QString Table_Of_Map(const QString& map);
// Beside the table, whether it is there or not.
QString Workbook_Of_Map(const QString& map);

struct TableExport {
  QString table, workbook;
  int entries = 0;
  QString aside;  // where a file of the former binary kind was put; "" if there was none
};
// Writes the rows of the map's table into the sheet "MapData" of its workbook. The table may be open elsewhere. `retry`
// is asked while the spreadsheet program has the workbook open: false leaves it as it is and gives nothing. Raises what
// reading and writing raise.
std::optional<TableExport> Export_Rows_Of_Map(const QString& map,
                                              const std::function<bool(const QString& text)>& retry = {});

// The copy of a table that is compared with a sheet and changed.
class SheetExchange {
 public:
  // Raises 53 if there is none, 3343 for no table of entries, and what the database raises.
  explicit SheetExchange(const QString& copy);
  Recordset& Rows() { return *rows; }
  int Entries() const { return rows->RecordCount() - 1; }
  // The workbook of the table, or of the map that was opened last; "" if neither is there.
  QString Proposed_Workbook();

  // Reads the workbook anew; its path. The sheet that is most likely meant is read as well.
  void Open_Workbook(const QString& path);
  const QString& Workbook_Path() const { return path; }  // "" before the first one
  QStringList Sheets() const;
  void Read_Sheet(const QString& name);  // errors as Workbook::Read
  const Sheet& Current() const { return sheet; }
  const SheetTitles& Titles() const { return titles; }

  SheetComparison Compare(const SheetOrder& order) { return Compare_With_Sheet(*rows, sheet, order); }
  // The first one keeps what was there, for Take_Back.
  SheetTaken Take(const SheetComparison& comparison, bool withNewRows);
  bool Has_Taken() const { return !before.isEmpty(); }
  void Take_Back();  // everything that was taken

 private:
  void Open();
  QString file, path;
  QTemporaryDir folder;
  QString before;  // the table as it was given; "" while nothing was taken
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
  std::unique_ptr<Workbook> book;
  Sheet sheet;
  SheetTitles titles;
};
