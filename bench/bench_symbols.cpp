#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

#include "windows/objects/frmTblSymb.h"

// The table of characters: from nothing to the painted window.

namespace {

double Open_Table(const QString& family) {
  const auto start = std::chrono::steady_clock::now();
  FrmTblSymb window;
  window.Show_Font(family, 0);
  window.show();
  benchmark::DoNotOptimize(window.grab());
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The first time the fonts are loaded as well.
void Open(benchmark::State& state) {
  static const double firstMs = Open_Table(QStringLiteral("Wingdings"));
  double worst = 0;
  for (auto _ : state) worst = std::max(worst, Open_Table(QStringLiteral("Wingdings")));
  state.counters["worst_ms"] = worst;
  state.counters["first_ms"] = firstMs;
}
BENCHMARK(Open)->Unit(benchmark::kMillisecond)->Iterations(50);

}  // namespace
