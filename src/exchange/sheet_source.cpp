#include "exchange/sheet_source.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <array>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/system_fault.h"
#include "store/entry.h"

namespace {

constexpr int mostTries = 10;
constexpr std::array endings = {"", "-wal"};  // what is not yet in the file waits in its log

struct Stamp {
  QDateTime changed;
  qint64 size = 0;
  bool operator==(const Stamp&) const = default;
};

std::array<Stamp, endings.size()> Stamps_Of(const QString& table) {
  std::array<Stamp, endings.size()> stamps;
  for (size_t i = 0; i < endings.size(); ++i) {
    const QFileInfo info(table + QLatin1String(endings[i]));
    if (info.exists()) stamps[i] = {info.lastModified(), info.size()};
  }
  return stamps;
}

// Another program may write between the two files: then they are copied again.
void Copy_As_It_Lies(const QString& table, const QString& target) {
  for (int i = 0; i < mostTries; ++i) {
    const auto before = Stamps_Of(table);
    for (const char* ending : endings) {
      const QString from = table + QLatin1String(ending), to = target + QLatin1String(ending);
      QFile::remove(to);
      if (!QFileInfo::exists(from)) continue;
      if (!QFile::copy(from, to)) Raise(errors::noPermission, QStringLiteral("Die Tabelle kann nicht gelesen werden."));
      QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
    }
    if (Stamps_Of(table) == before) return;
  }
  Raise(errors::fileInUse);
}

}  // namespace

std::unique_ptr<Workbook> Open_Workbook_To_Read(const QString& path) {
  const QString found = Find_File(Clean_Path(path));
  if (found.isEmpty()) Raise(errors::fileNotFound, QStringLiteral("Die Arbeitsmappe wurde nicht gefunden:\n") + path);
  if (const QString strange = Strange_File(found); !strange.isEmpty())
    Raise(workbook_errors::damaged,
          QStringLiteral("Die Arbeitsmappe kann nicht gelesen werden: %1\n%2").arg(strange, found));
  auto book = std::make_unique<Workbook>(found);
  if (!book->AsidePath().isEmpty())
    Raise(
        workbook_errors::damaged,
        QStringLiteral("Die Arbeitsmappe hat das alte Format:\n%1\nBitte öffnen Sie sie in der Tabellenkalkulation und "
                       "speichern Sie sie im Format Excel 2007-365.")
            .arg(found));
  return book;
}

std::unique_ptr<Recordset> Open_Entries(Database& database) {
  const QString name = QStringLiteral("MapData");
  if (!database.HasTable(name)) Raise(errors::databaseDamaged, QStringLiteral("Die Tabelle MapData fehlt."));
  auto rows = database.OpenRecordset(name);
  const auto fixed = MapData_Def().fields;
  bool ours = rows->Fields().size() >= fixed.size();
  for (size_t i = 0; ours && i < fixed.size(); ++i)
    ours = rows->Fields()[i].name.compare(fixed[i].name, Qt::CaseInsensitive) == 0;
  if (!ours) Raise(errors::databaseDamaged, QStringLiteral("Die Spalten der Tabelle MapData stimmen nicht."));
  return rows;
}

TableCopy::TableCopy(const QString& table) {
  const QString found = Find_File(table);
  if (found.isEmpty()) Raise(errors::fileNotFound, QStringLiteral("Die Tabelle wurde nicht gefunden:\n") + table);
  if (!folder.isValid()) Raise(errors::pathNotFound, No_Work_Folder());
  const QString copy = folder.filePath(QStringLiteral("KARTE.MDB"));
  Copy_As_It_Lies(found, copy);
  database = Workspace::OpenDatabase(copy);
  rows = Open_Entries(*database);
}
