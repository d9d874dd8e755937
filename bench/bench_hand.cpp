#include <benchmark/benchmark.h>

#include "bench_map.h"
#include "edit/marks.h"
#include "edit/order.h"
#include "hand/activation.h"
#include "state/events.h"
#include "store/table_file.h"

// The hand on a map of 10,000 entries. A change of many entries is an undo point (a copy of the table file), the change
// itself and a redraw: the first and the last are measured by themselves, too.

namespace {

constexpr int marked = 1000;

QStringList Keys(int count) {
  QStringList keys;
  const KeepCurrentRow keep;
  rsEntries->MoveFirst();
  for (rsEntries->MoveNext(); !rsEntries->Eof() && keys.size() < count; rsEntries->MoveNext())
    keys.append(rsEntries->Bookmark());
  return keys;
}

void Go_To(int position) {
  rsEntries->MoveTo(position);
  Map.CurBookmark = rsEntries->Bookmark();
}

void BM_Redraw_Part(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  for (auto _ : state) Map_Redraw();
}
BENCHMARK(BM_Redraw_Part)->Unit(benchmark::kMillisecond);

void BM_Undo_Point_Part(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  for (auto _ : state) Undo_Point(QStringLiteral("Rückgängig: Justieren"));
}
BENCHMARK(BM_Undo_Point_Part)->Unit(benchmark::kMillisecond);

void BM_Mark_1000(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  const QStringList keys = Keys(marked);
  for (auto _ : state) {
    Mark_Rows(keys);
    state.PauseTiming();
    Unmark_All();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Mark_1000)->Unit(benchmark::kMillisecond);

// Taken back each time, so that there is something to align.
void BM_Justify_1000(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  Mark_Rows(Keys(marked));
  Set_Message_Handler([](const MsgRequest&) { return MsgAnswer::Ok; });  // "wieder hergestellt"
  for (auto _ : state) {
    Justify(JustifyMode::Right);
    state.PauseTiming();
    Undo_Last();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Justify_1000)->Unit(benchmark::kMillisecond);

// 10: from the middle to the last place; -10: from there to the first. With undo point and redraw.
void BM_Order_Entry(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  for (auto _ : state) {
    state.PauseTiming();
    Go_To(state.range(0) > 0 ? 5'000 : Entry_Count());
    state.ResumeTiming();
    Order_Entry(static_cast<int>(state.range(0)));
  }
}
BENCHMARK(BM_Order_Entry)->Arg(10)->Arg(-10)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_Move_In_Order(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  for (auto _ : state) {
    state.PauseTiming();
    Go_To(state.range(0) > 0 ? 5'000 : Entry_Count());
    state.ResumeTiming();
    Move_In_Order(static_cast<int>(state.range(0)));
  }
}
BENCHMARK(BM_Move_In_Order)->Arg(10)->Arg(-10)->Arg(1)->Unit(benchmark::kMillisecond);

// From the click to the controls shown.
void BM_Take_Entry(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  int x = 0, taken = 0;
  for (auto _ : state) {
    taken += Take_Entry_At({x, (x * 7) % 1000}) ? 1 : 0;
    x = (x + 37) % 1600;
    state.PauseTiming();
    End_Entry();
    state.ResumeTiming();
  }
  state.counters["taken"] = benchmark::Counter(taken, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_Take_Entry)->Unit(benchmark::kMillisecond);

}  // namespace
