#pragma once
#include <QPointF>
#include <optional>
#include <vector>

#include "calibration/control_point.h"

// The points of a map while they are set, moved and thrown away, with the way back.
class CalibrationSheet {
 public:
  const ControlPoints& Points() const { return points; }
  // A new one behind all others.
  void Add(const ControlPoint& point);
  // Points count from 0; a number that does not exist changes nothing.
  void Move(size_t index, QPointF pixel);       // to another place of the map
  void Set_Place(size_t index, QPointF place);  // other coordinates
  void Switch(size_t index, bool used);         // whether the fit counts it
  void Remove(size_t index);                    // those behind it move up
  void Replace_All(ControlPoints all);          // all at once, as one step
  // As if nothing had ever been done before.
  void Begin_With(ControlPoints all);
  bool Can_Undo() const { return !past.empty(); }
  bool Can_Redo() const { return !future.empty(); }
  void Undo();  // takes the last step back
  void Redo();  // takes it again
  // Not as it was saved, or begun with.
  bool Changed() const { return points != kept; }
  void Mark_Saved() { kept = points; }

  // The point next to a place of the map, at most `reach` pixels away.
  std::optional<size_t> Point_At(QPointF pixel, double reach) const;

 private:
  void Keep();
  ControlPoints points, kept;
  std::vector<ControlPoints> past, future;
};
