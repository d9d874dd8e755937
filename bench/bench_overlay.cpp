#include <benchmark/benchmark.h>

#include "bench_net_map.h"
#include "import/overlay_import.h"

// An overlay of 10,000 texts and 900 lines of 100 points, in degrees, onto a metric map: read, transformed, compared
// with what is there, written in one transaction.

namespace {

constexpr int texts = 10'000, lines = 900, corners = 100;

QByteArray Place(const QByteArray& number, int i) {
  return "XKoord" + number + '=' + QByteArray::number(11.03 + (i * 7919 % 40000) * 1e-6, 'f', 8) + "\r\nYKoord" +
         number + '=' + QByteArray::number(49.74 + (i * 4729 % 15000) * 1e-6, 'f', 8) + "\r\n";
}

QByteArray Overlay() {
  QByteArray file;
  for (int i = 0; i < texts; ++i)
    file += "[Symbol " + QByteArray::number(i) + "]\r\nTyp=2\r\nCol=3\r\nSize=110\r\nText=Ort " +
            QByteArray::number(i) + "\r\n" + Place({}, i);
  for (int i = 0; i < lines; ++i) {
    file += "[Symbol]\r\nTyp=3\r\nCol=1\r\nSize=102\r\n";
    for (int k = 0; k < corners; ++k) file += Place(QByteArray::number(k), i * corners + k);
  }
  return file;
}

void Import_Objects(benchmark::State& state) {
  const NetBenchMap map;
  const QByteArray bytes = Overlay();
  frmMDI.MapOpen = false;  // the redraw is measured elsewhere
  for (auto _ : state) {
    const OverlayFile file = Read_Overlay(bytes);
    const OverlayPlan plan = Plan_Overlay(file, PlacingWay::Transformed, state.range(0) == 0);
    const OverlayResult result = Import_Overlay(file, plan);
    if (result.imported != texts + lines) qFatal("%d imported, %d usable", result.imported, plan.counts.ok);
  }
  frmMDI.MapOpen = true;
}
// All, or only what is not there yet.
BENCHMARK(Import_Objects)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
