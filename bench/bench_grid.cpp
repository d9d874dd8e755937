#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>
#include <chrono>

#include "bench_map.h"
#include "platform/error.h"
#include "state/events.h"
#include "windows/store/tbl_window.h"
#include "windows/store/tbl_window_model.h"

// The table window over a table of 100,000 rows.

namespace {

constexpr int rowCount = 100'000;

// Made once: filling it takes longer than all the measurements.
BenchMap& Big_Map() {
  static BenchMap map({.texts = rowCount, .areas = 0, .lines = 0, .width = 4000, .height = 3000});
  return map;
}

template <typename Work>
double Milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// From nothing to the painted first page.
void First_Page(benchmark::State& state) {
  Big_Map();
  double worst = 0;
  for (auto _ : state) {
    const double used = Milliseconds([] {
      TblWindow window;
      window.resize(1000, 300);
      window.show();
      benchmark::DoNotOptimize(window.grab());
    });
    worst = std::max(worst, used);
  }
  state.counters["worst_ms"] = worst;
}
BENCHMARK(First_Page)->Unit(benchmark::kMillisecond)->Iterations(20);

// Steps through the whole table by the scroll bar, each painted.
void Scroll(benchmark::State& state) {
  Big_Map();
  TblWindow window;
  window.resize(1000, 300);
  window.show();
  QScrollBar* bar = window.Grid().verticalScrollBar();
  int at = 0;
  double worst = 0;
  for (auto _ : state) {
    at = (at + 4217) % rowCount;
    worst = std::max(worst, Milliseconds([&] {
                       bar->setValue(at);
                       benchmark::DoNotOptimize(window.Grid().viewport()->grab());
                     }));
  }
  state.counters["worst_ms"] = worst;
}
BENCHMARK(Scroll)->Unit(benchmark::kMillisecond)->Iterations(100);

// A row was written elsewhere: the grid is in step again.
void Follow_A_Change(benchmark::State& state) {
  Big_Map();
  TblWindow window;
  window.resize(1000, 300);
  window.show();
  int at = 1;
  for (auto _ : state) {
    state.PauseTiming();
    rsEntries->MoveTo(at = at % 90'000 + 997);
    rsEntries->Edit();
    rsEntries->Set(column::Xmap, qint64{at % 3000});
    rsEntries->Update();
    state.ResumeTiming();
    window.Sync();
    benchmark::DoNotOptimize(window.Grid().viewport()->grab());
  }
}
BENCHMARK(Follow_A_Change)->Unit(benchmark::kMillisecond)->Iterations(50);

// A row in the middle has gone: the keys are read anew.
void Follow_A_Deletion(benchmark::State& state) {
  Big_Map();
  TblWindow window;
  window.resize(1000, 300);
  window.show();
  for (auto _ : state) {
    state.PauseTiming();
    rsEntries->MoveTo(50'000);
    rsEntries->Delete();
    state.ResumeTiming();
    window.Sync();
    benchmark::DoNotOptimize(window.Grid().viewport()->grab());
  }
}
BENCHMARK(Follow_A_Deletion)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
