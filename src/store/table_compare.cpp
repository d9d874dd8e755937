#include <algorithm>

#include "platform/database.h"
#include "platform/files.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/table_file_inner.h"

// Do two table files hold the same entries? The header row alone may differ: it names the file.

namespace {

const QString mapData = QStringLiteral("MapData");

bool Same_Rows(Database& mine, Database& other, const QString& table) {
  const auto left = mine.OpenRecordset(table), right = other.OpenRecordset(table);
  if (left->RecordCount() != right->RecordCount()) return false;
  left->MoveFirst();
  right->MoveFirst();
  for (bool header = table == mapData; !left->Eof(); left->MoveNext(), right->MoveNext(), header = false)
    for (int field = 0; !header && field < static_cast<int>(left->Fields().size()); ++field)
      if (left->Raw(field) != right->Raw(field)) return false;
  return true;
}

bool Same_Entries(Database& mine, Database& other) {
  if (mine.TableDefs().size() != other.TableDefs().size()) return false;
  for (const TableDef& table : mine.TableDefs()) {
    const auto& others = other.TableDefs();
    if (std::find(others.begin(), others.end(), table) == others.end()) return false;
    if (!Same_Rows(mine, other, table.name)) return false;
  }
  return true;
}

// The tables of this map, as far as they are known: those in its list and those beside it.
QStringList Known_Tables() {
  constexpr int lines = 10;
  QStringList paths;
  for (int line = 1; line <= lines; ++line) paths += Menu(QStringLiteral("mnuOverlay"), line).Tag;
  QString name = TableFile, folder;
  Split_Path(name, folder);
  paths += Find_Files(folder, QStringLiteral("*.mdb"));
  paths.removeDuplicates();
  paths.removeIf([](const QString& path) { return table_file::Same_Name(path, TableFile) || !File_Exists(path); });
  return paths;
}

}  // namespace

bool table_file::Stand_In_Another_File() {
  for (const QString& path : Known_Tables()) {
    try {
      if (Same_Entries(*dbEntries, *Workspace::OpenDatabase(path, {.readOnly = true}))) return true;
    } catch (const Error&) {
      // Damaged or in use: it cannot vouch for the entries.
    }
  }
  return false;
}
