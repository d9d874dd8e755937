#include "tools/scale_tool.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "hand/hand_texts.h"
#include "state/map_state.h"
#include "tools/map_tool.h"
#include "tools/pick_tool.h"

namespace {

const QString toolName = QStringLiteral("Scale");
constexpr int clickReach = 3, tick = 8;  // window pixels

using Lies = MeasuringLine::Lies;

class MeasureTool final : public MapTool {
 public:
  MeasureTool(std::function<void(const MeasuringLine&)> heard, std::function<void()> gone)
      : drawn(std::move(heard)), dropped(std::move(gone)) {}
  QString Name() const override { return toolName; }
  QString Status() const override { return hand_texts::measure; }

  // A line is drawn by dragging, or by a click at either end.
  void Press(QPoint window, MouseKeys) override {
    if (!drawing) {
      start = window;
      other = {};
      line.from = line.to = Map_At(window);
      line.lies = Lies::Nowhere;
      begun.Keep_Last(0);
      begun.Add(line.from);
    }
    drawing = true;
    Draw_To(window);
  }
  void Move(QPoint window, bool) override {
    if (drawing) Draw_To(window);
  }
  void Release(QPoint window) override {
    if (!drawing) return;
    Draw_To(window);
    const QPoint by = window - start;
    drawing = std::max(std::abs(by.x()), std::abs(by.y())) < clickReach;
  }
  DrawnPoints* Points() override { return &begun; }
  OverPaint Paint_Over() const override {
    QPainterPath path;
    if (line.lies == Lies::Nowhere) return {};
    const QPoint from(Window_X(line.from.x()), Window_Y(line.from.y())),
        to(Window_X(line.to.x()), Window_Y(line.to.y()));
    const QPoint across = line.lies == Lies::Across ? QPoint(0, tick) : QPoint(tick, 0);
    path.moveTo(from);
    path.lineTo(to);
    for (const QPoint end : {from, to}) {
      path.moveTo(end - across);
      path.lineTo(end + across);
    }
    return Dashed(path);
  }
  void Dropped() override {
    if (dropped) dropped();
  }

 private:
  static QPoint Map_At(QPoint window) { return {Map_X(window.x()), Map_Y(window.y())}; }

  void Draw_To(QPoint window) {
    const QPoint at = Map_At(window), by = at - line.from;
    const bool lies = std::abs(by.x()) >= std::abs(by.y());
    line.to = lies ? QPoint(at.x(), line.from.y()) : QPoint(line.from.x(), at.y());
    line.lies = lies ? Lies::Across : Lies::Upright;
    if (drawn) drawn(line);
  }

  std::function<void(const MeasuringLine&)> drawn;
  std::function<void()> dropped;
  // The line goes, or comes again as it was.
  void Walk() {
    drawing = false;
    std::swap(line, other);
    if (drawn) drawn(line);
  }

  MeasuringLine line, other;
  DrawnPoints begun{QStringLiteral("Messlinie"), [this] { Walk(); }};  // where the line was begun
  QPoint start;
  bool drawing = false;
};

}  // namespace

int MeasuringLine::Length() const { return std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y())); }

QPoint MeasuringLine::Upper_Left() const { return {std::min(from.x(), to.x()), std::min(from.y(), to.y())}; }

void Measure_Scale(std::function<void(const MeasuringLine&)> drawn, std::function<void()> dropped) {
  Use_Map_Tool(std::make_unique<MeasureTool>(std::move(drawn), std::move(dropped)));
}

void Place_Scale(std::function<void(QPoint map)> placed, std::function<void()> dropped) {
  Pick_Point({toolName, hand_texts::placeScale, std::move(placed), std::move(dropped)});
}

bool Scale_Tool_In_Use() { return Map_Tool_In_Use() && Map.Tool == toolName; }
