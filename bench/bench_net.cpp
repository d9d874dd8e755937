#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QPainter>

#include "objects/net_draw.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "view/cursor_coordinates.h"

// The coordinate net against the same lines drawn straightforwardly with the toolkit's painter.

namespace {

constexpr int mapWidth = 6000, mapHeight = 4400, lineCount = 250, samplePixels = 5;

// 250 curved parallels and 250 curved meridians with a sample every 5 pixels.
CoordinateState Curved_Net() {
  CoordinateState state;
  state.Grid = gridGeographic;
  state.MapWidthPx = mapWidth;
  state.MapHeightPx = mapHeight;
  state.GridVG = 12;
  for (NetLine* line : {&state.NetB[1], &state.NetL[1]}) {
    line->Step = samplePixels;
    line->Count = 1;
  }
  const auto build = [](auto& lines, auto& labels, int length, int width, bool across) {
    for (int i = 0; i < lineCount; ++i) {
      auto& line = lines.emplace_back();
      const int at = width * i / lineCount;
      for (int run = 0; run <= length; run += samplePixels) {
        const double bow = 40.0 * run / length * (1 - static_cast<double>(run) / length) + 0.02 * run;
        const auto side = static_cast<std::int16_t>(at + bow);
        line.push_back(across ? NetPt{static_cast<std::int16_t>(run), side}
                              : NetPt{side, static_cast<std::int16_t>(run)});
      }
      NetLabel label;
      label.Text = QStringLiteral("49°%1'B").arg(i % 60);
      labels.push_back(label);
    }
  };
  build(state.NetBLines, state.NetBLabels, mapWidth, mapHeight, true);
  build(state.NetLLines, state.NetLLabels, mapHeight, mapWidth, false);
  return state;
}

ViewTransform View_Of(const benchmark::State& state) {
  return {.Left = 1000, .Top = 800, .Zoom = static_cast<double>(state.range(0)) / 100};
}

void BM_Net_Bare(benchmark::State& state) {
  const CoordinateState net = Curved_Net();
  QImage image = Make_Canvas(1600, 1000);
  const ViewTransform view = View_Of(state);
  for (auto _ : state) {
    QPainter painter(&image);
    painter.setPen(QColor(QBColor(12)));
    for (const auto* lines : {&net.NetBLines, &net.NetLLines})
      for (const auto& line : *lines)
        for (size_t k = 1; k < line.size(); ++k)
          painter.drawLine(view.Point(QPointF(line[k - 1].X, line[k - 1].Y)).toPoint(),
                           view.Point(QPointF(line[k].X, line[k].Y)).toPoint());
  }
}
BENCHMARK(BM_Net_Bare)->Arg(25)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond);

void BM_Net(benchmark::State& state) {
  const CoordinateState net = Curved_Net();
  QImage image = Make_Canvas(1600, 1000);
  const auto surface = Make_Surface(image);
  DrawContext context{*surface, View_Of(state), QRectF(0, 0, 1600, 1000)};
  for (auto _ : state) Draw_Net(context, net);
}
BENCHMARK(BM_Net)->Arg(25)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond);

void BM_Cursor_Metric(benchmark::State& state) {
  Coord = {};
  Coord.Grid = gridUtm;
  Coord.MeterPerPix = 2.1;
  Coord.Inclin = 0.02;
  Coord.GridR = 646000;
  Coord.GridH = 5512000;
  Coord.GridDatum = QStringLiteral("WGS-84");
  Coord.ZoneText = QStringLiteral("32U");
  frmMDI.mouseUnit = MouseUnit::Coordinates;
  int x = 0;
  for (auto _ : state) benchmark::DoNotOptimize(Cursor_Texts({++x % 3000, 700}));
}
BENCHMARK(BM_Cursor_Metric)->Unit(benchmark::kMicrosecond);

}  // namespace
