#pragma once
#include <QPointF>
#include <QSize>

// A kilometre net of the zone 32 on a map: R 646 000, H 5 512 000 lie at `origin`, a line every `distance` pixels.
inline CoordinateState Utm_Net(QSize map, QPoint origin, float distance, double slope = 0) {
  CoordinateState net;
  net.Grid = gridUtm;
  net.MapWidthPx = map.width(), net.MapHeightPx = map.height();
  net.Xmap = origin.x(), net.Ymap = origin.y();
  net.GridR = 646000, net.GridH = 5512000, net.Gwidth = 1000;
  net.Xline = net.Yline = distance;
  net.Inclin = slope;
  net.MeterPerPix = 1000 / static_cast<double>(distance);
  net.ZoneText = QStringLiteral("32U"), net.ZoneNumber = 32;
  net.GridDatum = QStringLiteral("WGS-84");
  return net;
}

// A geographic net with straight lines: its north-west corner lies at the origin of the map.
inline CoordinateState Degree_Net(QSize map, QPointF northWest, double degreesPerPixel, const QString& datum) {
  constexpr int run = 100;  // pixels between samples
  CoordinateState net;
  net.Grid = gridGeographic;
  net.MapWidthPx = map.width(), net.MapHeightPx = map.height();
  net.GridDatum = datum;
  const auto fill = [](NetLine& line, std::vector<std::int16_t>& samples, int length, int place, double degrees) {
    line.Deg64 = degrees;
    line.Deg = static_cast<float>(degrees);
    line.Step = run;
    line.Count = static_cast<std::int16_t>(length / run + 2);
    samples.assign(static_cast<size_t>(line.Count) + 1, static_cast<std::int16_t>(place));
  };
  for (int n = 1; n <= 3; ++n) {
    const auto i = static_cast<size_t>(n);
    const int x = (n - 1) * map.width() / 2, y = (n - 1) * map.height() / 2;
    fill(net.NetL[i], net.NetLPix[i], map.height(), x, northWest.x() + x * degreesPerPixel);
    fill(net.NetB[i], net.NetBPix[i], map.width(), y, northWest.y() - y * degreesPerPixel);
  }
  return net;
}

// The lines of a calibration file of a kilometre net.
inline QStringList Utm_Calibration(QPoint origin, int distance, double slope = 0.01, int right = 646000) {
  return {QStringLiteral("Grid UTM Zone: 32U D: WGS-84 R: %1 H: 5512000").arg(right),
          QStringLiteral("Gwidth = 1000"),
          QStringLiteral("Inclin = %1").arg(slope, 0, 'f', 7),
          QStringLiteral("Xmap = %1").arg(origin.x()),
          QStringLiteral("Ymap = %1").arg(origin.y()),
          QStringLiteral("Xline = %1").arg(distance),
          QStringLiteral("Yline = %1").arg(distance)};
}
