#include "import/csv_import.h"

#include <QFileInfo>
#include <utility>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "import/csv_place.h"
#include "import/placing_question.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/progress.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "state/step.h"
#include "state/table_state.h"
#include "store/entry.h"
#include "store/table_file.h"

namespace {

const QString importTitle = QStringLiteral("Import");
const QString helpPage = QStringLiteral("Excel-Import.html");
const QString undoCaption = QStringLiteral("Rückgängig: CSV - Import");

// One run from the first line to the last.
class CsvRun {
 public:
  CsvRun(const CsvTable& csvTable, QPoint step, PlacingWay way)
      : table(csvTable),
        reader(csvTable),
        taken(step, {Coord.MapWidthPx, Coord.MapHeightPx}),
        progress(QStringLiteral("CSV - Import"), 2 * static_cast<int>(csvTable.CsvLines.size())) {
    taken.Reserve(static_cast<int>(table.CsvLines.size()));
    rows.reserve(table.CsvLines.size());
    width = Tbl.EintragSize;
    if (way == PlacingWay::Transformed) placing.emplace(Csv_System(table), Coord, way);
  }
  // First all places, so that no question waits inside the transaction.
  CsvResult Run() {
    for (const CsvLine& line : table.CsvLines) {
      Plan(line);
      if (!result.stopped && !progress.Advance()) result.stopped = true;
      if (result.stopped) break;
    }
    if (!rows.empty()) Write();
    return std::move(result);
  }

 private:
  struct Row {
    QString text;
    QPoint at;
  };

  void Plan(const CsvLine& line) {
    CsvRecord record = reader.Read(line);
    CsvPlace place;
    try {
      place = placing ? Csv_Place_Of(table, *placing, record) : Csv_Place_Of(table, Coord, record);
    } catch (const Error& error) {
      place.reason = Error_Text(error);
      result.refused.push_back({line.number, record.text, place.reason});
      result.stopped = !Csv_Go_On_After(error);
      return;
    }
    if (!place.onMap) return Refuse(line, record.text, place);
    const QPoint free = taken.Take(place.at);
    if (free != place.at) ++result.shifted;
    rows.push_back({Fitting(line, std::move(record.text)), free});
  }

  void Refuse(const CsvLine& line, const QString& text, const CsvPlace& place) {
    result.refused.push_back({line.number, text, place.reason});
    if (place.cancelled) result.stopped = true;
    if (place.cancelled || silent) return;
    MsgRequest request;
    request.text = QStringLiteral("Eintrag: ") + text + QStringLiteral("\n kann nicht importiert werden. \n") +
                   place.reason + (place.outside ? QStringLiteral(" außerhalb der Karte oder Zone!") : QString()) +
                   QStringLiteral("\n Soll diese Meldung weiterhin angezeigt werden?");
    request.buttons = MsgButtons::YesNoCancel;
    request.icon = MsgIcon::Question;
    request.title = importTitle;
    request.helpPage = QStringLiteral("CSV-Import.htm");
    const MsgAnswer answer = Message_Box(request);
    silent = answer == MsgAnswer::No;
    result.stopped = answer == MsgAnswer::Cancel;
  }

  // The column holds `width` characters; what is cut stays readable in the report.
  QString Fitting(const CsvLine& line, QString text) {
    const QString kept = Cut_Text(text, width);
    if (kept.size() == text.size()) return text;
    ++result.shortened;
    result.notes.push_back({line.number, text, QStringLiteral("Der Text wurde auf %1 Zeichen gekürzt.").arg(width)});
    return kept;
  }

  void Write() {
    const UndoStep step(QStringLiteral("CSV - Import"));
    const UndoPoint point(undoCaption);
    const bool written = In_Told_Transaction(importTitle, [this] {
      EntryRow row;
      row.ID = QStringLiteral("Text");
      row.Schrift = QStringLiteral("Arial");
      row.Groesse = 12;
      row.VG = 15;
      row.Typ = 1;
      for (Row& it : rows) {
        row.Eintrag = std::move(it.text);
        row.Xmap = row.Xline = it.at.x();
        row.Ymap = row.Yline = it.at.y();
        Append_Entry(row);
        ++result.imported;
        if (!result.stopped && !progress.Advance()) {
          result.stopped = true;
          return;
        }
      }
    });
    if (written) return;
    result.imported = result.shifted = result.shortened = 0;
    result.failed = true;
  }

  const CsvTable& table;
  CsvReader reader;
  TakenPositions taken;
  std::optional<Placing> placing;  // where the coordinates are transformed
  Progress progress;
  CsvResult result;
  std::vector<Row> rows;
  int width = 0;
  bool silent = false;
};

// How the coordinates come onto the map; nothing if the user does not want them there.
std::optional<PlacingWay> Confirmed_Way(const CsvTable& table) {
  if (Csv_Fits_Net(table, Coord)) return PlacingWay::AsWritten;
  const auto name = Transformation_Name(Csv_System(table), Coord);
  MsgRequest request;
  request.text = QStringLiteral(
                     "Koordinatentyp der Datei und der Karte stimmen nicht überein.\n\nDatei: %1\nKarte: "
                     "%2\n\nSoll trotzdem importiert werden?")
                     .arg(table.CsvTyp, Grid_Type_Text(Coord).trimmed());
  request.title = importTitle;
  if (name)
    request.text +=
        QStringLiteral("\n\nUmrechnen: die Koordinaten werden in das Netz der Karte umgerechnet (%1).").arg(*name);
  return Ask_Way(std::move(request), name.has_value());
}

}  // namespace

CsvResult Csv_Import(const CsvTable& table, QPoint step) {
  CsvResult result;
  result.failed = true;
  if (!rsEntries || !rsEntries->IsOpen() || (Entry_In_Hand() && !End_Entry())) return result;
  if (Coord.Grid != gridGeographic && !Coord.Metric()) {  // the map's calibration was taken away meanwhile
    Csv_Go_On_After({errNoNet, QStringLiteral("Die Karte hat kein Koordinatennetz.")});
    return result;
  }
  const auto way = Confirmed_Way(table);
  if (!way) {
    result.failed = false;
    result.stopped = true;
    return result;
  }
  const BusyPointer busy;
  result = CsvRun(table, step, *way).Run();
  if (result.imported > 0) Show_Changed_Entries();
  return result;
}

// The report ---------------------------------------------------------------------------------------------------------

QStringList Csv_Report(const CsvTable& table, const CsvResult& result) {
  const auto count = [](qsizetype number, const QString& what) { return QString::number(number) + u' ' + what; };
  QStringList lines = {QStringLiteral("CSV - Import: ") + table.CsvFile, {}};
  lines << count(result.imported, QStringLiteral("Karteneinträge wurden importiert."))
        << count(result.shifted, QStringLiteral("davon versetzt, weil dort schon ein Eintrag lag."))
        << count(static_cast<qsizetype>(result.refused.size()), QStringLiteral("Zeilen wurden abgelehnt."))
        << count(table.skipped, QStringLiteral("Zeilen ohne Text wurden übergangen."));
  if (result.stopped) lines << QStringLiteral("Der Import wurde abgebrochen.");
  const auto list = [&lines](const QString& heading, const std::vector<CsvRefusal>& all) {
    if (all.empty()) return;
    lines << QString() << heading;
    for (const CsvRefusal& one : all)
      lines << QStringLiteral("Zeile %1: %2: %3").arg(QString::number(one.line), one.text, one.reason);
  };
  list(QStringLiteral("Abgelehnt:"), result.refused);
  list(QStringLiteral("Gekürzt:"), result.notes);
  return lines;
}

QString Write_Csv_Report(const CsvTable& table, const CsvResult& result) {
  const QFileInfo map(MapFile);
  const QString base = map.path() + u'/' + map.completeBaseName() + QStringLiteral("-CSV-Import");
  QString path = base + QStringLiteral(".txt");
  for (int number = 2; File_Exists(path); ++number) path = base + QStringLiteral("-%1.txt").arg(number);
  Write_Lines(path, Csv_Report(table, result));
  return path;
}

// The ways to a file -------------------------------------------------------------------------------------------------

QString Choose_Csv() {
  const QString last = CsvFile.isEmpty() ? ProgramFolder + QStringLiteral("/Muster.csv") : CsvFile;
  FileRequest request;
  request.title = QStringLiteral("CSV-Tabelle Import: Datei (*.csv;*.txt)");
  request.folder = QFileInfo(last).path();
  request.name = QFileInfo(last).fileName();
  request.defaultExtension = QStringLiteral("CSV");
  request.helpPage = QStringLiteral("CSV-Import.htm");
  request.filter = QStringLiteral("Datei (*.csv;*.txt)|*.csv;*.txt;|Alle Dateien (*.*)|*.*");
  const auto path = File_Dialog(request);
  if (!path) return {};
  return CsvFile = *path;
}

void Tell_Excel_Import() {
  MsgRequest request;
  request.text = QStringList{QStringLiteral("Bitte speichern Sie die Tabelle,"),
                             QStringLiteral("die Sie importieren möchten,"),
                             QStringLiteral("in Excel als *.csv Datei ab,"),
                             QStringLiteral("z.B. MeineTabelle.xls als Meinetabelle.csv."),
                             QStringLiteral("Anschließend können Sie die csv-Datei importieren"),
                             QStringLiteral("mit dem Menü 'Einträge - importieren - komma separierte Datei *.csv' ")}
                     .join(u'\n');
  request.icon = MsgIcon::Information;
  request.title = importTitle;
  request.helpPage = helpPage;
  Message_Box(request);
}
