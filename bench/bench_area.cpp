#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <vector>

#include "bench_map.h"
#include "objects/polygon.h"
#include "store/vertex_table.h"

// Drawing an area of 10,000 vertices of which few are visible, against reading its points from the table. Both in one
// run, turn by turn, so that a busy machine slows both alike; the counter "ratio" is drawing, reading included, over
// reading.

namespace {

constexpr int vertexCount = 10'000;
const QString table = QStringLiteral("Flaeche900");

// A circle of which the window sees a short arc.
std::vector<QPoint> Circle() {
  std::vector<QPoint> circle;
  for (int i = 0; i < vertexCount; ++i) {
    const double t = i * 2 * 3.14159265358979 / vertexCount;
    circle.emplace_back(9500 + qRound(9000 * std::cos(t)), 9500 + qRound(9000 * std::sin(t)));
  }
  return circle;
}

// The database keeps the points of a table it has read; a change of the table makes it read them again.
void Forget_Points() { dbEntries->Execute(QStringLiteral("UPDATE %1 SET yf = yf WHERE rowid = 1").arg(table)); }

double Median(std::vector<double>& times) {
  std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
  return times[times.size() / 2];
}

void BM_Area(benchmark::State& state) {
  const bool rounded = state.range(0) != 0;
  const BenchMap map({1, 0, 0});
  Write_Vertices(table, Circle());
  QImage canvas = Make_Canvas(1600, 1000);
  const auto surface = Make_Surface(canvas);
  DrawContext context{.surface = *surface, .view = {.Left = 18000, .Top = 9000}, .window = QRectF(canvas.rect())};
  EntryRow row;
  row.ID = table;
  row.Xline = row.Yline = 1;
  row.Typ = rounded ? 40 : 4;
  const EntryId id = EntryId::Parse(row.ID);
  using Clock = std::chrono::steady_clock;
  const auto passed = [](Clock::time_point since) {
    return std::chrono::duration<double>(Clock::now() - since).count();
  };
  std::vector<double> reading, drawing, kept;
  for (auto _ : state) {
    Forget_Points();
    auto start = Clock::now();
    benchmark::DoNotOptimize(Load_Vertices(table).size());
    reading.push_back(passed(start));
    Forget_Points();
    start = Clock::now();
    if (!Draw_Line_Entry(context, row, id, Load_Vertices(table), {}, {.rounded = rounded}))
      return state.SkipWithError("nothing was drawn");
    drawing.push_back(passed(start));
    start = Clock::now();
    Draw_Line_Entry(context, row, id, Load_Vertices(table), {}, {.rounded = rounded});
    kept.push_back(passed(start));
  }
  const double read = Median(reading), drawn = Median(drawing);
  state.counters["read_us"] = read * 1e6;
  state.counters["draw_us"] = drawn * 1e6;
  state.counters["kept_us"] = Median(kept) * 1e6;  // every further redraw: the points are still there
  state.counters["ratio"] = drawn / read;
}
BENCHMARK(BM_Area)->ArgName("rounded")->Arg(0)->Arg(1)->Iterations(200)->Unit(benchmark::kMicrosecond);

}  // namespace
