#include "analysis/distance_tool.h"

#include <utility>

#include "analysis/color_assignment.h"
#include "analysis/map_input.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "tools/map_tool.h"
#include "view/hit_test.h"

namespace {

constexpr double lineWidth = 2, markRadius = 4;

// Where the entry is measured from; nothing if it is gone.
std::optional<QPoint> Place_Of(const QString& bookmark, QPoint clicked) {
  const auto row = Sound_Entry_At(bookmark);
  if (!row) return {};
  const EntryType type = EntryType::Parse(row->Typ);
  if (type.IsText() || type.Kind() == EntryKind::Picture) return Entry_Place(*row);
  if (!type.IsFigure() && type.Kind() != EntryKind::PlanSquare) return clicked;
  const EntryBox box = entry_box(*row);
  return QPoint(box.x + box.width / 2, box.y + box.height / 2);
}

QPointF On_Window(QPoint map) { return QPointF(Window_X(map.x()), Window_Y(map.y())); }

class DistanceTool final : public MapTool {
 public:
  DistanceTool(DistanceMode how, DistanceWatch who) : mode(how), watch(std::move(who)) {}
  QString Name() const override { return QStringLiteral("Distanz"); }
  QString Status() const override {
    return points.All().empty() ? distance_texts::first : QString(distance_texts::next).replace(u'\n', u' ');
  }
  QString Status_Key() const override { return Name() + QString::number(points.All().empty()); }

  void Press(QPoint window, MouseKeys) override {
    const int hit = Hit_Entry(window);
    if (hit == 0) return;
    const QString bookmark = Map.EntryRegions.Row(hit).Bookmark();
    if (!points.All().empty() && bookmark == last) return;
    const auto place = Place_Of(bookmark, {Map_X(window.x()), Map_Y(window.y())});
    if (!place || (!points.All().empty() && points.All().back() == *place)) return;
    points.Add(*place);
    last = bookmark;
    Tell();
  }
  bool Right_Click(QPoint) override { return true; }
  DrawnPoints* Points() override { return &points; }
  bool Outlives_Steps() const override { return true; }
  void Dropped() override {
    if (watch.dropped) watch.dropped();
  }

  OverPaint Paint_Over() const override {
    OverPaint paint;
    const std::vector<QPoint> measured = Measured_Points(points.All(), mode);
    if (measured.empty()) return paint;
    QPainterPath first;
    first.addEllipse(On_Window(measured.front()), markRadius, markRadius);
    paint.push_back({first, QBColor(13), lineWidth});
    const int count = static_cast<int>(measured.size()) - 1;
    for (int i = 0; i < count; ++i) {
      const auto [from, to] = Distance_Line(measured, mode, i);
      QPainterPath path;
      path.moveTo(On_Window(from));
      path.lineTo(On_Window(to));
      paint.push_back({path, QBColor(i == count - 1 ? 12 : 13), lineWidth});
    }
    return paint;
  }

  void Set_Mode(DistanceMode how) {
    // Another mode goes on with what was measured until now.
    if (mode == DistanceMode::Simple || how == DistanceMode::Simple) points.Keep_Last(2);
    mode = how;
    Tell();
    events.HandChanged.Emit();
  }

 private:
  void Tell() const {
    if (!watch.changed) return;
    const std::vector<QPoint> measured = Measured_Points(points.All(), mode);
    watch.changed(static_cast<int>(measured.size()), Measure_Distances(measured, mode, Read_Map_Measure().perPixel));
  }
  // What stands there of points that are gone goes as well.
  void Tell_Anew() {
    last.clear();
    if (watch.changed) watch.changed(0, {});
    Tell();
  }

  DistanceMode mode;
  DistanceWatch watch;
  DrawnPoints points{QStringLiteral("Messpunkt"), [this] { Tell_Anew(); }};
  QString last;  // row key of the entry clicked last
};

DistanceTool* In_Use() { return dynamic_cast<DistanceTool*>(Map_Tool_In_Use()); }

}  // namespace

bool Start_Measuring(DistanceMode mode, DistanceWatch watch) {
  return Use_Map_Tool(std::make_unique<DistanceTool>(mode, std::move(watch)));
}

void Set_Measuring_Mode(DistanceMode mode) {
  if (DistanceTool* tool = In_Use()) tool->Set_Mode(mode);
}

void End_Measuring() {
  if (In_Use()) End_Map_Tool();
}
