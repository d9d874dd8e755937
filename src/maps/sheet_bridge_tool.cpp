#include "maps/sheet_bridge_tool.h"

#include <algorithm>

#include "analysis/result_book.h"
#include "exchange/sheet_rows.h"
#include "exchange/sheet_source.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/for_now.h"
#include "platform/system_fault.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/file_names.h"
#include "store/map_log.h"

QString Last_Map() {
  std::vector<LogRecord> maps = Read_Log_Records();
  std::erase_if(maps, [](const LogRecord& one) { return one.Kind != 1 || !File_Exists(one.Path); });
  const auto last = std::min_element(maps.begin(), maps.end(),
                                     [](const LogRecord& a, const LogRecord& b) { return a.Order < b.Order; });
  return last == maps.end() ? QString() : Find_File(last->Path);
}

QString Table_Of_Map(const QString& map) {
  const ForNow path(MapFile, Clean_Path(map));
  const ForNow caption(Map.Caption, QStringLiteral("Map: ") + Capitals(map));
  return Table_Name_Of_Map();
}

QString Workbook_Of_Map(const QString& map) { return Workbook_Name(Table_Of_Map(map)); }

std::optional<TableExport> Export_Rows_Of_Map(const QString& map,
                                              const std::function<bool(const QString& text)>& retry) {
  TableExport made;
  made.table = Table_Of_Map(map);
  TableCopy copy(made.table);
  made.entries = copy.Rows().RecordCount() - 1;
  const auto book = Write_Result_Sheets(made.table, {Sheet_Of_Rows(copy.Rows())}, retry);
  if (!book) return {};
  made.workbook = book->path;
  made.aside = book->aside;
  return made;
}

SheetExchange::SheetExchange(const QString& copy) : file(Find_File(copy)) {
  if (file.isEmpty())
    Raise(errors::fileNotFound, QStringLiteral("Die Kopie der Tabelle wurde nicht gefunden:\n") + copy);
  if (!folder.isValid()) Raise(errors::pathNotFound, No_Work_Folder());
  Open();
}

void SheetExchange::Open() {
  rows.reset();
  database.reset();
  database = Workspace::OpenDatabase(file);
  rows = Open_Entries(*database);
}

QString SheetExchange::Proposed_Workbook() {
  QStringList tables;
  if (const QString map = Last_Map(); !map.isEmpty()) tables << Table_Of_Map(map);
  rows->MoveFirst();
  if (!rows->Eof()) tables.prepend(rows->Text(column::Eintrag));
  for (const QString& table : tables)
    if (table.contains(u'.'))
      if (const QString found = Find_File(Workbook_Name(table)); !found.isEmpty()) return found;
  return {};
}

void SheetExchange::Open_Workbook(const QString& wanted) {
  auto opened = Open_Workbook_To_Read(wanted);
  const QString name = Proposed_Sheet(opened->SheetNames());
  Sheet first = name.isEmpty() ? Sheet() : opened->Read(name);
  book = std::move(opened);
  path = wanted;
  sheet = std::move(first);
  titles = Titles_Of(sheet);
}

QStringList SheetExchange::Sheets() const { return book ? book->SheetNames() : QStringList(); }

void SheetExchange::Read_Sheet(const QString& name) {
  sheet = book->Read(name);
  titles = Titles_Of(sheet);
}

SheetTaken SheetExchange::Take(const SheetComparison& comparison, bool withNewRows) {
  if (!Has_Taken()) {
    const QString kept = folder.filePath(QStringLiteral("vorher.mdb"));
    database->Copy_To(kept);
    before = kept;
  }
  return Take_From_Sheet(*database, *rows, comparison, withNewRows);
}

void SheetExchange::Take_Back() {
  if (!Has_Taken()) return;
  rows.reset();
  database->Close();
  database.reset();
  try {
    Table_File_Copy(before, file);
    before.clear();
  } catch (const Error&) {
    Open();  // as it was left
    throw;
  }
  Open();
}
