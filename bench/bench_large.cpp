#include <benchmark/benchmark.h>

#include <QElapsedTimer>

#include "bench_map.h"
#include "edit/marks.h"
#include "edit/order.h"
#include "hand/activation.h"
#include "hand/typed_text.h"
#include "maps/map_close.h"
#include "maps/step_walk.h"
#include "store/table_file.h"
#include "tools/drag.h"
#include "tools/mouse.h"

// Large tables: what one entry costs among 100,000, with all of them in view and with few, and a table of 1,000,000.

namespace {

// Texts all different on a map of that size. In view is what a window of 1600 x 1000 shows.
class Large {
 public:
  Large(int64_t rows, int width, int height) {
    map = std::make_unique<BenchMap>(BenchSize{0, 0, 0}, width, height);
    dbEntries->Execute(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<%1) "
                                      "INSERT INTO MapData SELECT 'Text','Ort '||i,'Arial',8.0,i%15,15-i%7,-1,"
                                      "(i*7919)%%2,(i*6101)%%3,0,0,0 FROM n")
                           .arg(rows)
                           .arg(width - 60)
                           .arg(height - 20)
                           .replace(QStringLiteral("%%"), QStringLiteral("%")));
    rsEntries->Requery();
    Map_Redraw();
  }
  std::unique_ptr<BenchMap> map;
};

// width 1600: all in view; 6000: few.
std::unique_ptr<Large> Hundred_Thousand(const benchmark::State& state) {
  const bool all = state.range(0) != 0;
  return std::make_unique<Large>(100'000, all ? 1600 : 6000, all ? 1000 : 4000);
}

qint64 Any_Seen_Entry() {
  static int x = 0;
  for (;;) {
    x = (x + 37) % 1500;
    if (const int hit = Map.EntryRegions.TopAt(QPointF(x + 20, x * 7 % 900 + 20))) return Map.EntryRegions.Row(hit).key;
  }
}

void Drag_Entry(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  for (auto _ : state) {
    state.PauseTiming();
    Take_Entry(QString::number(Any_Seen_Entry()));
    const QPoint at(Map.Text2.Left + 3, Map.Text2.Top + 3);
    Begin_Drag(Grip::Entry, -1, at);
    state.ResumeTiming();
    Map_Mouse_Move(at + QPoint(40, 30), true);
    Map_Mouse_Up(at + QPoint(40, 30), MouseButton::Left);
    state.PauseTiming();
    End_Entry();
    state.ResumeTiming();
  }
}
BENCHMARK(Drag_Entry)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

void Take_And_Leave(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  for (auto _ : state) {
    Take_Entry(QString::number(Any_Seen_Entry()));
    End_Entry();
  }
}
BENCHMARK(Take_And_Leave)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

void Type_Text(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  int typed = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Take_Entry(QString::number(Any_Seen_Entry()));
    state.ResumeTiming();
    Text_Typed(QStringLiteral("getippt %1").arg(++typed));
    End_Entry();
  }
}
BENCHMARK(Type_Text)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

void Mark_One(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  for (auto _ : state) {
    state.PauseTiming();
    Map.CurBookmark = QString::number(Any_Seen_Entry());
    rsEntries->SetBookmark(Map.CurBookmark);
    state.ResumeTiming();
    Mark_Obj();
  }
}
BENCHMARK(Mark_One)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

void Move_Any_Entry() {
  rsEntries->SetBookmark(QString::number(Any_Seen_Entry()));
  rsEntries->Edit();
  rsEntries->Set(column::Xmap, rsEntries->Integer(column::Xmap) + 1);
  rsEntries->Update();
  Redraw_Changed_Entries();
}

void One_Step_Back(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  for (auto _ : state) {
    state.PauseTiming();
    Move_Any_Entry();
    state.ResumeTiming();
    Step_Back();
  }
}
BENCHMARK(One_Step_Back)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

// One text among 20,000 pictures or squares of a raster, 600 of which are in view.
void Move_One_Among(benchmark::State& state) {
  const BenchMap map({2000, 0, 0}, 8000, 6000);
  QImage symbol(24, 24, QImage::Format_RGB32);
  symbol.fill(qRgb(20, 90, 160));
  Save_Picture(symbol, map.folder.filePath(QStringLiteral("Bild.bmp")));
  const bool squares = state.range(0) != 0;
  dbEntries->Execute(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<20000) "
                                    "INSERT INTO MapData SELECT %1 FROM n")
                         .arg(squares
                                  ? QStringLiteral("'Plan'||char(31)||i,'A'||i,'F 1',8.0,1,14,109,i%160*50,i/160*48,"
                                                   "i%160*50+50,i/160*48+48,16")
                                  : QStringLiteral("'Bild','Bild.bmp','',8.0,0,15,-100,i%160*50,i/160*48,0,0,5")));
  rsEntries->Requery();
  Map_Redraw();
  for (auto _ : state) Move_Any_Entry();
  state.counters["regions"] = Map.EntryRegions.Count();
}
BENCHMARK(Move_One_Among)->ArgName("squares")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(20);

// What the user waits for, and what is done when there is time.
void Undo_Point_Taken(benchmark::State& state) {
  const bool shapes = state.range(0) == 0;
  const BenchMap map(shapes ? BenchSize{0, 990, 990} : BenchSize{static_cast<int>(state.range(0)), 0, 0});
  for (auto _ : state) {
    Undo_Point(QStringLiteral("Rückgängig: Verschieben"));
    state.PauseTiming();
    rsEntries->MoveTo(5);
    rsEntries->Edit();
    rsEntries->Set(column::Ymap, rsEntries->Integer(column::Ymap) + 1);
    rsEntries->Update();
    Table_Idle();
    state.ResumeTiming();
  }
}
BENCHMARK(Undo_Point_Taken)
    ->ArgName("texts")
    ->Arg(0)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

// The longest piece of it is what somebody may wait for who comes back.
void Undo_Point_Written(benchmark::State& state) {
  double longest = 0;
  const BenchMap map({static_cast<int>(state.range(0)), 0, 0});
  for (auto _ : state) {
    state.PauseTiming();
    Undo_Point(QStringLiteral("Rückgängig: Verschieben"));
    rsEntries->MoveTo(5);
    rsEntries->Edit();
    rsEntries->Set(column::Ymap, rsEntries->Integer(column::Ymap) + 1);
    rsEntries->Update();
    state.ResumeTiming();
    for (bool more = true; more;) {
      QElapsedTimer piece;
      piece.start();
      more = Table_Idle_Some(8);
      longest = std::max(longest, static_cast<double>(piece.nsecsElapsed()) / 1e6);
    }
  }
  state.counters["longest_ms"] = longest;
}
BENCHMARK(Undo_Point_Written)
    ->ArgName("texts")
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

void Redraw_Large(benchmark::State& state) {
  const auto large = Hundred_Thousand(state);
  for (auto _ : state) Map_Redraw();
  state.counters["regions"] = Map.EntryRegions.Count();
}
BENCHMARK(Redraw_Large)->ArgName("all_in_view")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(10);

void Unmark_All_100000(benchmark::State& state) {
  const Large large(100'000, 6000, 4000);
  for (auto _ : state) {
    state.PauseTiming();
    dbEntries->Execute(QStringLiteral("UPDATE MapData SET Typ = 100 WHERE Typ = 0 AND ID = 'Text'"));
    state.ResumeTiming();
    Unmark_All();
  }
}
BENCHMARK(Unmark_All_100000)->Unit(benchmark::kMillisecond)->Iterations(2);

void To_The_Back(benchmark::State& state) {
  const Large large(100'000, 6000, 4000);
  for (auto _ : state) {
    state.PauseTiming();
    rsEntries->MoveTo(90'000);
    Map.CurBookmark = rsEntries->Bookmark();
    state.ResumeTiming();
    Move_In_Order(-10);
  }
}
BENCHMARK(To_The_Back)->Unit(benchmark::kMillisecond)->Iterations(5);

void Million_Open(benchmark::State& state) {
  const Large large(1'000'000, 16000, 10000);
  const QString path = large.map->path;
  for (auto _ : state) {
    state.PauseTiming();
    Close_Map();
    state.ResumeTiming();
    Open_Map(path);
  }
}
BENCHMARK(Million_Open)->Unit(benchmark::kMillisecond)->Iterations(1);

void Million_Redraw(benchmark::State& state) {
  const Large large(1'000'000, 16000, 10000);
  for (auto _ : state) {
    Scroll_By(50, 30);
  }
  state.counters["regions"] = Map.EntryRegions.Count();
}
BENCHMARK(Million_Redraw)->Unit(benchmark::kMillisecond)->Iterations(10);

void Million_First_Sight(benchmark::State& state) {
  const Large large(1'000'000, 16000, 10000);
  int at = 0;
  for (auto _ : state) {
    ++at;
    ScrollMap(at * 1700, at * 1100);
  }
  state.counters["regions"] = Map.EntryRegions.Count();
}
BENCHMARK(Million_First_Sight)->Unit(benchmark::kMillisecond)->Iterations(6);

}  // namespace
