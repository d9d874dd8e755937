#include "store/map_log.h"

#include <QFileInfo>
#include <algorithm>

#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"

namespace {
constexpr int menuLines = 10, recordLimit = 21, mapKind = 1, tableKind = 2, textKind = 3, deletedKind = -2;
constexpr int highestOrder = 32000;  // below the 16 bits of the field
using Records = std::vector<LogRecord>;

QString Log_File() { return Program_File(QStringLiteral("Map.log")); }
QString New_Log_File() { return Program_File(QStringLiteral("Map.bak")); }
QString Old_Log_File() { return Program_File(QStringLiteral("Map_old.log")); }

QString Free_Aside_Name() {
  QString name = Program_File(QStringLiteral("Map_alt.log"));
  for (int i = 1; !Find_File(name).isEmpty(); ++i) name = Program_File(QStringLiteral("Map_alt_%1.log").arg(i));
  return name;
}

// The damaged log is kept: somebody may still read the paths in it.
void Put_Damaged_Aside() {
  const QString aside = Free_Aside_Name();
  QString text = QStringLiteral(
      "Diese Datei ist wahrscheinlich beschädigt\n"
      "Bitte benennen Sie die Datei um z.B. in Map_alt.log");
  try {
    File_Rename(Log_File(), aside);
    text += QStringLiteral("\n\n") + Log_File() + QStringLiteral("\nheißt jetzt\n") + aside +
            QStringLiteral("\nDie Listen der letzten Dateien beginnen neu.");
  } catch (const Error& error) {
    text += QStringLiteral("\n\n") + Log_File() + u'\n' + error.text;
    Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Fehler"));
    throw;  // nothing may be written over it
  }
  Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Fehler"));
}

// A rewriting that was cut off between its two renames is finished first. Raises what the file raises.
Records Load_Records() {
  if (!File_Exists(Log_File()) && File_Exists(New_Log_File())) File_Rename(New_Log_File(), Log_File());
  if (!File_Exists(Log_File())) return {};
  Records records;
  if (Decode_Log(Read_Bytes(Log_File()), records)) return records;
  Put_Damaged_Aside();
  return {};
}

void Save_Records(const Records& records) { Replace_File(Log_File(), Encode_Log(records)); }

void Show_Failure(const Error& error) {
  if (error.number == errors::noPermission) return Show_No_Access(Log_File());
  Message_Box(QStringLiteral("Error: %1 ").arg(error.number) + error.text + u'\n' + Log_File(), MsgButtons::Ok,
              MsgIcon::Warning, QStringLiteral("Fehler"));
}

int Live_Count(const Records& records) {
  return static_cast<int>(
      std::count_if(records.begin(), records.end(), [](const LogRecord& r) { return r.Kind != deletedKind; }));
}

int Highest_Order(const Records& records, int kind) {
  int highest = 0;
  for (const LogRecord& record : records)
    if (record.Kind == kind) highest = std::max(highest, record.Order);
  return highest;
}

// The records of a kind in the order of their list. Maps and texts: lowest number first. Tables: highest first.
std::vector<size_t> In_Order(const Records& records, int kind, int mapNo = 0) {
  std::vector<size_t> found;
  for (size_t i = 0; i < records.size(); ++i)
    if (records[i].Kind == kind && (kind != tableKind || records[i].MapNo == mapNo)) found.push_back(i);
  std::stable_sort(found.begin(), found.end(), [&](size_t a, size_t b) {
    return kind == tableKind ? records[a].Order > records[b].Order : records[a].Order < records[b].Order;
  });
  return found;
}

// Numbers a list of maps or texts 1, 2, 3, ...; the tables follow their map.
void Renumber(Records& records, int kind) {
  const std::vector<size_t> list = In_Order(records, kind);
  std::vector<std::pair<int, int>> moves;
  int next = 0;
  for (const size_t i : list) {
    moves.emplace_back(records[i].Order, ++next);
    records[i].Order = next;
  }
  if (kind != mapKind) return;
  for (LogRecord& record : records) {
    if (record.Kind != tableKind) continue;
    const auto move = std::find_if(moves.begin(), moves.end(), [&](const auto& m) { return m.first == record.MapNo; });
    record.MapNo = move == moves.end() ? 0 : move->second;  // 0: its map is no longer listed
  }
}

void Renumber_Tables(Records& records) {
  std::vector<size_t> tables;
  for (size_t i = 0; i < records.size(); ++i)
    if (records[i].Kind == tableKind) tables.push_back(i);
  std::stable_sort(tables.begin(), tables.end(),
                   [&](size_t a, size_t b) { return records[a].Order < records[b].Order; });
  int next = 0;
  for (const size_t i : tables) records[i].Order = ++next;
}

void Put_In_Slot(Records& records, const LogRecord& record) {
  const auto free =
      std::find_if(records.begin(), records.end(), [](const LogRecord& r) { return r.Kind == deletedKind; });
  if (free != records.end())
    *free = record;
  else
    records.push_back(record);
}

LogRecord* Find_Record(Records& records, const QString& path, int kind, int mapNo = 0) {
  const QString stored = Stored_Path(path);
  const auto found = std::find_if(records.begin(), records.end(), [&](const LogRecord& record) {
    return record.Kind == kind && (kind != tableKind || record.MapNo == mapNo) && record.Path == stored;
  });
  return found == records.end() ? nullptr : &*found;
}

// A map or a text on top of its list. Until it is numbered it has a number that no other record holds.
void Put_On_Top(Records& records, const QString& path, int kind) {
  constexpr int onTop = -1;
  if (LogRecord* record = Find_Record(records, path, kind)) {
    if (kind == mapKind)
      for (LogRecord& table : records)
        if (table.Kind == tableKind && table.MapNo == record->Order) table.MapNo = onTop;
    record->Order = onTop;
  } else {
    Put_In_Slot(records, {kind, onTop, 0, Stored_Path(path)});
  }
  Renumber(records, kind);
}

// A table on top of the tables of the open map.
void Put_Table_On_Top(Records& records, const QString& path) {
  if (!Find_Record(records, MapFile, mapKind)) Put_On_Top(records, MapFile, mapKind);
  const int mapNo = Find_Record(records, MapFile, mapKind)->Order;
  if (Highest_Order(records, tableKind) >= highestOrder) Renumber_Tables(records);
  const int order = Highest_Order(records, tableKind) + 1;
  if (LogRecord* record = Find_Record(records, path, tableKind, mapNo))
    record->Order = order;
  else
    Put_In_Slot(records, {tableKind, order, mapNo, Stored_Path(path)});
}

bool Is_Network_Path(const QString& path) {
  return path.contains(QLatin1String("\\\\")) || path.startsWith(QLatin1String("//"));
}

Records Compressed(const Records& records) {
  Records kept;
  int mapNo = 0;
  for (const size_t i : In_Order(records, mapKind)) {
    const LogRecord& map = records[i];
    if (mapNo == menuLines || Is_Network_Path(map.Path) || !File_Exists(map.Path)) continue;
    kept.push_back({mapKind, ++mapNo, 0, map.Path});
    for (const size_t t : In_Order(records, tableKind, map.Order))
      if (File_Exists(records[t].Path)) kept.push_back({tableKind, records[t].Order, mapNo, records[t].Path});
  }
  int text = 0;
  for (const size_t i : In_Order(records, textKind))
    if (text < menuLines && File_Exists(records[i].Path)) kept.push_back({textKind, ++text, 0, records[i].Path});
  return kept;
}

// Three names, so that at every moment a whole log is there.
void Rewrite(const Records& records) {
  Kill_Quietly(New_Log_File());
  Replace_File(New_Log_File(), Encode_Log(Compressed(records)));
  Kill_Quietly(Old_Log_File());
  if (File_Exists(Log_File())) File_Rename(Log_File(), Old_Log_File());
  File_Rename(New_Log_File(), Log_File());
}

void Add_Demo(Records& records) {
  const QString folder = Program_File(QStringLiteral("Beispiele/"));
  const QString map = folder + QStringLiteral("Karte.bmp");
  int mapNo = Highest_Order(records, mapKind) + 1;
  if (const LogRecord* known = Find_Record(records, map, mapKind))
    mapNo = known->Order;
  else
    Put_In_Slot(records, {mapKind, mapNo, 0, Stored_Path(map)});
  const QStringList tables = {QStringLiteral("Demo_1_Test.MDB"), QStringLiteral("Demo_2_Übersicht.MDB"),
                              QStringLiteral("Demo_3_Eintrag_bearbeiten.MDB"), QStringLiteral("Demo_4_Text_Symbol.MDB"),
                              QStringLiteral("Demo_5_Text_justieren.MDB")};
  int order = static_cast<int>(tables.size());
  for (const QString& table : tables) {
    if (!Find_Record(records, folder + table, tableKind, mapNo))
      Put_In_Slot(records, {tableKind, order, mapNo, Stored_Path(folder + table)});
    --order;
  }
}

// The list of an earlier version: "Map:" lines, each followed by the tables of the map.
void Take_Up_Tables_Ini(Records& records) {
  constexpr int maximumNames = 100;
  const QString path = Program_File(QStringLiteral("Tables.ini"));
  if (!File_Exists(path)) return;
  int names = 0, mapNo = 0;
  QString mapName;
  for (const QString& line : Read_Lines(path)) {
    if (names >= maximumNames) break;
    if (line.contains(QLatin1String("\\\\"))) continue;
    if (line.startsWith(QLatin1String("Map:"))) {
      const QString map = Find_File(line.mid(4).trimmed());
      mapNo = 0;
      if (map.isEmpty() || !QFileInfo(map).isFile()) continue;
      mapName = QFileInfo(map).completeBaseName();
      if (const LogRecord* known = Find_Record(records, map, mapKind)) {
        mapNo = known->Order;
        continue;
      }
      mapNo = Highest_Order(records, mapKind) + 1;
      Put_In_Slot(records, {mapKind, mapNo, 0, Stored_Path(map)});
      ++names;
    } else if (mapNo > 0 && line.trimmed().endsWith(QLatin1String(".MDB"), Qt::CaseInsensitive)) {
      const QString table = Find_File(line.trimmed());
      if (table.isEmpty() || !QFileInfo(table).fileName().startsWith(mapName, Qt::CaseInsensitive)) continue;
      if (Find_Record(records, table, tableKind, mapNo)) continue;
      Put_In_Slot(records, {tableKind, Highest_Order(records, tableKind) + 1, mapNo, Stored_Path(table)});
      ++names;
    }
  }
}

// What the menus show. A start in a folder that cannot be written still has its lists.
Records Records_For_Menus() {
  Records records;
  try {
    records = Load_Records();
  } catch (const Error&) {
    return {};
  }
  if (Live_Count(records) >= 2) return records;
  Add_Demo(records);
  try {
    Take_Up_Tables_Ini(records);
    Save_Records(records);
  } catch (const Error&) {
    // It is tried again at the next start.
  }
  return records;
}

void Fill_Menu(const QString& list, const QString& placeholder, const std::vector<std::pair<QString, QString>>& lines) {
  for (int i = 1; i <= menuLines; ++i) {
    MenuState& menu = Menu(list, i);
    const bool used = static_cast<size_t>(i) <= lines.size();
    menu.Caption = used ? lines[static_cast<size_t>(i - 1)].first : placeholder;
    menu.Tag = used ? lines[static_cast<size_t>(i - 1)].second : QString();
    menu.Visible = used;
    menu.Enabled = used;
  }
}

std::vector<std::pair<QString, QString>> Lines_Of(Records& records, int kind) {
  std::vector<std::pair<QString, QString>> lines;
  int mapNo = -1;
  if (kind == tableKind) {
    const LogRecord* map = MapFile.isEmpty() ? nullptr : Find_Record(records, MapFile, mapKind);
    if (map) mapNo = map->Order;
  }
  for (const size_t i : In_Order(records, kind, mapNo)) {
    const QString& path = records[i].Path;
    if (kind == tableKind && !TableFile.isEmpty() && path == TableFile) continue;  // it is the line of its own
    if (lines.size() < menuLines && !Is_Cut_Path(path)) lines.emplace_back(path, path);
  }
  if (kind == tableKind && !TableFile.isEmpty() && lines.size() < menuLines)
    lines.emplace_back(QLatin1String("Workfile: ") + TableFile, TableFile);
  return lines;
}
}  // namespace

std::vector<LogRecord> Read_Log_Records() {
  try {
    return Load_Records();
  } catch (const Error&) {
    return {};
  }
}

void Read_Log(int kind) {
  Records records = Records_For_Menus();
  if (kind == mapKind) Fill_Menu(QStringLiteral("mnuMapFile"), QStringLiteral("MapFile"), Lines_Of(records, kind));
  if (kind == tableKind) Fill_Menu(QStringLiteral("mnuOverlay"), {}, Lines_Of(records, kind));
  if (kind == textKind) Fill_Menu(QStringLiteral("mnuRecentFile"), {}, Lines_Of(records, kind));
  events.StateChanged.Emit();
}

void Write_Log(const QString& path, int kind) {
  if (path == QLatin1String("MapBak")) return Compress_Log();
  if (kind == deletedKind) return Delete_From_Log(path);
  const bool isKnownKind = kind == mapKind || kind == textKind || (kind == tableKind && !MapFile.isEmpty());
  if (path.isEmpty() || !isKnownKind) return;
  try {
    Records records = Load_Records();
    const QString full = QFileInfo(Clean_Path(path)).absoluteFilePath();
    if (kind == tableKind)
      Put_Table_On_Top(records, full);
    else
      Put_On_Top(records, full, kind);
    if (records.size() >= recordLimit)
      Rewrite(records);
    else
      Save_Records(records);
  } catch (const Error& error) {
    Show_Failure(error);
  }
}

void Delete_From_Log(const QString& path) {
  try {
    const QString clean = Clean_Path(path);
    Records records = Load_Records();
    if (const LogRecord* map = Find_Record(records, clean, mapKind)) {
      const int mapNo = map->Order;
      for (LogRecord& record : records)
        if (&record == map || (record.Kind == tableKind && record.MapNo == mapNo)) record.Kind = deletedKind;
      Renumber(records, mapKind);
      return Save_Records(records);
    }
    if (dbEntries && clean == TableFile) Raise(errors::noPermission);
    if (const QString found = Find_File(clean); clean.endsWith(QLatin1String(".MDB"), Qt::CaseInsensitive)) {
      if (!found.isEmpty()) Table_File_Delete(found);
    } else if (!found.isEmpty()) {
      Kill(found);
    }
    Kill_Quietly(clean.left(clean.lastIndexOf(u'.')) + QLatin1String(".ldb"));
    const QString stored = Stored_Path(clean);
    for (LogRecord& record : records)
      if (record.Path == stored) record.Kind = deletedKind;
    Renumber(records, textKind);
    Save_Records(records);
  } catch (const Error& error) {
    Show_Failure(error);
  }
}

void Compress_Log() {
  try {
    const Records records = Load_Records();
    if (records.size() >= 2) Rewrite(records);
  } catch (const Error& error) {
    Show_Failure(error);
  }
}
