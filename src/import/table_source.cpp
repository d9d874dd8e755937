#include "import/table_source.h"

#include <QFileInfo>

#include "platform/files.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/old_table.h"
#include "store/stored_number.h"
#include "store/table_file_inner.h"
#include "store/vertex_table.h"

namespace {

const QString mapData = QStringLiteral("MapData");

bool Is_Somebodys(const QString& path, const QString& source) {
  using table_file::Same_Name;
  if (Same_Name(path, source) || Same_Name(path, TableFile) || Same_Name(path, Tbl.DBGrid1.Caption)) return true;
  for (const QString& picture :
       Find_Files(QFileInfo(path).path(), QFileInfo(path).completeBaseName() + QStringLiteral(".*")))
    for (const char* ending : {"bmp", "jpg", "jpeg", "gif", "png", "wmf"})
      if (QFileInfo(picture).suffix().compare(QLatin1String(ending), Qt::CaseInsensitive) == 0) return true;
  return false;
}

}  // namespace

QString Import_Copy_Name(const QString& source) {
  const QString base = QFileInfo(MapFile).path() + QStringLiteral("/Import");
  QString name = base + QStringLiteral(".MDB");
  for (int number = 1; Is_Somebodys(name, source); ++number) name = base + QStringLiteral("_%1.MDB").arg(number);
  return name;
}

TableSource::TableSource(const QString& path) : file(path), copy(Import_Copy_Name(path)) {
  if (const QString strange = Strange_File(file); !strange.isEmpty())
    Raise(errors::databaseDamaged, file + QStringLiteral(": ") + strange);
  if (File_Exists(copy)) Table_File_Delete(copy);
  if (Is_Old_Table(file)) {
    const OldTableReport report = Convert_Old_Table(file, copy);
    remarks = report.Text();
    counters = report.counters;
  } else {
    CompactDatabase(file, copy);
  }
  try {
    Open();
  } catch (...) {
    rows.reset();
    database.reset();
    Kill_Quietly(copy);
    throw;
  }
}

TableSource::~TableSource() {
  rows.reset();
  database.reset();
  Kill_Quietly(copy);
}

void TableSource::Open() {
  database = Workspace::OpenDatabase(copy);
  if (!database->HasTable(mapData)) Raise(errors::databaseDamaged, QStringLiteral("Die Tabelle MapData fehlt."));
  rows = database->OpenRecordset(mapData);
  QStringList missing;
  const TableDef known = MapData_Def();
  for (size_t i = 0; i < known.fields.size(); ++i) {
    const QString& name = known.fields[i].name;
    if (rows->HasField(name))
      fixed[i] = rows->FieldIndex(name);
    else
      missing << name;
  }
  if (!missing.isEmpty())
    Raise(errors::databaseDamaged,
          QStringLiteral("In der Tabelle MapData fehlen Spalten: ") + missing.join(QStringLiteral(", ")));
  for (; !rows->Eof(); rows->MoveNext()) {
    const bool isHeader = EntryId::StoredIsHeader(rows->Text(fixed[column::ID]));
    if (!isHeader) ++count;
    if (!isHeader || rows->Position() > 0) continue;
    header = HeaderRow::FromEntry(Read_Entry(*rows, fixed, Beyond16::Nearest));
  }
}

std::vector<qint64> TableSource::Entries() {
  std::vector<qint64> keys;
  keys.reserve(static_cast<size_t>(count));
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext())
    if (!EntryId::StoredIsHeader(rows->Text(fixed[column::ID]))) keys.push_back(rows->Key());
  return keys;
}

bool TableSource::Go_To(qint64 key) {
  const int position = rows->PositionOf(key);
  if (position < 0) return false;
  if (position != rows->Position()) rows->MoveTo(position);
  return true;
}

int TableSource::Number() const { return rows->Position(); }
QString TableSource::Text_Of() const { return rows->Text(Fixed_Column(column::Eintrag)); }

EntryRow TableSource::Entry() const { return Read_Entry(*rows, fixed); }

std::vector<QPoint> TableSource::Vertices(const QString& table) {
  std::vector<QPoint> points;
  const std::vector<Database::PointRow>* stored = nullptr;
  try {
    stored = table.isEmpty() ? nullptr : database->Points(table);
  } catch (const Error&) {
    return points;  // its columns are others, or its pages are damaged
  }
  if (!stored) return points;
  points.reserve(stored->size());
  for (const Database::PointRow& row : *stored) {
    if (row.x < stopLimit) break;
    points.emplace_back(Stored_Number(row.x), Stored_Number(row.y));
  }
  return points;
}
