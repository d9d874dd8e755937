#include "edit/sql_query.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <utility>

#include "edit/bulk_change.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/anchor.h"
#include "store/file_names.h"
#include "store/sql_translate.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString title = QStringLiteral("SQL-Abfrage");
const QString undoCaption = QStringLiteral("Rückgängig: SQL-Abfrage");
const QString mapData = QStringLiteral("MapData");
constexpr int longestRun = 30'000;     // milliseconds of one statement
constexpr int shortestStatement = 10;  // characters that are worth keeping

QStringList Default_List() {
  return {
      QStringLiteral("Update [MapData] Set Größe = Größe-1 where ID like 'Text*' : "
                     "Größe der Schriftart aller Texteinträge um 1 Punkt vermindern"),
      QStringLiteral("Select * from [MapData] where ID like 'Text*' order by Eintrag : "
                     "Texteinträge alphabetisch ordnen"),
      QStringLiteral("Select * from [MapData] where Eintrag like '*A*' or Typ = 4 or Typ between 20 and 23 or "
                     "Schrift like 'Wingdings*' : Einträge, die 'A' ('a') enthalten, alle Polygone (Typ 4), "
                     "alle Figuren (Typ20-23), alle Sonderzeichen herausfiltern"),
      QStringLiteral("Select * from [MapData] where Xmap < 320 : "
                     "Alle Einträge am linken Kartenrand mit x-Position < 320 (z.b. Legende) herausfiltern"),
      QStringLiteral("Select * from [MapData] where Xmap > 1490 : "
                     "Alle Einträge am rechten Kartenrand mit x-Position > 1490 (z.b. Legende rechts) herausfiltern"),
      QStringLiteral("Delete * from [MapData] where Xmap > 1490 : "
                     "Alle Einträge am rechten Kartenrand mit x-Position > 1490 (z.b. Legende rechts) löschen"),
  };
}

QString List_File() { return Program_File(QStringLiteral("SQL.ini")); }
QString Statement_Of(const QString& text) { return text.section(u':', 0, 0).trimmed(); }
bool Holds(const QString& statement, const char* word) {
  return statement.contains(QLatin1String(word), Qt::CaseInsensitive);
}

void Tell(const QStringList& lines) { Message_Box(lines.join(u'\n'), MsgButtons::Ok, MsgIcon::Warning, title); }
void Tell_Error(const QString& text) { Tell({QStringLiteral("SQL-Fehler."), text}); }
bool Ask(const QStringList& lines) {
  return Message_Box(lines.join(u'\n'), MsgButtons::YesNo, MsgIcon::Warning, title, MsgDefault::Second) ==
         MsgAnswer::Yes;
}

bool Ask_About_Order() {
  return Ask({QStringLiteral("Warnung:"), QStringLiteral("Eine SQL-Abfrage mit 'Order by' oder 'Grouping by'"),
              QStringLiteral("verändert die Reihenfolge der Datensätze."),
              QStringLiteral("Da die Karteneinträge in der Reihenfolge gezeichnet werden"),
              QStringLiteral("wie sie in der Tabelle aufgelistet sind"),
              QStringLiteral("können Einträge nach vorne und andere nach hinten gerückt,"),
              QStringLiteral("bzw. verdeckt werden."), QStringLiteral("Möchten Sie die Abfrage trotzdem fortsetzen?")});
}

// The map's own row --------------------------------------------------------------------------------------------------

// A statement may delete the header row. The table cannot do without it: the next row would be taken for it.
struct KeptHeader {
  qint64 key = 0;
  std::vector<Value> values;
};

KeptHeader Header_Of_Table() {
  const KeepCurrentRow keep;
  KeptHeader header;
  rsEntries->MoveFirst();
  header.key = rsEntries->Key();
  for (int i = 0; i < static_cast<int>(rsEntries->Fields().size()); ++i) header.values.push_back(rsEntries->Raw(i));
  return header;
}

QString Literal(const Value& value) {
  if (const auto* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
  if (const auto* real = std::get_if<double>(&value)) return QString::number(*real, 'g', 17);
  if (const auto* text = std::get_if<QString>(&value))
    return u'\'' + QString(*text).replace(u'\'', QLatin1String("''")) + u'\'';
  return QStringLiteral("NULL");
}

void Put_Header_Back(const KeptHeader& header) {
  if (dbEntries->RowCount(mapData) == 0 || rsEntries->PositionOf(header.key) >= 0) return;
  QStringList values{QString::number(header.key)};
  for (const Value& value : header.values) values.append(Literal(value));
  QStringList columns{QStringLiteral("rowid")};
  for (const FieldInfo& field : rsEntries->Fields()) columns.append(u'"' + field.name + u'"');
  dbEntries->Execute(QStringLiteral("INSERT INTO MapData (%1) VALUES (%2)").arg(columns.join(u','), values.join(u',')));
}

// Inserted rows are brought to what their columns take.
void Fit_New_Rows(const QString& table, qint64 lastKey) {
  for (const TableDef& def : dbEntries->TableDefs()) {
    if (def.name != table) continue;
    QStringList sets;
    for (const FieldInfo& field : def.fields) {
      const QString name = u'"' + field.name + u'"';
      const QString fitted = field.type == FieldType::Integer ? QStringLiteral("fx_short(%1)")
                             : field.type == FieldType::Long  ? QStringLiteral("fx_long(%1)")
                             : field.type == FieldType::Double
                                 ? QStringLiteral("fx_double(%1)")
                                 : QStringLiteral("fx_text(%1, %2)").arg(u"%1").arg(field.size);
      sets.append(name + u'=' + fitted.arg(name));
    }
    dbEntries->Execute(
        QStringLiteral("UPDATE \"%1\" SET %2 WHERE rowid > %3").arg(table, sets.join(u',')).arg(lastKey));
    return;
  }
}

qint64 Last_Key(const QString& table) {
  const auto rows = dbEntries->OpenSnapshot(QStringLiteral("SELECT max(rowid) FROM \"%1\"").arg(table));
  return rows->Eof() ? 0 : rows->Integer(0);
}

// Running ------------------------------------------------------------------------------------------------------------

// While it lives, the statement that runs shows a bar with «Abbrechen» and keeps to its bounds.
class Running {
  bool Is_Stopped(int milliseconds) { return !progress.Advance(milliseconds - std::exchange(shown, milliseconds)); }

  Progress progress{title + QStringLiteral("\nDie Anweisung wird ausgeführt ..."), longestRun};
  int shown = 0;
  TimeLimit limit{*dbEntries, longestRun, {.stopped = [this](int milliseconds) { return Is_Stopped(milliseconds); }}};
};

// One transaction; an error takes all of it back and is raised.
void Execute(const SqlTranslation& statement) {
  In_Transaction([&statement] {
    const Running running;
    const bool adds = statement.kind == SqlKind::Insert, removes = statement.kind == SqlKind::Delete;
    const qint64 last = adds ? Last_Key(statement.table) : 0;
    const KeptHeader header = removes ? Header_Of_Table() : KeptHeader();
    dbEntries->Execute(statement.sql);
    rsEntries->Requery();
    if (adds) Fit_New_Rows(statement.table, last);
    if (removes) Put_Header_Back(header);
    rsEntries->Requery();
    if (removes) Promote_Anchor();
  });
}

// The current row may have gone; a table without any row gets its header by being loaded.
void Show_Result_Of_Run() {
  if (rsEntries->RecordCount() == 0) {
    Close_Table(CloseMode::CloseOnly);
    if (!Load_Table(LoadMode::Reload)) return;
    Tbl.Tag = TableTag::Dirty;
  } else if (!rsEntries->HasRow(Map.CurBookmark)) {
    rsEntries->MoveLast();
    Map.CurBookmark = rsEntries->Bookmark();
  } else {
    rsEntries->SetBookmark(Map.CurBookmark);
  }
  events.CurrentRowChanged.Emit();
  Show_Changed_Entries();
}

void Run_Change(SqlState& sql, const SqlTranslation& statement, bool deletes, int oldCount) {
  if (statement.kind == SqlKind::Select)
    Raise(
        errors::sqlSyntax,
        QStringLiteral("Eine Auswahl kann nicht ausgeführt werden, in der das Wort 'Update' oder 'Delete' vorkommt."));
  Execute(statement);
  const int newCount = rsEntries->RecordCount();
  sql.info = deletes ? QStringLiteral("Anzahl der gelöschten Datensätze = %1").arg(oldCount - newCount)
                     : QStringLiteral("Datensätze in der untenstehenden Tabelle der Einträge wurden geändert.");
  Show_Result_Of_Run();
}

std::unique_ptr<Recordset> Open_Selection(const SqlTranslation& statement) {
  const Running running;
  return statement.ownRows ? dbEntries->OpenRecordset(statement.sql) : dbEntries->OpenSnapshot(statement.sql);
}

bool Run_Select(SqlState& sql, const SqlTranslation& statement, int oldCount) {
  std::unique_ptr<Recordset> rows = Open_Selection(statement);
  const int count = rows->RecordCount();
  if (count == 0) {
    Tell({QStringLiteral("SQL-Fehler:"), QStringLiteral("Anzahl der resultierenden Datensätze = 0"),
          QStringLiteral("Bitte überprüfen Sie die Sql-Abfrage.")});
    return false;
  }
  if (count == oldCount &&
      !Ask({QStringLiteral("Warnung:"), QStringLiteral("Die SQL-Abfrage erzeugt keine Untermenge der Datensätze."),
            QStringLiteral("Die Anzahl der Datensätze (= Karteneinträge) bleibt unverändert: %1").arg(count),
            QStringLiteral("Möchten Sie die Abfrage trotzdem fortsetzen?")}))
    return false;
  sql.info = QStringLiteral("ursprüngliche Anzahl der Datensätze: %1\nAnzahl der ausgewählten Datensätze: %2")
                 .arg(oldCount)
                 .arg(count);
  sql.selection = std::move(rows);
  sql.formerTable = Tbl.DBGrid1.Caption;
  sql.formerTag = Tbl.Tag;
  Tbl.Tag = TableTag::Dirty;
  Name_User_Table(Sql_Table_Name(Tbl.DBGrid1.Caption));
  return true;
}

bool Run(SqlState& sql, const QString& statement) {
  const SqlTranslation translated = Translate_Sql(statement, dbEntries->TableDefs());
  if (!translated.Good()) Raise(errors::sqlSyntax, translated.error);
  // A slip of the pen shall not cost the last undo point.
  dbEntries->Check_Statement(translated.sql);
  static const QRegularExpression order(QStringLiteral(R"(\border\s+by\b)"), QRegularExpression::CaseInsensitiveOption);
  if (statement.contains(order) && !Ask_About_Order()) return false;
  const int oldCount = rsEntries->RecordCount();
  const UndoPoint point(undoCaption);
  if (!rsEntries) return false;  // the table could not be loaded again; that was told
  const BusyPointer busy;
  const bool changes = Holds(statement, "update") || translated.kind == SqlKind::Insert;
  const bool deletes = Holds(statement, "delete");
  if (!changes && !deletes) return Run_Select(sql, translated, oldCount);
  Run_Change(sql, translated, !changes, oldCount);
  return true;
}

}  // namespace

QString Sql_Table_Name(const QString& userTable) {
  constexpr int ending = 4;
  static const QString tail = QStringLiteral("_SQL");
  const QString base = userTable.chopped(std::min<qsizetype>(ending, userTable.size()));
  const QString name = base.mid(base.lastIndexOf(u'/') + 1);
  const qsizetype own = name.lastIndexOf(tail, -1, Qt::CaseInsensitive);
  if (own >= 0 && (own + tail.size() == name.size() || name[own + tail.size()] == u'_')) return userTable;
  // A table kept under that name is not written over.
  QString free = base + tail + QStringLiteral(".mdb");
  for (int number = 1; File_Exists(free); ++number)
    free = base + tail + u'_' + QString::number(number) + QStringLiteral(".mdb");
  return free;
}

void Open_Sql(SqlState& sql) {
  sql.selection.reset();
  sql.list = Default_List();
  try {
    if (File_Exists(List_File())) {
      sql.list = Read_Lines(List_File());
      sql.list.removeIf([](const QString& line) { return line.trimmed().isEmpty(); });
    }
  } catch (const Error& error) {
    Tell_Error(error.text);
  }
  sql.info = QStringLiteral(
                 "Anzahl der Datensätze in der untenstehenden Tabelle der Einträge = %1\nBitte wählen Sie ganz oben "
                 "eine passende SQL-Anweisung aus und formen Sie diese ggf. um.")
                 .arg(rsEntries ? rsEntries->RecordCount() : 0);
}

void Close_Sql(SqlState& sql) {
  sql.selection.reset();
  if (!sql.formerTable || Tbl.DBGrid1.Caption.isEmpty()) return;
  Name_User_Table(*std::exchange(sql.formerTable, {}));
  Tbl.Tag = sql.formerTag;
}

bool Apply_Sql(SqlState& sql, const QString& text) {
  Close_Sql(sql);  // the undo point brings the user's own table up to date
  if (!rsEntries || rsEntries->RecordCount() < 2) {
    Tell({QStringLiteral("SQL-Fehler:"), QStringLiteral("Zu wenig Datensätze in der Tabelle.")});
    return false;
  }
  const QString statement = Statement_Of(text);
  if (statement.isEmpty()) {
    Tell({QStringLiteral("SQL-Fehler:"), QStringLiteral("Bitte geben Sie eine Sql-Abfrage in das Textfeld ein.")});
    return false;
  }
  if (!Ready_For_Many()) return false;
  try {
    return Run(sql, statement);
  } catch (const Error& error) {
    if (error.number == errors::workStopped)
      sql.info = error.text;
    else
      Tell_Error(error.text);
    events.TableChanged.Emit();  // windows that found the database busy look again
    return false;
  }
}

// Keeping the selection ----------------------------------------------------------------------------------------------

namespace {

struct Kept {
  std::vector<std::vector<Value>> rows;  // of the columns of the table, in their order
  QSet<QString> tables;                  // vertex tables they draw from, in small letters
};

// All of them before the first is written: the selection shows the same rows.
Kept Read_Selection(Recordset& selection) {
  std::vector<int> columns;
  for (const FieldInfo& field : rsEntries->Fields()) columns.push_back(selection.FieldIndex(field.name));
  Kept kept;
  for (selection.MoveFirst(); !selection.Eof(); selection.MoveNext()) {
    const QString id = selection.Text(columns[column::ID]);
    if (EntryId::StoredIsHeader(id)) continue;
    kept.tables.insert(EntryId::Parse(id).TableName().toLower());
    std::vector<Value>& row = kept.rows.emplace_back();
    for (const int from : columns) row.push_back(selection.Raw(from));
  }
  return kept;
}

void Write_Row(const std::vector<Value>& values) {
  for (int i = 0; i < static_cast<int>(values.size()); ++i) rsEntries->Set(i, values[static_cast<size_t>(i)]);
  rsEntries->Update();
}

// False if the user stopped it.
bool Write_Kept(const Kept& kept) {
  Progress progress(title, rsEntries->RecordCount());
  rsEntries->MoveFirst();
  rsEntries->MoveNext();
  for (const std::vector<Value>& row : kept.rows) {
    const bool there = !rsEntries->Eof();
    there ? rsEntries->Edit() : rsEntries->AddNew();
    Write_Row(row);
    if (there) rsEntries->MoveNext();
    if (!progress.Advance()) return false;
  }
  if (rsEntries->Eof()) return true;
  const qint64 from = rsEntries->Key();
  dbEntries->Execute(QStringLiteral("DELETE FROM MapData WHERE rowid >= %1").arg(from));
  rsEntries->Requery();
  return true;
}

void Drop_Other_Tables(const QSet<QString>& kept) {
  QSet<QString> others;
  for (const TableDef& def : dbEntries->TableDefs())
    if (!kept.contains(def.name.toLower())) others.insert(def.name.toLower());
  Drop_Vertex_Tables(others);
}

bool Write_In_Transaction(const Kept& kept) {
  return In_Transaction([&kept] {
    if (!Write_Kept(kept)) return false;
    Map.MarkOrder.clear();  // the rows have other keys now
    Promote_Anchor();
    Drop_Other_Tables(kept.tables);
    return true;
  });
}

}  // namespace

bool Take_Sql(SqlState& sql) {
  try {
    const Kept kept = sql.selection && rsEntries ? Read_Selection(*sql.selection) : Kept();
    if (kept.rows.empty()) {
      Tell({QStringLiteral("SQL-Fehler:"), QStringLiteral("Zu wenig Datensätze in der Sql-Tabelle.")});
      return false;
    }
    if (!Ready_For_Many()) return false;
    const BusyPointer busy;
    if (!Write_In_Transaction(kept)) return false;
    sql.selection.reset();
    Undo_Goes_Back_To(*std::exchange(sql.formerTable, {}));
    rsEntries->MoveLast();
    Map.CurBookmark = rsEntries->Bookmark();
    Save_Table(SaveStep::GivenName);
    sql.info =
        QStringLiteral("Die ausgewählten Datensätze bilden jetzt die Tabelle der Einträge: %1").arg(Entry_Count());
    events.CurrentRowChanged.Emit();
    Show_Changed_Entries();
    return true;
  } catch (const Error& error) {
    Tell_Error(error.text);
    return false;
  }
}

// The list -----------------------------------------------------------------------------------------------------------

namespace {
void Write_List(SqlState& sql) {
  QStringList lines = sql.list;
  lines.removeIf([](const QString& line) { return line.size() <= shortestStatement; });
  try {
    Write_Lines(List_File(), lines);
  } catch (const Error& error) {
    Tell_Error(List_File() + u'\n' + error.text);
  }
}
}  // namespace

void Save_Sql_List(SqlState& sql, const QString& text) {
  if (sql.list.contains(text.trimmed())) {
    sql.info = QStringLiteral("Aktuelle SQL-Anweisung ist bereits in der Liste enthalten.");
  } else if (text.trimmed().size() >= shortestStatement) {
    sql.list.append(text.trimmed());
    sql.info = QStringLiteral("Die SQL-Anweisung steht jetzt in der Liste.");
  }
  Write_List(sql);
}

bool Delete_Sql_Line(SqlState& sql, const QString& text) {
  const qsizetype at = sql.list.indexOf(text.trimmed());
  if (at < 0) {
    sql.info = QStringLiteral("SQL-Anweisung in der Auflistung nicht gefunden.");
    return false;
  }
  if (Message_Box(QStringLiteral("Wollen Sie diese SQL-Abfrage wirklich löschen?"), MsgButtons::YesNo,
                  MsgIcon::Question, QStringLiteral("SQL-Abfrage löschen"), MsgDefault::Second) != MsgAnswer::Yes)
    return false;
  sql.list.removeAt(at);
  sql.info = QStringLiteral("SQL-Anweisung gelöscht: ") + text.trimmed();
  Write_List(sql);
  return true;
}
