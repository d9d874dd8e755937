#include "store/versions.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <algorithm>

#include "platform/files.h"
#include "platform/message_box.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/file_names.h"
#include "store/history.h"
#include "store/table_file.h"
#include "store/table_file_inner.h"
#include "store/transaction.h"
#include "store/vertex_table.h"

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

bool Holds_Same(const QString& file) {
  try {
    const auto version = Workspace::OpenDatabase(file, {.readOnly = true});
    return Journal::State_Of(*version) != 0 && Journal::State_Of(*version) == Journal::State_Of(*dbEntries);
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

// Differences --------------------------------------------------------------------------------------------------------

namespace {

// A version that is open, with its rows.
struct Opened {
  explicit Opened(const TableVersion& version)
      : database(Workspace::OpenDatabase(version.file, {.readOnly = true})),
        rows(database->OpenRecordset(QStringLiteral("MapData"))) {}
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;

  EntryRow Row(qint64 key) const {
    rows->MoveTo(rows->PositionOf(key));
    return Read_Entry(*rows);
  }
  std::vector<QPoint> Vertices(const QString& table) const {
    std::vector<QPoint> points;
    if (const auto* stored = database->Points(table))
      for (const Database::PointRow& point : *stored) points.emplace_back(point.x, point.y);
    return points;
  }
};

QString Vertex_Table_Of(const EntryRow& row) {
  return EntryType::Parse(row.Typ).HasVertices() ? EntryId::Parse(row.ID).TableName() : QString();
}

std::vector<QPoint> Vertices_Now(const QString& table) {
  std::vector<QPoint> points;
  if (const auto* stored = dbEntries->Points(table))
    for (const Database::PointRow& point : *stored) points.emplace_back(point.x, point.y);
  return points;
}

QString Kind_Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.IsPolygon()) return EntryId::Parse(row.ID).IsLine() ? QStringLiteral("Linie") : QStringLiteral("Fläche");
  if (type.IsFigure()) return QStringLiteral("Figur");
  if (type.IsText()) return QStringLiteral("Text");
  return type.Kind() == EntryKind::Picture ? QStringLiteral("Bild") : EntryId::Parse(row.ID).name;
}

QString Name_Of(const EntryRow& row) {
  return Kind_Of(row) + QStringLiteral(": ") + row.Eintrag.section(u'\n', 0, 0).simplified();
}

}  // namespace

VersionDifferences Differences_To(const TableVersion& version) {
  VersionDifferences all;
  const Opened then(version);
  const KeepCurrentRow keep;
  QSet<qint64> there;
  then.rows->MoveFirst();
  if (!then.rows->Eof()) then.rows->MoveNext();  // the header row is no entry
  for (; !then.rows->Eof(); then.rows->MoveNext()) {
    const qint64 key = then.rows->Key();
    const EntryRow row = Read_Entry(*then.rows);
    const int position = rsEntries->PositionOf(key);
    there.insert(key);
    if (position < 1) {
      all.entries.push_back({key, VersionEntry::Gone, Name_Of(row)});
      continue;
    }
    rsEntries->MoveTo(position);
    const QString table = Vertex_Table_Of(row);
    const bool same = Read_Entry(*rsEntries) == row && (table.isEmpty() || then.Vertices(table) == Vertices_Now(table));
    if (!same) all.entries.push_back({key, VersionEntry::Changed, Name_Of(row)});
  }
  For_Each_Entry([&] { all.added += there.contains(rsEntries->Key()) ? 0 : 1; });
  return all;
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

int Take_Entries(const TableVersion& version, const QList<qint64>& keys) {
  const UndoStep step(QStringLiteral("Frühere Einträge übernehmen"));
  const Opened then(version);
  int taken = 0;
  In_Transaction([&] {
    for (const qint64 key : keys) {
      if (then.rows->PositionOf(key) < 1) continue;
      EntryRow row = then.Row(key);
      const QString former = Vertex_Table_Of(row);
      const int position = rsEntries->PositionOf(key);
      if (!former.isEmpty()) {
        const auto points = then.Vertices(former);
        QString table = former;
        // Another entry may bear its number by now.
        if (position < 1 && dbEntries->HasTable(table)) {
          table = EntryType::Parse(row.Typ).IsPolygon()
                      ? New_Poly_Table(EntryId::Parse(row.ID).IsLine() ? QStringLiteral("Linie")
                                                                       : QStringLiteral("Flaeche"))
                      : Next_Figure_ID();
          if (table.isEmpty()) continue;
          EntryId id = EntryId::Parse(row.ID);
          id.name = table;
          id.asStored.clear();
          row.ID = id.ToText();
        }
        Write_Vertices(table, points);
      }
      if (position < 1) {
        Append_Entry(row);
      } else {
        rsEntries->MoveTo(position);
        Update_Entry(row);
      }
      ++taken;
    }
  });
  if (taken > 0) events.TableChanged.Emit();
  return taken;
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
