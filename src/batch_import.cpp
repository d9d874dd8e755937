#include "batch_import.h"

#include <cstdio>

#include "import/gps_script.h"
#include "import/import_report.h"
#include "import/overlay_import.h"
#include "import/placing_question.h"
#include "import/table_choice.h"
#include "platform/error.h"
#include "platform/files.h"

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
        "auf dieselben Pixel: "_s +
            source.File());
}

void Print_Lines(const QStringList& lines) {
  for (const QString& line : lines)
    if (!line.isEmpty()) std::printf("%s\n", qUtf8Printable(line));
}

}  // namespace

ExitStatus Take_Gps(const BatchOrder& order) {
  const ScriptedImport taken =
      Import_Gps_Unasked(order.target, order.alsoPresent ? Existing::Taken : Existing::Skipped);
  for (const QString& line : taken.summary) std::printf("%s\n", qUtf8Printable(line));
  if (!taken.report.isEmpty()) std::printf("%s\n", qUtf8Printable(u"nicht gekommen: "_s + taken.report));
  return done;
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
    if (!result.refused.empty()) Tell(u"Abgelehnte Einträge stehen in: "_s + Write_Import_Report(report));
    return done;
  } catch (const Error& error) {
    Raise(error.number, Error_Text(error) + u": "_s + order.target);
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
    const QStringList refusals = Overlay_Refusals(file, plan, result);
    if (!refusals.isEmpty()) Tell(u"Was nicht kam, steht in: "_s + Write_Import_Report(refusals));
    return done;
  } catch (const Error& error) {
    Raise(error.number, Error_Text(error) + u": "_s + order.target);
  }
}
