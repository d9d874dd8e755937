#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <random>

#include "analysis/color_sheet.h"
#include "analysis/matrix_sheet.h"
#include "analysis/neighbour_text.h"
#include "analysis/population_sheet.h"
#include "analysis/result_book.h"

// The statistics from rows to values, and from rows to the file.

namespace {

// A map of that many areas, each a polygon of 60 vertices, with entries scattered over it and assigned at random.
MapInput Make_Map(int areas, int entries, int species) {
  MapInput input;
  input.measure = {.pixelMm = 0.25, .perPixel = 2.5, .unit = QStringLiteral(" m"), .hasScale = true};
  std::mt19937 random(11);
  const auto below = [&random](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  for (int i = 0; i < areas; ++i) {
    EntryRow row;
    row.ID = QStringLiteral("Flaeche%1").arg(i);
    row.Eintrag = QStringLiteral("Wiese %1").arg(i);
    row.Typ = 4;
    row.VG = i % 16;
    row.HG = 15 - i % 16;
    input.rows.push_back(row);
  }
  for (int i = 0; i < entries; ++i) {
    EntryRow row;
    row.ID = areas > 0 ? QStringLiteral("Text>Flaeche%1").arg(below(areas)) : QStringLiteral("Text");
    row.Eintrag = QStringLiteral("%1 Art Nr. %2").arg(1 + below(9)).arg(below(species), 4, 10, QLatin1Char('0'));
    row.Xmap = below(10000);
    row.Ymap = below(8000);
    input.rows.push_back(row);
  }
  input.vertices = [](const EntryRow&) {
    std::vector<QPoint> points;
    for (int i = 0; i < 60; ++i) points.emplace_back(100 + i, i % 2 == 0 ? 100 : 200 + i);
    return points;
  };
  return input;
}

// Rows to neighbours with their distances and names.
void Neighbours_Of(benchmark::State& state) {
  const MapInput input = Make_Map(0, static_cast<int>(state.range(0)), 500);
  for (auto _ : state) {
    const std::vector<NeighbourEntry> entries = Neighbour_Entries(input.rows);
    const auto found = Find_Neighbours(entries, 5);
    std::vector<QString> names;
    names.reserve(found->entry.size());
    for (const int number : found->entry) names.push_back(entries[static_cast<size_t>(number)].name);
    benchmark::DoNotOptimize(names.data());
  }
}
BENCHMARK(Neighbours_Of)->Arg(20'000)->Arg(50'000)->Arg(100'000)->Arg(200'000)->Unit(benchmark::kMillisecond);

void Neighbours_At_Few_Places(benchmark::State& state) {
  MapInput input = Make_Map(0, 20'000, 500);
  for (EntryRow& row : input.rows) row.Xmap /= 1000, row.Ymap /= 1000;
  for (auto _ : state) benchmark::DoNotOptimize(Find_Neighbours(Neighbour_Entries(input.rows), 5));
}
BENCHMARK(Neighbours_At_Few_Places)->Unit(benchmark::kMillisecond);

void Neighbour_Report_20000(benchmark::State& state) {
  const MapInput input = Make_Map(0, 20'000, 500);
  const std::vector<NeighbourEntry> entries = Neighbour_Entries(input.rows);
  const auto found = Find_Neighbours(entries, 5);
  for (auto _ : state) benchmark::DoNotOptimize(Neighbour_Text(entries, *found, input.measure, {true}).size());
}
BENCHMARK(Neighbour_Report_20000)->Unit(benchmark::kMillisecond);

// All indices of 1,000 communities of up to 500 species.
void Diversity_1000x500(benchmark::State& state) {
  std::mt19937 random(3);
  std::vector<std::vector<qint64>> counts(1000, std::vector<qint64>(500));
  for (auto& row : counts)
    for (qint64& count : row) count = random() % 3 == 0 ? 0 : random() % 200;
  for (auto _ : state)
    for (const auto& row : counts) benchmark::DoNotOptimize(Diversity_Indices(row));
}
BENCHMARK(Diversity_1000x500)->Unit(benchmark::kMillisecond);

void Matrix_1000x500(benchmark::State& state) {
  const MapInput input = Make_Map(1000, 20'000, 500);
  for (auto _ : state) benchmark::DoNotOptimize(Calc_Species_Matrix(input)->rows.size());
}
BENCHMARK(Matrix_1000x500)->Unit(benchmark::kMillisecond);

void Matrix_File_1000x500(benchmark::State& state) {
  const MapInput input = Make_Map(1000, 20'000, 500);
  const QTemporaryDir folder;
  for (auto _ : state)
    Write_Result_Sheets(folder.path() + QStringLiteral("/K.MDB"), {Matrix_Sheet(*Calc_Species_Matrix(input))});
}
BENCHMARK(Matrix_File_1000x500)->Unit(benchmark::kMillisecond);

// From the rows to the file on the disk, diversity included.
void Population_File_1000(benchmark::State& state) {
  const MapInput input = Make_Map(1000, 20'000, 500);
  const QTemporaryDir folder;
  for (auto _ : state) {
    const auto population = Calc_Population_Values(input, 0);
    Write_Result_Sheets(folder.path() + QStringLiteral("/K.MDB"),
                        {*Population_Sheet(input, *population, {.diversity = true})});
  }
}
BENCHMARK(Population_File_1000)->Unit(benchmark::kMillisecond);

// Entries of 5,000 names on 400 colours, to the file on the disk.
void Colors_File_20000(benchmark::State& state) {
  const MapInput input = Make_Map(0, 20'000, 5000);
  const QTemporaryDir folder;
  const ColorOptions options{.leadingNumbers = true};
  for (auto _ : state) {
    const auto assignment =
        Assign_To_Colors(input.rows, options, [](QPoint at) { return qRgb(at.x() / 500 * 12, at.y() / 400 * 12, 0); });
    Write_Result_Sheets(folder.path() + QStringLiteral("/K.MDB"), {Color_Sheet(input, *assignment, options)});
  }
}
BENCHMARK(Colors_File_20000)->Unit(benchmark::kMillisecond);

}  // namespace
