#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>
#include <cmath>

#include "calibration/calibration_writer.h"
#include "calibration/crossing.h"
#include "state/global_state.h"

// Calibrating: the fit of many points, the file of a traced net, the crossing under the mouse.

namespace {

constexpr int mapWidth = 6000, mapHeight = 4400;

// Points of a net that is turned by three degrees and misses by up to a pixel.
ControlPoints Many_Points(int count, NetKind kind) {
  const double turn = 0.05, unit = Is_Geographic(kind) ? 2e-5 : 2;
  ControlPoints points;
  for (int i = 0; i < count; ++i) {
    const QPointF pixel((i * 37 % 100) * mapWidth / 100.0, (i * 61 % 97) * mapHeight / 97.0 + i % 7);
    const QPointF turned(pixel.x() + turn * pixel.y(), turn * pixel.x() - pixel.y());
    const QPointF origin = Is_Geographic(kind) ? QPointF(11, 49.8) : QPointF(650000, 5512000);
    points.push_back({pixel + QPointF(std::sin(i), std::cos(i)), origin + turned * unit});
  }
  return points;
}

CalibrationPlan Plan(NetKind kind) {
  CalibrationPlan plan{"Karte.bmp", {mapWidth, mapHeight}, {}, {}, Many_Points(500, kind), {}};
  plan.net.kind = kind;
  plan.net.spacing = Is_Geographic(kind) ? 1 / 60.0 : 1000;
  plan.fit = Fit_Net(plan.points, kind);
  return plan;
}

void Fit_500_Points(benchmark::State& run) {
  const auto kind = static_cast<NetKind>(run.range(0));
  const ControlPoints points = Many_Points(500, kind);
  for (auto _ : run) benchmark::DoNotOptimize(Fit_Net(points, kind));
}
BENCHMARK(Fit_500_Points)
    ->Arg(static_cast<int>(NetKind::Utm))
    ->Arg(static_cast<int>(NetKind::DegreesGms))
    ->Unit(benchmark::kMillisecond);

// 1,200 samples a line; written, read back and compared.
void Save_A_Traced_Net(benchmark::State& run) {
  const QTemporaryDir folder;
  const CalibrationPlan plan = Plan(NetKind::DegreesGms);
  for (auto _ : run) benchmark::DoNotOptimize(Save_Calibration(plan, folder.filePath("Karte.cal")));
}
BENCHMARK(Save_A_Traced_Net)->Unit(benchmark::kMillisecond);

void Lines_Of_A_Traced_Net(benchmark::State& run) {
  const CalibrationPlan plan = Plan(NetKind::DegreesGms);
  for (auto _ : run) benchmark::DoNotOptimize(Calibration_Lines(plan));
}
BENCHMARK(Lines_Of_A_Traced_Net)->Unit(benchmark::kMillisecond);

void Find_A_Crossing(benchmark::State& run) {
  QImage picture(200, 200, QImage::Format_RGB32);
  picture.fill(Qt::white);
  {
    QPainter painter(&picture);
    painter.drawLine(0, 100, 199, 104);
    painter.drawLine(100, 0, 96, 199);
  }
  for (auto _ : run) benchmark::DoNotOptimize(Find_Crossing(picture, {95, 107}, static_cast<int>(run.range(0))));
}
BENCHMARK(Find_A_Crossing)->Arg(14)->Arg(26)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  Reset_Global_State();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
