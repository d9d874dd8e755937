#include "store/versions.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <vector>

#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/history.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"

namespace {

const QString pattern = QStringLiteral("yyyy-MM-dd_HHmmss");
constexpr int lastOnes = 10, endingLength = 4;

QString Folder() { return History_Folder(TableFile); }

// Of the open table, the newest first.
QFileInfoList Files() {
  const QDir folder(Folder());
  QFileInfoList files = folder.entryInfoList({QStringLiteral("*.MDB")}, QDir::Files, QDir::Name | QDir::Reversed);
  erase_if(files,
           [](const QFileInfo& file) { return !QDateTime::fromString(file.completeBaseName(), pattern).isValid(); });
  return files;
}

QDateTime Time_Of(const QFileInfo& file) { return QDateTime::fromString(file.completeBaseName(), pattern); }

// Table by table; where table and map lie does not count.
bool Same_Rows(Database& one, Database& other, const QString& table) {
  const auto rows = one.OpenRecordset(table), others = other.OpenRecordset(table);
  const bool main = table == QLatin1String("MapData");
  const auto columns = static_cast<int>(rows->Fields().size());
  for (; !rows->Eof() && !others->Eof(); rows->MoveNext(), others->MoveNext()) {
    const bool header = main && rows->Position() == 0;
    if (rows->Key() != others->Key()) return false;
    for (int i = 0; i < columns; ++i)
      if (!(header && (i == column::Eintrag || i == column::Schrift)) && rows->Raw(i) != others->Raw(i)) return false;
  }
  return rows->Eof() && others->Eof();
}

// A table that was never changed here has no number, and one that was changed and taken back may have another one.
bool Same_Content(Database& one, Database& other) {
  constexpr int longest = 50'000;  // rows for whose sake the opening of a map may wait
  const QString mapData = QStringLiteral("MapData");
  const auto names = [](const TableDef& a, const TableDef& b) { return a.name < b.name; };
  std::vector<TableDef> tables = one.TableDefs(), others = other.TableDefs();
  std::sort(tables.begin(), tables.end(), names);
  std::sort(others.begin(), others.end(), names);
  const int rows = one.RowCount(mapData);
  return tables == others && rows <= longest && rows == other.RowCount(mapData) &&
         std::all_of(tables.begin(), tables.end(),
                     [&](const TableDef& table) { return Same_Rows(one, other, table.name); });
}

bool Holds_Same(const QString& file) {
  try {
    const auto version = Workspace::OpenDatabase(file, {.readOnly = true});
    return Holds_Same_As_Now(*version) || Same_Content(*version, *dbEntries);
  } catch (const Error&) {
    return false;
  }
}

void Thin_Out() {
  const QFileInfoList files = Files();
  QList<QDateTime> times;
  for (const QFileInfo& file : files) times += Time_Of(file);
  const QList<int> drop = Versions_To_Drop(times, QDateTime::currentDateTime());
  qint64 bytes = 0;
  const qint64 room = qint64{Version_Room()} << 20;
  for (int i = 0; i < files.size(); ++i) {
    bytes += drop.contains(i) ? 0 : files[i].size();
    if (drop.contains(i) || bytes > room) QFile::remove(files[i].filePath());
  }
}

}  // namespace

QList<int> Versions_To_Drop(const QList<QDateTime>& times, const QDateTime& now) {
  QList<int> drop;
  QSet<QString> taken;
  for (int i = lastOnes; i < times.size(); ++i) {
    const QDateTime& when = times[i];
    QString span;
    if (when >= now.addMonths(-1))
      span = when.toString(QStringLiteral("yyyy-MM-dd"));
    else if (when >= now.addYears(-1))
      span = when.toString(QStringLiteral("yyyy-MM"));
    if (span.isEmpty() || taken.contains(span))
      drop += i;
    else
      taken += span;
  }
  return drop;
}

bool Holds_Same_As_Now(Database& version) {
  const quint32 state = Journal::State_Of(version);
  return state != 0 && state == Journal::State_Of(*dbEntries);
}

void Keep_Version() {
  if (!dbEntries || Entry_Count() < 1 || Version_Room() == 0) return;
  try {
    const QFileInfoList files = Files();
    if (!files.isEmpty() && Holds_Same(files.front().filePath())) return;
    QDir().mkpath(Folder());
    dbEntries->Copy_To(Folder() + u'/' + QDateTime::currentDateTime().toString(pattern) + QStringLiteral(".MDB"));
    Thin_Out();
  } catch (const Error&) {
    // The table itself is safe.
  }
}

QList<TableVersion> Table_Versions() {
  QList<TableVersion> versions;
  for (const QFileInfo& file : Files()) {
    try {
      const auto database = Workspace::OpenDatabase(file.filePath(), {.readOnly = true});
      versions += {file.filePath(), Time_Of(file), std::max(0, database->RowCount(QStringLiteral("MapData")) - 1)};
    } catch (const Error&) {
      // It is of no use to anybody.
    }
  }
  return versions;
}

// Taking back --------------------------------------------------------------------------------------------------------

bool Take_Version(const TableVersion& version) {
  if (!Table_In_Place()) return false;
  const BusyPointer busy;
  table_file::Close_Quietly();
  bool written = true;
  try {
    Keep_Former_Table(QStringLiteral("Stand vom ") + version.when.toString(QStringLiteral("dd.MM.yyyy HH:mm")));
    Table_File_Copy(version.file, TableFile);
  } catch (const Error& error) {
    table_file::Report_Copy_Error(TableFile, error);
    written = false;
  }
  if (!Load_Table(LoadMode::Reload)) return false;
  if (written) Tbl.Tag = TableTag::Dirty;
  return written;
}

// Room ---------------------------------------------------------------------------------------------------------------

namespace {
QString Room_File() { return Program_File(QStringLiteral("Verlauf/Platz.txt")); }
}  // namespace

int Version_Room() {
  if (!File_Exists(Room_File())) return defaultVersionRoom;
  try {
    const QStringList lines = Read_Lines(Room_File());
    bool isNumber = false;
    const int room = lines.isEmpty() ? 0 : lines.front().toInt(&isNumber);
    return isNumber ? std::clamp(room, 0, mostVersionRoom) : defaultVersionRoom;
  } catch (const Error&) {
    return defaultVersionRoom;
  }
}

void Set_Version_Room(int megabytes) {
  if (megabytes == Version_Room()) return;
  try {
    QDir().mkpath(Program_File(QStringLiteral("Verlauf")));
    Write_Lines(Room_File(), {QString::number(std::clamp(megabytes, 0, mostVersionRoom))});
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + u'\n' + Room_File(), MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Fehler"));
  }
}
