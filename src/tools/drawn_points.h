#pragma once
#include <QPoint>
#include <QString>
#include <functional>
#include <utility>
#include <vector>

// The points that a tool was given one by one, in map pixels; those taken back come again in their order.
class DrawnPoints {
 public:
  // What one of them is called, and what is to be done after one was taken back or came again.
  explicit DrawnPoints(QString what, std::function<void()> then = {})
      : name(std::move(what)), walked(std::move(then)) {}
  const QString& Name() const { return name; }
  const std::vector<QPoint>& All() const { return points; }
  bool Can_Take_Back() const { return !points.empty(); }
  bool Can_Bring_Again() const { return !taken.empty(); }
  // Each tells the menus what can be done now. Those taken back go with a new one.
  void Add(QPoint point);
  void Keep_Last(size_t count);  // the others go, and none comes again
  void Take_Back();              // nothing without points
  void Bring_Again();            // nothing if none was taken back

 private:
  void Pass(std::vector<QPoint>& from, std::vector<QPoint>& to);

  QString name;
  std::function<void()> walked;
  std::vector<QPoint> points, taken;
};
