#include <QFileInfo>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/table_file_inner.h"
#include "store/table_file_texts.h"

// Names and copies beside a table. Nothing here overwrites a file that is not replaced as a whole.
namespace table_file {

QString Without_Ending(const QString& path) {
  return path.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive) ? path.chopped(4) : path;
}

QString Cut_At_First_Point(const QString& path) {
  const qsizetype name = path.lastIndexOf(u'/') + 1;
  const qsizetype point = path.indexOf(u'.', name);
  return point < 0 ? path : path.left(point);
}

bool Same_Name(const QString& path, const QString& other) {
  return Clean_Path(path).compare(Clean_Path(other), Qt::CaseInsensitive) == 0;
}

QString Free_Name(const QString& base, const QString& ending) {
  const qsizetype point = ending.lastIndexOf(u'.');
  QString name = base + ending;
  for (int number = 1; File_Exists(name); ++number)
    name = base + ending.left(point) + u'_' + QString::number(number) + ending.mid(point);
  return name;
}

QString Free_Aside_Name(const QString& table, const QString& ending) {
  const QString base = Without_Ending(table);
  const QString wanted = base + ending;
  if (File_Exists(wanted)) File_Rename(wanted, Free_Name(base, ending));
  return wanted;
}

QString Put_Aside(const QString& table, const QString& ending) {
  const QString name = Free_Aside_Name(table, ending);
  Table_File_Rename(table, name);
  return name;
}

void Compact_Over(const QString& source, const QString& target) {
  if (!File_Exists(target)) {
    CompactDatabase(source, target);
    return;
  }
  const QString aside = Aside_Name(target);
  try {
    CompactDatabase(source, aside);
    Table_File_Copy(aside, target);
  } catch (...) {
    Kill_Quietly(aside);
    throw;
  }
  Kill_Quietly(aside);
}

bool Is_Access_Error(const Error& error) {
  return error.number == errors::noPermission || error.number == errors::databaseAccess;
}

void Report_Copy_Error(const QString& target, const Error& error) {
  if (Is_Access_Error(error)) {
    Show_No_Access(target);
    return;
  }
  QString text =
      QStringLiteral("Diese Datei konnte nicht geschrieben werden:\n") + target + QStringLiteral("\n\n") + error.text;
  if (File_Exists(target)) text += QStringLiteral("\n\nIhr bisheriger Inhalt blieb erhalten.");
  if (!Stands_Away() && File_Exists(TableFile))
    text += QStringLiteral("\nDie Karteneinträge sind vollständig in:\n") + TableFile;
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, table_texts::saveTitle);
}

QString Table_Fault(const QString& path) {
  try {
    const auto database = Workspace::OpenDatabase(path, {.readOnly = true});
    if (!database->HasTable(QStringLiteral("MapData"))) return QStringLiteral("Die Tabelle MapData fehlt.");
    const auto rows = database->OpenRecordset(QStringLiteral("MapData"));
    const std::vector<FieldInfo>& fields = rows->Fields();
    if (fields.size() < static_cast<size_t>(column::fixedCount) ||
        fields[0].name.compare(QLatin1String("ID"), Qt::CaseInsensitive) != 0 ||
        fields[1].name.compare(QLatin1String("Eintrag"), Qt::CaseInsensitive) != 0) {
      return QStringLiteral("Die Spalten der Tabelle MapData stimmen nicht.");
    }
    return {};
  } catch (const Error& error) {
    return Error_Text(error);
  }
}

}  // namespace table_file

QString Free_Backup_Name(const QString& table) {
  return table_file::Free_Name(table_file::Without_Ending(table), QStringLiteral("_BAK.MDB"));
}

void Delete_Lock_Files() {
  QStringList found;
  if (!Tbl.DBGrid1.Caption.isEmpty()) {
    QString name = Tbl.DBGrid1.Caption, folder;
    Split_Path(name, folder);
    found = Find_Files(folder, QStringLiteral("*.ldb"));
  }
  if (!TableFile.isEmpty()) found << table_file::Without_Ending(TableFile) + QStringLiteral(".ldb");
  for (const QString& file : found) {
    const bool open = dbEntries && table_file::Same_Name(table_file::Without_Ending(TableFile), file.chopped(4));
    // The lock of another running program is not ours to delete.
    if (!open && Lock_Holder(file.chopped(4) + QStringLiteral(".MDB")).isEmpty()) Kill_Quietly(file);
  }
}
