#include <qnamespace.h>
#include <algorithm>

#include "edit/figure_edit.h"
#include "edit/figure_extras.h"
#include "hand/activation.h"
#include "hand/next_shape.h"
#include "objects/draw_context.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/vertex_table.h"
#include "tools/map_tool.h"

// The tools that place figures: a box drawn by the mouse, and a free figure point by point.

namespace {

const QString toolName = QStringLiteral("Fig");
constexpr int clickReach = 3;  // window pixels that still are a click

bool Map_Is_Open() { return frmMDI.MapOpen && rsEntries != nullptr; }
bool In_View(QPoint window) { return QRect(0, 0, Map.ViewWidth, Map.ViewHeight).contains(window); }
QPoint On_Map(QPoint window) { return {Map_X(window.x()), Map_Y(window.y())}; }
QPoint On_Window(QPoint map) { return {Window_X(map.x()), Window_Y(map.y())}; }

class FigureTool : public MapTool {
 public:
  QString Name() const override { return toolName; }
  QString Status() const override {
    return Figure_Word(Kind()) +
           QStringLiteral(": Linke Maustaste drücken und aufziehen. Ein Klick setzt sie in der gewählten Größe.");
  }
  void Down(QPoint window, MouseKeys) override {
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
  void Up(QPoint window) override {
    if (!pressed) return;
    Move(window, true);
    pressed = false;
    End_Map_Tool();
    if (!dragged) {
      Place_Figure(start);
      return;
    }
    const QRect box = Window_Box();
    LiveControl& shape = Map.lblShape;
    shape.Left = box.left();
    shape.Top = box.top();
    shape.Width = std::max(1, box.width());
    shape.Height = std::max(1, box.height());
    shape.Tag = QStringLiteral("Neu");
    Store_Figure();
    shape.Tag = QStringLiteral("Old");
  }
  QPainterPath Outline() const override {
    return pressed && dragged ? Figure_Outline(Kind(), QRectF(Window_Box())) : QPainterPath();
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

class FreeFigureTool : public MapTool {
 public:
  QString Name() const override { return toolName; }
  QString Status() const override {
    return QStringLiteral(
        "Freie Figur: Klicken setzt Eckpunkte, Rücktaste nimmt den letzten zurück. Doppelklick oder rechte Maustaste: "
        "fertig, Esc: verwerfen.");
  }
  void Down(QPoint window, MouseKeys) override {
    if (!In_View(window)) return;
    const QPoint at = On_Map(window);
    if (vertices.empty() || vertices.back() != at) vertices.push_back(at);
    pointer = at;
  }
  void Move(QPoint window, bool) override { pointer = On_Map(window); }
  void Double_Click(QPoint) override { Finish(); }
  bool Right_Click(QPoint) override {
    Finish();
    return true;
  }
  bool Key(int key, MouseKeys) override {
    if (key == Qt::Key_Backspace) {
      if (!vertices.empty()) vertices.pop_back();
      return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    Finish();
    return true;
  }
  QPainterPath Outline() const override {
    if (vertices.empty()) return {};
    std::vector<QPointF> shown;
    for (const QPoint& vertex : vertices) shown.emplace_back(On_Window(vertex));
    if (vertices.back() != pointer) shown.emplace_back(On_Window(pointer));
    return Figure_Outline(NextShape.rounded ? EntryKind::FreeFigureRound : EntryKind::FreeFigure, {}, 0, shown);
  }

 private:
  // Too few points: the tool stays, so that the missing ones can be set.
  void Finish() {
    const std::vector<QPoint> drawn = vertices;
    if (drawn.size() >= fewestVertices) End_Map_Tool();
    Add_Free_Figure(drawn, NextShape.rounded);
  }

  std::vector<QPoint> vertices;  // map pixels
  QPoint pointer;
};

class TurnTool : public MapTool {
 public:
  TurnTool(const EntryRow& row, QString key, std::function<void(double)> whenMoved,
           std::function<void(std::optional<double>)> whenEnded)
      : figure(row),
        is(GetAbmessungen(row)),
        bookmark(std::move(key)),
        moved(std::move(whenMoved)),
        ended(std::move(whenEnded)),
        angle(is.angle) {
    if (EntryType::Parse(row.Typ).IsFreeFigure())
      for (const QPoint& vertex : Load_Vertices(EntryId::Parse(row.ID).TableName())) vertices.push_back(vertex);
  }
  QString Name() const override { return QStringLiteral("Dreh"); }
  QString Status() const override {
    return QStringLiteral("Figur drehen: Bewegen Sie die Maus um die Figur und klicken Sie. Esc: abbrechen.");
  }
  void Down(QPoint window, MouseKeys) override {
    Move(window, true);
    Finish(angle);
  }
  void Move(QPoint window, bool) override {
    pointer = On_Map(window);
    angle = GetWinkel({is.CenterX, is.CenterY}, pointer);
    if (moved) moved(angle);
  }
  bool Right_Click(QPoint) override {
    Finish(std::nullopt);
    return true;
  }
  bool Key(int key, MouseKeys) override {
    if (key != Qt::Key_Escape) return false;
    Finish(std::nullopt);
    return true;
  }
  QPainterPath Outline() const override {
    const auto x = [](double map) { return (map - Map.ViewLeft) / static_cast<double>(Map.Zoom); };
    const auto y = [](double map) { return (map - Map.ViewTop) / static_cast<double>(Map.Zoom); };
    std::vector<QPointF> shown;
    for (const QPointF& vertex : vertices) shown.emplace_back(x(vertex.x()), y(vertex.y()));
    const QRectF box(QPointF(x(is.x), y(is.y)), QPointF(x(is.x + is.w), y(is.y + is.h)));
    QPainterPath path = Figure_Outline(EntryType::Parse(figure.Typ).Kind(), box, angle, shown);
    const QPointF end =
        Turned(box.center() + QPointF(is.Radius / static_cast<double>(Map.Zoom) + axisBeyond, 0), box.center(), angle);
    path.moveTo(box.center());
    path.lineTo(end);
    return path;
  }
  void Dropped() override {
    if (ended) ended(std::nullopt);
  }

 private:
  static constexpr double axisBeyond = 20;  // window pixels

  void Finish(std::optional<double> chosen) {
    const auto tell = std::move(ended);
    ended = nullptr;
    End_Map_Tool();
    Take_Entry(bookmark);
    if (tell) tell(chosen);
  }

  EntryRow figure;
  FigureMeasures is;
  QString bookmark;
  std::function<void(double)> moved;
  std::function<void(std::optional<double>)> ended;
  double angle;
  std::vector<QPointF> vertices;  // map pixels
  QPointF pointer;
};

}  // namespace

bool Choose_Figure(EntryKind kind) {
  const bool again = dynamic_cast<FigureTool*>(Map_Tool_In_Use()) && NextShape.figure == static_cast<int>(kind);
  NextShape.figure = static_cast<int>(kind);
  if (again) Drop_Map_Tool();
  if (again || !Map_Is_Open()) return false;
  return Use_Map_Tool(std::make_unique<FigureTool>());
}

bool Draw_Free_Figure() { return Map_Is_Open() && Use_Map_Tool(std::make_unique<FreeFigureTool>()); }

bool Turn_By_Mouse(std::function<void(double)> moved, std::function<void(std::optional<double>)> ended) {
  const std::optional<EntryRow> row = Figure_In_Hand();
  if (!row) return false;
  const QString bookmark = Map.InHand;
  return Use_Map_Tool(std::make_unique<TurnTool>(*row, bookmark, std::move(moved), std::move(ended)));
}
