#include "batch_import.h"

#include <QFileInfo>
#include <algorithm>
#include <cstdio>

#include "exchange/exchange_table.h"
#include "import/gps_script.h"
#include "import/import_report.h"
#include "import/overlay_import.h"
#include "import/placing_question.h"
#include "import/table_choice.h"
#include "platform/error.h"
#include "platform/files.h"
#include "state/global_state.h"

using namespace Qt::StringLiterals;

namespace {

// Without a question: coordinates wherever both nets are known, the same pixels where neither map has one.
TablePlacing Placing_Of(const TableSource& source, const BatchOrder& order) {
  if (order.pixels) return {};
  const CoordinateState net = Net_Of_Source(source.Header(), source.File(), Coord);
  const NetMatch match = Match_Nets(net, Coord);
  if (match == NetMatch::None) return {};
  if (match == NetMatch::Same) return {PlaceWay::Coordinates, net, Coord};
  if (Can_Convert(net, Coord)) return {PlaceWay::Converted, net, Coord};
  Raise(5000,
        u"Die Netze der beiden Karten sind nicht bekannt oder passen nicht zusammen; mit --pixel kommen die Einträge "
        "auf dieselben Pixel."_s);
}

// A script gives one file after the other: which one it was.
[[noreturn]] void Raise_Of_File(const QString& file, const Error& error) {
  const QString text = Error_Text(error);
  Raise(error.number, text.contains(file) ? text : file + u": "_s + text);
}

void Print_Lines(const QStringList& lines) {
  for (const QString& line : lines)
    if (!line.isEmpty()) std::printf("%s\n", qUtf8Printable(line));
}

}  // namespace

ExitStatus Write_Exchange(const BatchOrder& order) {
  try {
    ExchangeTable table = Read_Exchange_Table(order.target);
    // What is read is a copy of the map and its table.
    table.map = QFileInfo(order.map).absoluteFilePath();
    table.table = QFileInfo(order.map).absolutePath() + u'/' + QFileInfo(TableFile).fileName();
    const auto text = Exchange_Lines(table);
    Write_Lines(order.target, text->lines);
    if (text->withoutText > 0) Tell(u"Einträge ohne Text, die nicht in der Datei stehen: %1"_s.arg(text->withoutText));
  } catch (const Error& error) {
    const QString reason = error.number == 5000 ? u"Diese Datei ist leer."_s : Error_Text(error);
    Raise(error.number, reason + u": "_s + order.target);
  }
  return done;
}

ExitStatus Take_Exchange(const BatchOrder& order) {
  const QStringList lines = Read_Lines(order.target);
  const ExchangeContent content = order.wholeFile ? Read_Exchange_All(lines) : Read_Exchange_Entries(lines);
  const ExchangeTaken taken = Append_Exchange_Entries(content.entries);
  // A file of another kind is refused line by line.
  constexpr size_t most = 50;
  std::vector<ExchangeRefusal> refused = content.refused;
  refused.insert(refused.end(), taken.refused.begin(), taken.refused.end());
  for (size_t i = 0; i < std::min(refused.size(), most); ++i)
    Tell(u"Zeile %1: %2"_s.arg(refused[i].line).arg(refused[i].reason));
  if (refused.size() > most) Tell(u"und %1 weitere Zeilen"_s.arg(refused.size() - most));
  std::printf("%d\n", taken.entries);
  return taken.entries > 0 ? done : failed;
}

ExitStatus Take_Gps(const BatchOrder& order) {
  try {
    const ScriptedImport taken =
        Import_Gps_Unasked(order.target, order.alsoPresent ? Existing::Taken : Existing::Skipped);
    for (const QString& line : taken.summary) std::printf("%s\n", qUtf8Printable(line));
    if (!taken.report.isEmpty()) std::printf("%s\n", qUtf8Printable(u"nicht gekommen: "_s + taken.report));
    return done;
  } catch (const Error& error) {
    Raise_Of_File(order.target, error);
  }
}

ExitStatus Take_Table(const BatchOrder& order) {
  try {
    TableSource source(order.target);
    Tell_Remarks(source);
    std::vector<ColumnValue> conditions;
    for (const QString& line : order.filter) conditions.push_back(ColumnValue::Parse(line));
    TableImportOrder taken;
    taken.rows = Filtered_Rows(source.Data(), conditions, order.exclude ? FilterMode::Others : FilterMode::Matching);
    taken.placing = Placing_Of(source, order);
    taken.skipExisting = !order.alsoPresent;
    taken.asks = false;
    const TableImportResult result = Import_Entries(source, taken);
    if (result.failed) return failed;
    const QStringList report = Table_Import_Report(source, result);
    Print_Lines(report.mid(0, report.indexOf(u"Abgelehnt:"_s)));
    const QString list = Write_Import_Report(result.refused.empty() ? QStringList() : report);
    if (!list.isEmpty()) Tell(u"Abgelehnte Einträge stehen in: "_s + list);
    return done;
  } catch (const Error& error) {
    Raise_Of_File(order.target, error);
  }
}

ExitStatus Take_Overlay(const BatchOrder& order) {
  try {
    const OverlayFile file = Read_Overlay(Read_Bytes(order.target));
    const auto way = Usual_Placing_Way(Overlay_System(), Coord);
    if (!way) Raise(5000, u"Die Koordinaten können nicht in das Netz der Karte umgerechnet werden."_s);
    const OverlayPlan plan = Plan_Overlay(file, *way, order.alsoPresent);
    const OverlayResult result = Import_Overlay(file, plan);
    if (result.failed) return failed;
    Print_Lines(Overlay_Summary(file, plan, result));
    const QString list = Write_Import_Report(Overlay_Refusals(file, plan, result));
    if (!list.isEmpty()) Tell(u"Was nicht kam, steht in: "_s + list);
    return done;
  } catch (const Error& error) {
    Raise_Of_File(order.target, error);
  }
}
