#include "calibration/calibration_plan.h"

#include <algorithm>
#include <cmath>
#include <vector>

NetStyle Style_Of(const CoordinateState& state) {
  NetStyle style;
  if (!state.NetFont.isEmpty()) style.font = state.NetFont;
  style.fontSize = static_cast<int>(state.NetFontSize);
  style.line = state.GridVG;
  style.ground = state.GridHG;
  style.width = std::clamp(state.NetLnBreite, 1, 10);
  style.pattern = state.NetLnStil;
  style.labelEvery = state.NetLabelEvery;
  style.transparent = state.NetTransp;
  return style;
}

double Fitting_Spacing(NetKind kind, double extent) {
  constexpr double fewest = 4;
  static const std::vector<double> degrees = {10,        5,         2,         1,         1 / 2.0,
                                              1 / 4.0,   1 / 6.0,   1 / 12.0,  1 / 30.0,  1 / 60.0,
                                              1 / 120.0, 1 / 360.0, 1 / 720.0, 1 / 3600.0};
  if (kind == NetKind::DegreesGms) {
    for (const double step : degrees)
      if (extent / step >= fewest) return step;
    return degrees.back();
  }
  if (!(extent > 0)) return 1;
  double power = std::pow(10, std::floor(std::log10(extent)));
  for (const double part : {5.0, 2.0, 1.0, 0.5, 0.2, 0.1})
    if (extent / (part * power) >= fewest)
      return Is_Geographic(kind) ? part * power : std::max(1.0, std::nearbyint(part * power));
  return power;
}

QSizeF Extent_Of(const NetFit& fit, QSize map) {
  const double w = map.width(), h = map.height();
  QPointF low, high;
  bool first = true;
  for (const QPointF pixel : {QPointF(0, h / 2), QPointF(w, h / 2), QPointF(w / 2, 0), QPointF(w / 2, h)}) {
    const auto place = fit.Place_Of(pixel);
    if (!place) continue;
    low = first ? *place : QPointF(std::min(low.x(), place->x()), std::min(low.y(), place->y()));
    high = first ? *place : QPointF(std::max(high.x(), place->x()), std::max(high.y(), place->y()));
    first = false;
  }
  return {high.x() - low.x(), high.y() - low.y()};
}
