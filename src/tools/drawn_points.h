#pragma once
#include <QPoint>
#include <vector>

// The points that a tool was given one by one, in map pixels; those taken back come again in their order.
class DrawnPoints {
 public:
  const std::vector<QPoint>& All() const { return points; }
  bool Can_Take_Back() const { return !points.empty(); }
  bool Can_Bring_Again() const { return !taken.empty(); }
  // Each tells the menus what can be done now. Those taken back go with a new one.
  void Add(QPoint point);
  void Take_Back();    // nothing without points
  void Bring_Again();  // nothing if none was taken back

 private:
  std::vector<QPoint> points, taken;
};
