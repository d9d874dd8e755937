#pragma once
#include <QPoint>
#include <QString>
#include <functional>

// The measuring line: lies or stands, by its longer direction.
struct MeasuringLine {
  QPoint from, to;  // map pixels
  enum class Lies { Nowhere, Across, Upright } lies = Lies::Nowhere;
  int Length() const;         // map pixels
  QPoint Upper_Left() const;  // map pixels
};
// The tool "Scale": every press on the map begins a new line, which is shown until the tool goes. `drawn` hears of each
// change, `dropped` when the tool goes unasked.
void Measure_Scale(std::function<void(const MeasuringLine&)> drawn, std::function<void()> dropped);
// The same tool waits for one click and tells where it was, in map pixels.
void Place_Scale(std::function<void(QPoint map)> placed, std::function<void()> dropped);
bool Scale_Tool_In_Use();  // either of the two
