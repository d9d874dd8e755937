#include <benchmark/benchmark.h>

#include <QBitmap>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <random>

#include "tools/area_trace.h"

// Digitising a patch of 600 x 600 pixels on a map of 2000 x 1400, by either way, against what the toolkit needs to turn
// a ready mask of it into an outline.

namespace {

constexpr QSize mapSize(2000, 1400);
constexpr QRect patch(700, 400, 600, 600);

const QImage& Scan(bool grain) {
  static const auto make = [](bool withGrain) {
    QImage picture(mapSize, QImage::Format_RGB32);
    picture.fill(qRgb(250, 245, 230));
    QPainter painter(&picture);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(120, 180, 90));
    painter.drawEllipse(patch);
    painter.end();
    if (!withGrain) return picture;
    std::mt19937 random(1);
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        picture.setPixel(x, y, QColor(picture.pixel(x, y)).darker(100 + static_cast<int>(random() % 6)).rgb());
    return picture;
  };
  static const QImage plain = make(false), grained = make(true);
  return grain ? grained : plain;
}

void Follow(benchmark::State& state) {
  const TraceRequest request{Scan(state.range(0) != 0), patch.center(), state.range(0) != 0 ? 20 : 10, {}};
  TraceResult result;
  for (auto _ : state) benchmark::DoNotOptimize(result = Digi_Trace_RGB(request));
  if (!result.Found()) state.SkipWithError(qPrintable(result.fault));
  state.counters["corners"] = static_cast<double>(result.outline.size());
}

void Fill(benchmark::State& state) {
  const TraceRequest request{Scan(state.range(0) != 0), patch.center(), 10, {}};
  TraceResult result;
  for (auto _ : state) benchmark::DoNotOptimize(result = Digi_Fill(request));
  if (!result.Found()) state.SkipWithError(qPrintable(result.fault));
  state.counters["corners"] = static_cast<double>(result.outline.size());
}

// Bare: mask of one colour, its region, the region's outline.
void Bare_Contour(benchmark::State& state) {
  const QImage part = Scan(false).copy(patch.adjusted(-20, -20, 20, 20));
  for (auto _ : state) {
    QPainterPath path;
    path.addRegion(QRegion(QBitmap::fromImage(part.createMaskFromColor(qRgb(120, 180, 90), Qt::MaskOutColor))));
    benchmark::DoNotOptimize(path = path.simplified());
  }
}

BENCHMARK(Bare_Contour)->Unit(benchmark::kMillisecond);
BENCHMARK(Follow)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Fill)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
