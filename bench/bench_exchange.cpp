#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "exchange/csv_export.h"
#include "exchange/exchange_table.h"
#include "platform/files.h"
#include "state/coordinate_state.h"
#include "store/table_file.h"

// Files of 100,000 entries: exchange file and CSV written, exchange file read, against writing and reading bare lines
// of the same length.

namespace {

constexpr int rowCount = 100'000;

struct OpenTable {
  OpenTable() {
    ProgramFolder = folder.path();
    const auto database = Workspace::CreateDatabase(ProgramFolder + QStringLiteral("/MUSTER.MDB"));
    Make_Template(*database);
    database->Close();
    MapFile = folder.filePath(QStringLiteral("Karte.bmp"));
    MapWidthPx = 3000;
    MapHeightPx = 2200;
    Coord.Grid = gridUtm;
    Coord.MeterPerPix = 2.1161907;
    Coord.GridR = 646000;
    Coord.GridH = 5512000;
    Coord.MapWidthPx = MapWidthPx;
    Coord.MapHeightPx = MapHeightPx;
    if (!Load_Table(LoadMode::First)) qFatal("no table");
    std::vector<ExchangeEntry> entries(rowCount);
    for (int i = 0; i < rowCount; ++i)
      entries[static_cast<size_t>(i)].row = {QStringLiteral("Text"),
                                             QStringLiteral("Höckerschrecke %1").arg(i),
                                             QStringLiteral("Arial-B<45"),
                                             8,
                                             0,
                                             15,
                                             0,
                                             i % 3000,
                                             i % 2200,
                                             i % 2900,
                                             i % 2100,
                                             1};
    Append_Exchange_Entries(entries);
  }
  ~OpenTable() { Close_Table(CloseMode::CloseOnly); }
  QString File() const { return folder.filePath(QStringLiteral("aus.tkr")); }
  QTemporaryDir folder;
};

OpenTable& Table() {
  static OpenTable table;
  return table;
}

void Write_File(benchmark::State& state) {
  const QString file = Table().File();
  for (auto _ : state) Write_Lines(file, Exchange_Lines(Read_Exchange_Table(file))->lines);
}

void Read_File(benchmark::State& state) {
  const QString file = Table().File();
  size_t count = 0;
  for (auto _ : state) count = Read_Exchange_All(Read_Lines(file)).entries.size();
  if (count != rowCount) state.SkipWithError("not all were read");
}

void Write_Csv_File(benchmark::State& state) {
  const QString file = Table().folder.filePath(QStringLiteral("aus.csv"));
  for (auto _ : state) Write_Lines(file, Csv_Export_Lines(QStringLiteral("KARTE.MDB")));
}

void Bare_Lines(benchmark::State& state) {
  const QString file = Table().folder.filePath(QStringLiteral("bare.txt"));
  const QStringList lines(rowCount, QString(70, u'x'));
  for (auto _ : state) {
    Write_Lines(file, lines);
    benchmark::DoNotOptimize(Read_Lines(file));
  }
}

BENCHMARK(Bare_Lines)->Unit(benchmark::kMillisecond);
BENCHMARK(Write_File)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_File)->Unit(benchmark::kMillisecond);
BENCHMARK(Write_Csv_File)->Unit(benchmark::kMillisecond);

}  // namespace
