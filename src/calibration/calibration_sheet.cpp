#include "calibration/calibration_sheet.h"

#include <cmath>
#include <utility>

void CalibrationSheet::Keep() {
  constexpr size_t mostSteps = 500;
  past.push_back(points);
  if (past.size() > mostSteps) past.erase(past.begin());
  future.clear();
}

void CalibrationSheet::Add(const ControlPoint& point) {
  Keep();
  points.push_back(point);
}

void CalibrationSheet::Move(size_t index, QPointF pixel) {
  if (index >= points.size() || points[index].pixel == pixel) return;
  Keep();
  points[index].pixel = pixel;
}

void CalibrationSheet::Set_Place(size_t index, QPointF place) {
  if (index >= points.size() || points[index].place == place) return;
  Keep();
  points[index].place = place;
}

void CalibrationSheet::Switch(size_t index, bool used) {
  if (index >= points.size() || points[index].used == used) return;
  Keep();
  points[index].used = used;
}

void CalibrationSheet::Remove(size_t index) {
  if (index >= points.size()) return;
  Keep();
  points.erase(points.begin() + static_cast<std::ptrdiff_t>(index));
}

void CalibrationSheet::Replace_All(ControlPoints all) {
  if (all == points) return;
  Keep();
  points = std::move(all);
}

void CalibrationSheet::Begin_With(ControlPoints all) {
  points = std::move(all);
  kept = points;
  past.clear();
  future.clear();
}

void CalibrationSheet::Undo() {
  if (past.empty()) return;
  future.push_back(std::exchange(points, std::move(past.back())));
  past.pop_back();
}

void CalibrationSheet::Redo() {
  if (future.empty()) return;
  past.push_back(std::exchange(points, std::move(future.back())));
  future.pop_back();
}

std::optional<size_t> CalibrationSheet::Point_At(QPointF pixel, double reach) const {
  std::optional<size_t> nearest;
  double least = reach;
  for (size_t i = 0; i < points.size(); ++i) {
    const QPointF off = points[i].pixel - pixel;
    const double distance = std::hypot(off.x(), off.y());
    if (distance > least) continue;
    least = distance;
    nearest = i;
  }
  return nearest;
}
