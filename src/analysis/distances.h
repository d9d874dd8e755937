#pragma once
#include <QPoint>
#include <optional>
#include <vector>

// Distances between entries that are clicked one after the other.

enum class DistanceMode {
  Simple,   // between the last two
  Polygon,  // along all of them
  Bundle    // from the first one to each of the others
};

// Those of the given points (map pixels) that are measured: in the simple mode the last two.
std::vector<QPoint> Measured_Points(const std::vector<QPoint>& given, DistanceMode mode);

struct Distances {
  int count = 0;             // of distances
  double last = 0, sum = 0;  // natural lengths
  // Of three points and more. The spread is sqrt(sum of squared deviations) / (count - 1), the root taken first, in
  // single precision.
  std::optional<double> mean;
  std::optional<float> spread;
};
// Two points have one distance in every mode; nothing of fewer.
std::optional<Distances> Measure_Distances(const std::vector<QPoint>& points, DistanceMode mode, double perPixel);

struct DistanceLine {
  QPoint from, to;  // map pixels
};
// The line of the n-th distance (from 0), to be drawn.
DistanceLine Distance_Line(const std::vector<QPoint>& points, DistanceMode mode, int number);
