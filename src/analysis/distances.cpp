#include "analysis/distances.h"

#include <algorithm>
#include <cmath>

std::vector<QPoint> Measured_Points(const std::vector<QPoint>& given, DistanceMode mode) {
  return mode == DistanceMode::Simple && given.size() > 2 ? std::vector<QPoint>(given.end() - 2, given.end()) : given;
}

DistanceLine Distance_Line(const std::vector<QPoint>& points, DistanceMode mode, int number) {
  const auto to = static_cast<size_t>(number) + 1;
  return {mode == DistanceMode::Bundle ? points.front() : points[to - 1], points[to]};
}

std::optional<Distances> Measure_Distances(const std::vector<QPoint>& points, DistanceMode mode, double perPixel) {
  if (points.size() < 2) return {};
  Distances result;
  double squares = 0;
  result.count = static_cast<int>(points.size()) - 1;
  for (int i = 0; i < result.count; ++i) {
    const auto [from, to] = Distance_Line(points, mode, i);
    const double dx = (to.x() - from.x()) * perPixel, dy = (to.y() - from.y()) * perPixel;
    result.last = std::sqrt(dy * dy + dx * dx);
    result.sum += result.last;
    squares += result.last * result.last;
  }
  if (result.count < 2 || !(result.sum > 0)) return result;
  result.mean = result.sum / result.count;
  const double deviations = std::max(0.0, squares - *result.mean * *result.mean * result.count);
  result.spread = static_cast<float>(std::sqrt(deviations) / (result.count - 1));
  return result;
}
