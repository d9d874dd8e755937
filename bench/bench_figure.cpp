#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include "bench_map.h"
#include "hand/activation.h"
#include "tools/drag.h"
#include "windows/canvas/map_window.h"

// Dragging a figure over a map of 2,000 entries, from the mouse event to the painted window; against painting the bare
// picture of the map once.

namespace {

constexpr QRect box(700, 400, 200, 150);

QString Add_Figure() {
  EntryRow row;
  row.ID = QStringLiteral("Figur1");
  row.Schrift = QStringLiteral("F 3");
  row.Typ = 22;
  row.Xmap = box.x();
  row.Ymap = box.y();
  row.Xline = box.width();
  row.Yline = box.height();
  Append_Entry(row);
  rsEntries->MoveLast();
  return rsEntries->Bookmark();
}

void Move_Mouse(MapCanvas& canvas, QPoint at, bool press = false) {
  QMouseEvent event(press ? QEvent::MouseButtonPress : QEvent::MouseMove, at, canvas.mapToGlobal(at),
                    press ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&canvas, &event);
  QApplication::processEvents();
}

void BM_Drag_Figure(benchmark::State& state) {
  const BenchMap map({1'800, 150, 50});
  MapWindow window(nullptr);
  window.resize(Map.ScaleWidth, Map.ScaleHeight);
  window.show();
  QApplication::processEvents();
  const QString figure = Add_Figure();
  Map_Redraw();
  Take_Entry(figure);
  MapCanvas& canvas = window.Canvas();
  Move_Mouse(canvas, box.center(), true);
  int step = 0;
  for (auto _ : state) {
    ++step;
    Move_Mouse(canvas, box.center() + QPoint(20 + step % 300, step % 200));
  }
  state.counters["dragging"] = dragState.Active() && dragState.moved;
  Cancel_Drag();
  End_Entry();
}
BENCHMARK(BM_Drag_Figure)->Unit(benchmark::kMillisecond);

void BM_Bare_Blit(benchmark::State& state) {
  const BenchMap map({1'800, 150, 50});
  QImage window(Map.canvas.size(), QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&window);
    painter.drawImage(0, 0, Map.canvas);
  }
}
BENCHMARK(BM_Bare_Blit)->Unit(benchmark::kMillisecond);

}  // namespace
