#include "exchange/exchange_table.h"

#include <QFileInfo>
#include <QSet>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/table_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString exportTitle = QStringLiteral("Karteinträge in eine Trakkor-Datei exportieren"),
              emptyTitle = QStringLiteral("Karteneinträge in eine Trakkor-Datei exportieren"),
              exportExists = QStringLiteral("Datenbank in eine Trakkor-Datei exportieren"),
              importTitle = QStringLiteral("Karteneinträge aus einer Trakkor-Datei importieren"),
              undoCaption = QStringLiteral("Rückgängig: Import"),
              filter = QStringLiteral("Trakkor-Datei (*.tkr)|*.tkr");
constexpr int emptyTable = 5000, tablesOfAKind = 1000, toldRefusals = 10;

const QString exportName = QStringLiteral("Name der Exportdatei:"),
              importName = QStringLiteral("Name der Importdatei:"),
              importAllName = QStringLiteral("Name der Importdatei, alle Objekte:");

FileRequest Name_Request(const QString& title) {
  const QFileInfo table(Tbl.DBGrid1.Caption.isEmpty() ? TableFile : Tbl.DBGrid1.Caption);
  return {.save = title == exportName,
          .title = title,
          .folder = table.path(),
          .name = table.completeBaseName(),
          .defaultExtension = QStringLiteral("tkr"),
          .filter = filter};
}

// The name of a file to be written; "" if the user gave up.
QString Ask_Export_Name() {
  while (const auto path = File_Dialog(Name_Request(exportName))) {
    if (!File_Exists(*path)) return *path;
    const auto answer =
        Message_Box(QStringLiteral("\r\rDiese Datei existiert bereits.\rSoll sie überschrieben werden?"),
                    MsgButtons::YesNo, MsgIcon::Question, exportExists, MsgDefault::Second);
    if (answer == MsgAnswer::Yes) return *path;
  }
  return {};
}

// The name of a file that is there; "" if the user gave up. After either answer the name is asked for again.
QString Ask_Import_Name(const QString& title) {
  while (const auto path = File_Dialog(Name_Request(title))) {
    if (File_Exists(*path)) return Find_File(*path);
    Message_Box(
        QStringLiteral("Diese Datei existiert nicht.\rBitte wählen Sie eine andere Datei mit der Endung *.tkr für "
                       "den Import aus"),
        MsgButtons::YesNo, MsgIcon::Question, importTitle);
  }
  return {};
}

void Tell_Empty(const QString& name) {
  Message_Box(name + QStringLiteral("\rDiese Datei ist leer.\rDer Export dieser Datei wird abgebrochen."),
              MsgButtons::Ok, MsgIcon::Warning, emptyTitle);
}

// Free names for new lines, areas and figures, found by one walk through tables and rows.
class FreeNames {
 public:
  FreeNames() {
    for (const TableDef& table : dbEntries->TableDefs()) taken.insert(table.name.toLower());
    For_Each_Entry([this] { taken.insert(EntryId::Parse(rsEntries->Text(column::ID)).TableName().toLower()); });
  }
  // "" if there is none left; figures have no limit.
  QString Next(const QString& kind) {
    const bool figure = kind == QLatin1String("Figur");
    int& number = last[kind];
    if (number == 0 && figure) number = 1;
    for (; figure || number < tablesOfAKind; ++number) {
      const QString name = kind + QString::number(number);
      if (taken.contains(name.toLower())) continue;
      ++number;
      return name;
    }
    return {};
  }

 private:
  QSet<QString> taken;
  QHash<QString, int> last;
};

// What is cut from an entry's text is told whole.
void Fit_Texts(EntryRow& row, int line, ExchangeTaken& taken) {
  const QString fitting = Cut_Text(row.Eintrag, Tbl.EintragSize);
  if (fitting.size() < row.Eintrag.size()) taken.shortened.push_back({line, row.Eintrag, {}});
  row.Eintrag = fitting;
  row.ID = Cut_Text(row.ID, textColumnWidth);
  row.Schrift = Cut_Text(row.Schrift, textColumnWidth);
}

QString Told_Refusals(const std::vector<ExchangeRefusal>& refused) {
  QStringList lines;
  for (const ExchangeRefusal& one : refused) {
    if (lines.size() == toldRefusals) {
      lines << QStringLiteral("... und %1 weitere Zeilen.").arg(static_cast<int>(refused.size()) - toldRefusals);
      break;
    }
    lines << QStringLiteral("Zeile %1: %2").arg(one.line).arg(one.reason);
  }
  return lines.join(u'\n');
}

void Tell_Taken(const ExchangeTaken& taken, const std::vector<ExchangeRefusal>& refused) {
  const int count = taken.entries;
  QString text = count == 1 ? QStringLiteral("1 Eintrag wurde eingelesen.")
                            : QStringLiteral("%1 Einträge wurden eingelesen.").arg(count);
  if (!refused.empty()) text += QStringLiteral("\n\nNicht eingelesen wurden:\n") + Told_Refusals(refused);
  if (!taken.shortened.empty())
    text += QStringLiteral("\n\nAuf die Breite der Spalte gekürzt wurden %1 Texte, der erste in Zeile %2.")
                .arg(taken.shortened.size())
                .arg(taken.shortened.front().line);
  Message_Box(text, MsgButtons::Ok, refused.empty() ? MsgIcon::Information : MsgIcon::Warning, importTitle);
}

void Tell_Import_Error() {
  Message_Box(QStringLiteral("CSV-Fehler in Module 15."), MsgButtons::OkCancel, MsgIcon::Warning, importTitle);
}

using Reader = std::function<ExchangeContent(const QStringList&, const std::function<bool()>&)>;

void Import(const QString& title, const Reader& read) {
  const QString path = Ask_Import_Name(title);
  if (path.isEmpty() || !rsEntries || (Entry_In_Hand() && !End_Entry())) return;
  try {
    const QStringList lines = Read_Lines(path);
    bool stopped = false;
    Progress progress(importTitle + QStringLiteral("\nDie Datei wird eingelesen."), 2 * static_cast<int>(lines.size()));
    const auto goOn = [&] { return !(stopped = stopped || !progress.Advance()); };
    ExchangeContent content = read(lines, goOn);
    if (stopped) return;
    if (content.empty) return Tell_Empty(QFileInfo(path).fileName());
    if (content.ended) Tell_Import_Error();
    ExchangeTaken taken;
    if (!content.entries.empty()) {
      const BusyPointer busy;
      const UndoPoint point(undoCaption);
      taken = Append_Exchange_Entries(content.entries, goOn);
      Show_Changed_Entries();
    }
    if (stopped) return;
    content.refused.insert(content.refused.end(), taken.refused.begin(), taken.refused.end());
    Tell_Taken(taken, content.refused);
  } catch (const Error& error) {
    Message_Box(Error_Text(error) + QStringLiteral("\rCSV-Fehler in Module 15."), MsgButtons::OkCancel,
                MsgIcon::Critical, importTitle);
  }
}

}  // namespace

ExchangeTable Read_Exchange_Table(const QString& file) {
  if (Entry_Count() < 1) Raise(emptyTable);
  ExchangeTable table{MapFile, file, TableFile, {}, {}};
  table.rows.reserve(static_cast<size_t>(Entry_Count()));
  For_Each_Entry([&table] { table.rows.push_back(Read_Entry(*rsEntries)); });
  table.vertices = [](const QString& name) { return Load_Vertices(name); };
  return table;
}

ExchangeTaken Append_Exchange_Entries(const std::vector<ExchangeEntry>& entries, const std::function<bool()>& goOn) {
  ExchangeTaken taken;
  const bool stored = In_Transaction([&] {
    FreeNames names;
    for (const ExchangeEntry& entry : entries) {
      if (goOn && !goOn()) return false;
      EntryRow row = entry.row;
      Fit_Texts(row, entry.line, taken);
      const EntryType type = EntryType::Parse(row.Typ);
      if (type.IsFigure() || !entry.vertices.empty()) {
        EntryId id = EntryId::Parse(row.ID);
        id.name = names.Next(id.name);
        if (id.name.isEmpty()) {
          taken.refused.push_back(
              {entry.line, row.Eintrag, QStringLiteral("Eine Tabelle hat höchstens 1000 Linien und 1000 Flächen.")});
          continue;
        }
        row.ID = id.ToText();
        if (!entry.vertices.empty()) Write_Vertices(id.TableName(), entry.vertices);
      }
      Append_Entry(row);
      ++taken.entries;
    }
    return true;
  });
  if (!stored) taken.entries = 0;
  return taken;
}

void Export_Trakkor() {
  const QString path = Ask_Export_Name();
  if (path.isEmpty()) return;
  try {
    const BusyPointer busy;
    const ExchangeTable table = Read_Exchange_Table(path);
    Progress progress(exportTitle + QStringLiteral("\nDie Einträge werden geschrieben."),
                      static_cast<int>(table.rows.size()));
    const auto text = Exchange_Lines(table, [&progress] { return progress.Advance(); });
    if (!text) return;
    Write_Lines(path, text->lines);
  } catch (const Error& error) {
    if (error.number == emptyTable) return Tell_Empty(QFileInfo(Tbl.DBGrid1.Caption).fileName());
    Message_Box(Error_Text(error) + QStringLiteral("\rFehler 173 in Module 15."), MsgButtons::OkCancel,
                MsgIcon::Critical, exportTitle);
    return;
  }
  Message_Box(QStringLiteral("Die Trakkor Exportdatei\r%1\rwurde geschrieben.").arg(path), MsgButtons::Ok,
              MsgIcon::Information, exportTitle);
}

void Import_Trakkor() {
  Import(importName,
         [](const QStringList& lines, const std::function<bool()>&) { return Read_Exchange_Entries(lines); });
}

void Import_All_Trakkor() { Import(importAllName, Read_Exchange_All); }
