#include "tools/turn_tool.h"

#include <utility>
#include <vector>

#include "edit/figure_edit.h"
#include "edit/figure_extras.h"
#include "hand/activation.h"
#include "objects/draw_context.h"
#include "state/map_state.h"
#include "store/vertex_table.h"
#include "tools/map_tool.h"

namespace {

class TurnTool final : public MapTool {
 public:
  TurnTool(const EntryRow& row, std::function<void(double)> whenMoved,
           std::function<void(std::optional<double>)> whenEnded)
      : figure(row),
        is(GetAbmessungen(row)),
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
  void Press(QPoint window, MouseKeys) override {
    Move(window, true);
    Finish(angle);
  }
  void Move(QPoint window, bool) override {
    pointer = QPoint(Map_X(window.x()), Map_Y(window.y()));
    angle = GetWinkel({is.CenterX, is.CenterY}, pointer);
    if (moved) moved(angle);
  }
  bool Right_Click(QPoint) override {
    Finish(std::nullopt);
    return true;
  }
  bool Escape() override {
    Finish(std::nullopt);
    return true;
  }
  OverPaint Paint_Over() const override {
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
    return Dashed(path);
  }
  void Dropped() override {
    if (ended) ended(std::nullopt);
  }

 private:
  static constexpr double axisBeyond = 20;  // window pixels

  void Finish(std::optional<double> chosen) {
    const auto tell = std::exchange(ended, nullptr);
    const QString bookmark = Map.ToolRow;
    End_Map_Tool();
    Take_Entry(bookmark);
    if (tell) tell(chosen);
  }

  EntryRow figure;
  FigureMeasures is;
  std::function<void(double)> moved;
  std::function<void(std::optional<double>)> ended;
  double angle;
  std::vector<QPointF> vertices;  // map pixels
  QPointF pointer;
};

}  // namespace

bool Turn_By_Mouse(std::function<void(double)> moved, std::function<void(std::optional<double>)> ended) {
  const std::optional<EntryRow> row = Figure_In_Hand();
  if (!row) return false;
  const QString bookmark = Map.InHand;
  return Use_Map_Tool(std::make_unique<TurnTool>(*row, std::move(moved), std::move(ended)), bookmark);
}
