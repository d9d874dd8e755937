#include "tools/figure_tool.h"

#include <algorithm>

#include "edit/figure_edit.h"
#include "hand/next_shape.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"

namespace {

constexpr int clickReach = 3;  // window pixels that still are a click

bool In_View(QPoint window) { return QRect(0, 0, Map.ViewWidth, Map.ViewHeight).contains(window); }
QPoint On_Map(QPoint window) { return {Map_X(window.x()), Map_Y(window.y())}; }
QPoint On_Window(QPoint map) { return {Window_X(map.x()), Window_Y(map.y())}; }

class FigureTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Fig"); }
  QString Status() const override {
    return Figure_Word(Kind()) +
           QStringLiteral(": Linke Maustaste drücken und aufziehen. Ein Klick setzt sie in der gewählten Größe.");
  }
  void Press(QPoint window, MouseKeys) override {
    if (!In_View(window)) return;
    pressed = true;
    dragged = false;
    start = On_Map(window);
    now = window;
  }
  void Move(QPoint window, bool leftDown) override {
    if (!pressed) return;
    if (!leftDown) {  // let go where nobody told it
      pressed = dragged = false;
      return;
    }
    now = {std::clamp(window.x(), 0, Map.ViewWidth), std::clamp(window.y(), 0, Map.ViewHeight)};
    const QPoint way = now - On_Window(start);
    dragged = dragged || std::max(std::abs(way.x()), std::abs(way.y())) >= clickReach;
  }
  void Release(QPoint window) override {
    if (!pressed) return;
    Move(window, true);
    pressed = false;
    End_Map_Tool();
    if (!dragged) {
      Place_Figure(start);
      return;
    }
    const QRect box = Window_Box();
    const auto length = [](int pixels) { return qRound(std::max(1, pixels) * static_cast<double>(Map.Zoom)); };
    Store_Figure(FigureOf::Next, {Map_X(box.left()), Map_Y(box.top()), length(box.width()), length(box.height())});
  }
  OverPaint Paint_Over() const override {
    return pressed && dragged ? Dashed(Figure_Outline(Kind(), QRectF(Window_Box()))) : OverPaint();
  }

 private:
  static EntryKind Kind() { return static_cast<EntryKind>(NextShape.figure); }

  // Stays on the map; squares and circles take the longer way, as far as there is room.
  QRect Window_Box() const {
    const QPoint from = On_Window(start);
    QPoint way = now - from;
    if (Keeps_Square(Kind())) {
      const int roomX = way.x() < 0 ? from.x() : Map.ViewWidth - from.x();
      const int roomY = way.y() < 0 ? from.y() : Map.ViewHeight - from.y();
      const int side = std::min({std::max(std::abs(way.x()), std::abs(way.y())), roomX, roomY});
      way = {way.x() < 0 ? -side : side, way.y() < 0 ? -side : side};
    }
    const QPoint to = from + way;
    return {QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
            QSize(std::abs(way.x()), std::abs(way.y()))};
  }

  bool pressed = false, dragged = false;
  QPoint start;  // map pixels
  QPoint now;    // window pixels
};

}  // namespace

bool Choose_Figure(EntryKind kind) {
  const bool again = dynamic_cast<FigureTool*>(Map_Tool_In_Use()) && NextShape.figure == static_cast<int>(kind);
  NextShape.figure = static_cast<int>(kind);
  if (again) Drop_Map_Tool();
  if (again || !frmMDI.MapOpen || !rsEntries) return false;
  return Use_Map_Tool(std::make_unique<FigureTool>());
}

bool Figure_Tool_In_Use() { return Map_Tool_In_Use() && Map.Tool == QLatin1String("Fig"); }

void Drop_Figure_Tool() {
  if (Figure_Tool_In_Use()) Drop_Map_Tool();
}
