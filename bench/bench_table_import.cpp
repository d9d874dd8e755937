#include <benchmark/benchmark.h>

#include "bench_map.h"
#include "import/table_import.h"

// 50,000 rows of another table with 1,000 tables of vertices, moved through the coordinates of both maps.

namespace {

constexpr int rowCount = 50'000, tableCount = 1'000;

QString Make_Source(const QTemporaryDir& folder) {
  const QString path = folder.filePath(QStringLiteral("Quelle.MDB"));
  const auto database = Workspace::CreateDatabase(path);
  Make_Template(*database);
  database->BeginTrans();
  const auto rows = database->OpenRecordset(QStringLiteral("MapData"));
  EntryRow row{"!Unbekannt", "", "Andere.bmp", 0, 0, 0, 0, 1600, 1000, 1, 1000, -1};
  for (int i = 0; i <= rowCount; ++i) {
    rows->AddNew();
    Write_Entry(*rows, row);
    rows->Update();
    const bool area = i < tableCount;
    row = {area ? QStringLiteral("Flaeche%1").arg(i) : QStringLiteral("Text"),
           QStringLiteral("Ort %1").arg(i),
           "Arial",
           8,
           1,
           15,
           -1,
           i % 1600,
           i % 1000,
           0,
           1,
           area ? 4 : 0};
    if (!area) continue;
    database->CreateTable(Vertex_Def(row.ID));
    const auto vertices = database->OpenRecordset(row.ID);
    for (int k = 0; k < 60; ++k) {
      vertices->AddNew();
      vertices->Set(0, qint64{(i + k) % 1600});
      vertices->Set(1, qint64{(i + k * k) % 1000});
      vertices->Update();
    }
  }
  database->CommitTrans();
  return path;
}

CoordinateState Net(int right, double metres) {
  CoordinateState net;
  net.Grid = gridUtm;
  net.MapWidthPx = 1600, net.MapHeightPx = 1000;
  net.GridR = right, net.GridH = 5512000;
  net.MeterPerPix = metres;
  net.Inclin = 0.01;
  return net;
}

void Import_Rows(benchmark::State& state) {
  const BenchMap map({.texts = 10, .areas = 1, .lines = 1});
  const QString file = Make_Source(map.folder);
  for (auto _ : state) {
    TableSource source(file);
    TableImportOrder order;
    order.rows = Filtered_Rows(source.Data(), {{QStringLiteral("Eintrag"), QStringLiteral("Ort*")}});
    order.placing = TablePlacing(PlaceWay::Coordinates, Net(646000, 2), Net(646000, 2.001));
    order.asks = false;
    order.skipExisting = state.range(0) != 0;
    if (Import_Entries(source, order).imported < rowCount - tableCount) state.SkipWithError("not all came");
  }
}

BENCHMARK(Import_Rows)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
