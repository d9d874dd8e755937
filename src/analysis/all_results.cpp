#include "analysis/all_results.h"

#include <QFileInfo>

#include "analysis/color_sheet.h"
#include "analysis/kataster_sheet.h"
#include "analysis/lines.h"
#include "analysis/matrix_sheet.h"
#include "analysis/neighbour_text.h"
#include "analysis/population_sheet.h"
#include "analysis/result_book.h"
#include "platform/error.h"
#include "platform/files.h"

namespace {

void Add_Area_Sheet(const MapInput& input, std::vector<Sheet>& sheets) {
  const int first = First_Area(input.rows);
  const auto population = first < 0 ? std::nullopt : Calc_Population_Values(input, first);
  if (!population) return;
  // An area of one species has no evenness; its cell stays empty.
  if (auto sheet = Population_Sheet(input, *population, {.diversity = true})) sheets.push_back(std::move(*sheet));
}

void Add_Color_Sheet(const MapInput& input, const QImage& scan, std::vector<Sheet>& sheets, QStringList& problems) {
  try {
    const ColorOptions options{.leadingNumbers = true};
    const auto colors = Assign_To_Colors(input.rows, options, [&](QPoint at) { return Scan_Color(scan, at); });
    if (colors) sheets.push_back(Color_Sheet(input, *colors, options));
  } catch (const Error& error) {
    problems << QStringLiteral("Das Blatt Zuordnung fehlt: ") + error.text;
  }
}

void Write_Neighbours(const MapInput& input, int wanted, const QString& path, ResultFiles& result) {
  const auto entries = Neighbour_Entries(input.rows);
  const auto count = static_cast<int>(entries.size());
  const int perEntry = Reduced_Neighbours(count, wanted);
  const auto found = perEntry < 1 ? std::nullopt : Find_Neighbours(entries, perEntry);
  if (!found) {
    result.problems << QStringLiteral("Für Nachbarn hat die Karte zu wenige Einträge: %1").arg(count);
    return;
  }
  Write_Lines(path, Neighbour_Text(entries, *found, input.measure, {.detailed = true}));
  result.files << path;
}

}  // namespace

ResultFiles Write_All_Results(const ResultOrder& order, const QImage& scan) {
  ResultFiles result;
  const MapInput input = Read_Map_Input();
  const auto matrix = Calc_Species_Matrix(input);
  std::vector<Sheet> sheets;
  Add_Area_Sheet(input, sheets);
  if (const auto lines = Calc_Lines(input); !lines.empty()) sheets.push_back(Line_Sheet(input, lines));
  Add_Color_Sheet(input, scan, sheets, result.problems);
  sheets.push_back(Kataster_Sheet_Of(Read_Sorted_Map_Input()));
  if (matrix && !matrix->rows.empty()) sheets.push_back(Matrix_Sheet(*matrix));
  if (const auto book = Write_Sheets_Into(order.workbook, sheets)) result.aside = book->aside;
  for (const Sheet& sheet : sheets) result.sheets << sheet.name;
  result.files << order.workbook;
  if (matrix && !order.matrixCsv.isEmpty()) {
    Replace_File(order.matrixCsv, Matrix_Csv(*matrix));
    result.files << order.matrixCsv;
  }
  if (order.neighbours > 0)
    Write_Neighbours(input, order.neighbours, QFileInfo(order.workbook).path() + QStringLiteral("/Distanz.erg"),
                     result);
  return result;
}
