#include "import/csv_file.h"

#include <algorithm>
#include <utility>

#include "platform/files.h"
#include "platform/message_box.h"
#include "state/coordinate_state.h"
#include "state/on_reset.h"
#include "store/csv_cell.h"

QString CsvFile;

namespace {
const OnReset fresh(CsvFile);
}

namespace {

const QString importTitle = QStringLiteral("Import");
const QString entryMark = QStringLiteral("#Eintrag");

// A field in quotes may hold semicolons; `end` is behind its closing quote, -1 if it is not closed as it should be.
qsizetype End_Of_Quoted(QStringView line, qsizetype start) {
  for (qsizetype i = start + 1; i < line.size(); ++i) {
    if (line[i] != u'"') continue;
    if (i + 1 < line.size() && line[i + 1] == u'"') {
      ++i;
      continue;
    }
    qsizetype next = i + 1;
    while (next < line.size() && line[next] == u' ') ++next;
    return next == line.size() || line[next] == u';' ? next : -1;
  }
  return -1;
}

}  // namespace

CsvReader::CsvReader(const CsvTable& columns) : table(columns) {
  wanted = std::max(table.XCol, table.YCol);
  for (const int column : table.EintragCol) wanted = std::max(wanted, column);
  ++wanted;
}

void CsvReader::Split(QStringView line) {
  fields.clear();
  unquoted.clear();
  const bool quotes = line.contains(u'"');
  for (qsizetype start = 0; start <= line.size() && static_cast<int>(fields.size()) < wanted;) {
    qsizetype first = start;
    while (quotes && first < line.size() && line[first] == u' ') ++first;
    if (quotes && first < line.size() && line[first] == u'"') {
      const qsizetype end = End_Of_Quoted(line, first);
      if (end >= 0) {
        const QStringView inside = line.mid(first, end - first).trimmed();
        unquoted.push_back(
            inside.mid(1, inside.size() - 2).toString().replace(QLatin1String("\"\""), QLatin1String("\"")));
        fields.push_back(QStringView(unquoted.back()).trimmed());
        start = end + 1;
        continue;
      }
    }
    qsizetype end = line.indexOf(u';', start);
    if (end < 0) end = line.size();
    fields.push_back(line.mid(start, end - start).trimmed());
    start = end + 1;
  }
}

QStringView CsvReader::Field(int column) const {
  return column >= 0 && static_cast<size_t>(column) < fields.size() ? fields[static_cast<size_t>(column)]
                                                                    : QStringView();
}

CsvRecord CsvReader::Read(const CsvLine& line) {
  Split(line.text);
  CsvRecord record{{}, Field(table.XCol), Field(table.YCol)};
  for (const int column : table.EintragCol) {
    const QStringView part = Csv_Unguarded(Field(column));
    if (part.isEmpty()) continue;
    if (!record.text.isEmpty()) record.text += u' ';
    record.text += part;
  }
  return record;
}

bool CsvReader::Has_Text(QStringView line) {
  Split(line);
  return std::any_of(table.EintragCol.begin(), table.EintragCol.end(),
                     [this](int column) { return !Field(column).isEmpty(); });
}

namespace {

// Place of a column in the text: the number at the end of its name, 0 without one.
int Place_Of(const QString& name) {
  qsizetype start = name.size();
  while (start > 0 && name[start - 1].isDigit()) --start;
  return name.mid(start).toInt();
}

// A line without a type: its message comes from the caller.
void Read_Header(const QString& line, CsvTable& table) {
  std::vector<std::pair<int, int>> places;  // place, column
  const QStringList names = line.split(u';');
  for (int column = 0; column < static_cast<int>(names.size()); ++column) {
    const QString name = QString(names[column]).remove(u'"').trimmed();
    const auto holds = [&name](const char* mark) { return name.contains(QLatin1String(mark), Qt::CaseInsensitive); };
    if (holds("#Eintrag")) {
      const int place = Place_Of(name);
      if (place > lastCsvPlace)
        Raise(errCsvPlace, QStringLiteral("Spalte \"%1\": es gibt nur die Plätze 1 bis 10.").arg(name));
      places.emplace_back(place, column);
    }
    if (holds("#X")) table.XCol = column;
    if (holds("#Y")) table.YCol = column;
    for (const char* type : {"GEO", "UTM", "GAUSS"})
      if (holds((QByteArray("#") + type).constData())) table.CsvTyp = QLatin1String(type);
  }
  std::sort(places.begin(), places.end());
  for (const auto& [place, column] : places) table.EintragCol.push_back(column);
}

void Read_Table(const QString& path, CsvTable& table) {
  if (Coord.Grid != gridGeographic && !Coord.Metric())
    Raise(errNoNet, QStringLiteral("Die Karte hat kein Koordinatennetz."));
  const QString found = Find_File(path);
  if (found.isEmpty()) Raise(errors::fileNotFound);
  table.CsvFile = found;
  QStringList lines = Read_Lines(found);
  qsizetype at = 0;
  while (at < lines.size() && !lines[at].contains(entryMark, Qt::CaseInsensitive)) ++at;
  if (at == lines.size()) return;
  Read_Header(lines[at], table);
  CsvReader reader(table);
  table.CsvLines.reserve(static_cast<size_t>(lines.size() - at));
  for (++at; at < lines.size(); ++at) {
    if (reader.Has_Text(lines[at]))
      table.CsvLines.push_back({static_cast<int>(at) + 1, std::move(lines[at])});
    else if (!lines[at].trimmed().isEmpty())
      ++table.skipped;
  }
}

void Tell(const QStringList& lines) {
  Message_Box(lines.join(u'\n'), MsgButtons::Ok, MsgIcon::Information, importTitle);
}

bool Tell_What_Is_Missing(const CsvTable& table) {
  if (table.CsvTyp.isEmpty()) {
    Tell({QStringLiteral("Die Daten können nicht importiert werden!"),
          QStringLiteral("In der CSV- bzw. Excel-Datei wurden keine Angaben über den Koordinatentyp gefunden."),
          QStringLiteral("Bitte lesen Sie in der Hilfe das Kapitel: 'Vorbereitung der Importdatei'.")});
    return true;
  }
  // One column for both: the columns are cut by another sign.
  if (!table.CsvLines.empty() && (table.XCol != table.YCol || table.XCol < 0)) return false;
  Tell({QStringLiteral("Aus der CSV-Datei konnten keine Daten eingelesen werden."),
        QStringLiteral("Bitte überprüfen Sie, ob diese Datei Daten enthält und "),
        QStringLiteral("und die Tabellenspalten durch ein Semikolon (;) getrennt sind.")});
  return true;
}

}  // namespace

bool Csv_Go_On_After(const Error& error) {
  QStringList lines = {QStringLiteral("Fehler beim Import der CSV-Tabelle"), Error_Text(error)};
  if (error.number == errNoNet || error.number == errCsvColumns || error.number == errCsvPlace)
    lines << QStringLiteral("Es ist ein Fehler aufgetreten.")
          << QStringLiteral("Die Daten können nicht importiert werden.");
  lines << QStringLiteral("Abbrechen: Import beenden.") << QStringLiteral("OK: Import fortsetzen.");
  return Message_Box(lines.join(u'\n'), MsgButtons::OkCancel, MsgIcon::Warning, importTitle) == MsgAnswer::Ok;
}

bool Csv_Analyse(const QString& path, CsvTable& table) {
  table = {};
  try {
    Read_Table(path, table);
    if (Tell_What_Is_Missing(table)) return false;
    if (table.XCol < 0 || table.YCol < 0)
      Raise(errCsvColumns,
            QStringLiteral("In der Kopfzeile fehlt die Spalte %1.").arg(QLatin1String(table.XCol < 0 ? "#X" : "#Y")));
    return true;
  } catch (const Error& error) {
    Csv_Go_On_After(error);
    return false;
  }
}
