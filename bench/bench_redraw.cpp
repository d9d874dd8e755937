#include <benchmark/benchmark.h>

#include <QPainter>

#include "bench_map.h"
#include "maps/map_close.h"
#include "view/hit_test.h"
#include "view/map_copies.h"
#include "view/reduce.h"

// Redraw of the map window against the same primitives drawn straightforwardly with the toolkit's painter.

namespace {

void Straightforward(QImage& canvas, const QImage& scan, const BenchShapes& shapes) {
  QPainter painter(&canvas);
  painter.drawImage(0, 0, scan);
  for (const auto& area : shapes.areas) {
    painter.setPen(QBColor(9));
    painter.setBrush(QColor(QBColor(10)));
    painter.drawPolygon(area.data(), static_cast<int>(area.size()));
  }
  for (const auto& line : shapes.lines) {
    painter.setPen(QBColor(12));
    painter.drawPolyline(line.data(), static_cast<int>(line.size()));
  }
  QFont font(QStringLiteral("Liberation Sans"));
  font.setPixelSize(11);
  font.setKerning(false);
  font.setHintingPreference(QFont::PreferFullHinting);
  painter.setFont(font);
  const QFontMetrics metrics(font);
  for (const auto& text : shapes.texts) {
    painter.fillRect(text.x, text.y, metrics.horizontalAdvance(text.text) + 2, metrics.height() + 2,
                     QColor(QBColor(text.hg)));
    painter.setPen(QBColor(text.vg));
    painter.drawText(text.x + 1, text.y + 1 + metrics.ascent(), text.text);
  }
}

BenchSize Scaled(int64_t texts) {
  return {static_cast<int>(texts), static_cast<int>(texts / 10), static_cast<int>(texts / 50)};
}

void BM_Redraw_Bare(benchmark::State& state) {
  const BenchShapes shapes = Make_Shapes(Scaled(state.range(0)));
  QImage canvas = Make_Canvas(1600, 1000);
  const QImage scan = Make_Canvas(1600, 1000);
  for (auto _ : state) Straightforward(canvas, scan, shapes);
}
BENCHMARK(BM_Redraw_Bare)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

void BM_Redraw_Texts_Bare(benchmark::State& state) {
  const BenchShapes shapes = Make_Shapes({static_cast<int>(state.range(0)), 0, 0});
  QImage canvas = Make_Canvas(1600, 1000);
  const QImage scan = Make_Canvas(1600, 1000);
  for (auto _ : state) Straightforward(canvas, scan, shapes);
}
BENCHMARK(BM_Redraw_Texts_Bare)->Arg(1000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BM_Redraw(benchmark::State& state) {
  const BenchMap map(Scaled(state.range(0)));
  for (auto _ : state) Map_Redraw();
  state.counters["regions"] = Map.EntryRegions.Count();
}
// Areas and lines stop at 1,000 tables of a kind, so the largest case has texts only beyond that.
BENCHMARK(BM_Redraw)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

void BM_Redraw_Texts(benchmark::State& state) {
  const BenchMap map({static_cast<int>(state.range(0)), 0, 0});
  for (auto _ : state) Map_Redraw();
}
BENCHMARK(BM_Redraw_Texts)->Arg(1000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void BM_Redraw_Zoom4(benchmark::State& state) {
  const BenchMap map({1800, 150, 50, 6000, 4000}, 6000, 4000);
  Set_Zoom(4.0);
  for (auto _ : state) Map_Redraw();
}
BENCHMARK(BM_Redraw_Zoom4)->Unit(benchmark::kMillisecond);

void BM_Zoom_Between_Built_Levels(benchmark::State& state) {
  const BenchMap map({1800, 150, 50, 6000, 4000}, 6000, 4000);
  Set_Zoom(2.0);
  Set_Zoom(4.0);
  const int built = Clip_Builds();
  for (auto _ : state) Set_Zoom(Map.Zoom == 4.0F ? 2.0 : 4.0);
  state.counters["built"] = Clip_Builds() - built;
}
BENCHMARK(BM_Zoom_Between_Built_Levels)->Unit(benchmark::kMillisecond);

void BM_Reduce_6000x4000_To_4(benchmark::State& state) {
  const BenchMap map({10, 1, 1, 6000, 4000}, 6000, 4000);
  const QImage scan = Map.MapClip[0].image;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Reduced_Picture(Reduced_Picture(scan, 2), 2));
  }
}
BENCHMARK(BM_Reduce_6000x4000_To_4)->Unit(benchmark::kMillisecond);

// The first zoom-out of a big scan of 32 bits, to the painted window: at once, and after a while without keys.
void First_Zoom_Out(benchmark::State& state, bool idle) {
  const BenchMap map({10, 1, 1, 12'000, 9'000}, 12'000, 9'000);
  QImage scan(12'000, 9'000, QImage::Format_RGB32);
  for (int y = 0; y < scan.height(); ++y)
    for (int x = 0; x < scan.width(); ++x)
      reinterpret_cast<QRgb*>(scan.scanLine(y))[x] = qRgb(x & 255, y & 255, (x * y) & 255);
  for (auto _ : state) {
    state.PauseTiming();
    Set_Zoom(1);
    Set_Map_Picture(scan);
    Map_Redraw();
    while (idle && Prepare_Ahead(8)) continue;
    state.ResumeTiming();
    Set_Zoom(static_cast<double>(state.range(0)) / 100);
  }
}
void BM_First_Zoom_Out(benchmark::State& state) { First_Zoom_Out(state, false); }
void BM_First_Zoom_Out_Later(benchmark::State& state) { First_Zoom_Out(state, true); }
BENCHMARK(BM_First_Zoom_Out)->Arg(133)->Arg(200)->Arg(400)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_First_Zoom_Out_Later)->Arg(400)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Open_Map(benchmark::State& state) {
  const BenchMap map({10'000, 1'000, 0});
  const QString path = map.path;
  for (auto _ : state) {
    state.PauseTiming();
    Close_Map();
    state.ResumeTiming();
    Open_Map(path);
  }
}
BENCHMARK(BM_Open_Map)->Unit(benchmark::kMillisecond);

void BM_Load_Picture_Only(benchmark::State& state) {
  const BenchMap map({10, 1, 1});
  for (auto _ : state) benchmark::DoNotOptimize(Load_Picture(map.path));
}
BENCHMARK(BM_Load_Picture_Only)->Unit(benchmark::kMillisecond);

void BM_Hit_Test(benchmark::State& state) {
  const BenchMap map({10'000, 0, 0});
  int x = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Hit_Entry({x, (x * 7) % 1000}));
    x = (x + 37) % 1600;
  }
}
BENCHMARK(BM_Hit_Test)->Unit(benchmark::kMicrosecond);

}  // namespace
