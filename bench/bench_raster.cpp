#include <benchmark/benchmark.h>

#include "bench_map.h"
#include "plansquares/raster_rows.h"
#include "state/events.h"
#include "store/table_file.h"
#include "tools/plan_squares.h"

// A raster of 2,000 squares on a map without other entries. Taking it over is an undo point (a copy of the table file),
// the rows and a redraw; the parts are measured by themselves, too.

namespace {

RasterPreview Raster() {
  RasterPreview raster;
  raster.design = Raster_Ini();
  raster.design.size = QStringLiteral("20 px");
  raster.design.labels = LabelPlace::Centre;
  raster.plan = Plan({0, 0, 1000, 800}, 20);
  return raster;
}

void BM_Plan_2000(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Plan({0, 0, 1000, 800}, 20).squares.size());
}
BENCHMARK(BM_Plan_2000)->Unit(benchmark::kMillisecond);

void BM_Preview_2000(benchmark::State& state) {
  const BenchMap map({0, 0, 0});
  for (auto _ : state) Show_Raster_Preview(Raster());
}
BENCHMARK(BM_Preview_2000)->Unit(benchmark::kMillisecond);

void BM_Take_Raster_2000(benchmark::State& state) {
  const BenchMap map({0, 0, 0});
  const RasterPreview raster = Raster();
  for (auto _ : state) {
    if (!Take_Raster_On_Map(raster)) state.SkipWithError("not taken");
    state.PauseTiming();
    Delete_Raster();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Take_Raster_2000)->Unit(benchmark::kMillisecond);

void BM_Redraw_2000(benchmark::State& state) {
  const BenchMap map({0, 0, 0});
  Take_Raster_On_Map(Raster());
  for (auto _ : state) Map_Redraw();
}
BENCHMARK(BM_Redraw_2000)->Unit(benchmark::kMillisecond);

void BM_Hide_And_Show_2000(benchmark::State& state) {
  const BenchMap map({0, 0, 0});
  Take_Raster_On_Map(Raster());
  bool visible = true;
  for (auto _ : state) Show_Raster(visible = !visible);
}
BENCHMARK(BM_Hide_And_Show_2000)->Unit(benchmark::kMillisecond);

void BM_Delete_Raster_2000(benchmark::State& state) {
  const BenchMap map({0, 0, 0});
  const RasterPreview raster = Raster();
  for (auto _ : state) {
    state.PauseTiming();
    Take_Raster_On_Map(raster);
    state.ResumeTiming();
    Delete_Raster();
  }
}
BENCHMARK(BM_Delete_Raster_2000)->Unit(benchmark::kMillisecond);

}  // namespace
