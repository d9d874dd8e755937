#include "tools/trace_tool.h"

#include <algorithm>
#include <utility>

#include "edit/bulk_change.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"
#include "tools/poly_editor.h"

namespace {

class TraceTool final : public MapTool {
 public:
  explicit TraceTool(TraceListener heard) : listener(std::move(heard)) {}
  QString Name() const override { return QStringLiteral("Fd"); }
  QString Status() const override {
    return QStringLiteral("Fläche digitalisieren: Klicken Sie in einen farbigen Fleck der Karte");
  }

  void Press(QPoint window, MouseKeys) override {
    clicks.Add({Map_X(window.x()), Map_Y(window.y())});
    Trace();
  }
  DrawnPoints* Points() override { return &clicks; }
  bool Outlives_Steps() const override { return true; }
  OverPaint Paint_Over() const override {
    if (!result.Found()) return {};
    QPainterPath path;
    const auto at = [](QPoint map) { return QPointF(Window_X(map.x()), Window_Y(map.y())); };
    path.moveTo(at(result.outline.front()));
    for (const QPoint point : result.outline) path.lineTo(at(point));
    path.closeSubpath();
    return Dashed(path);
  }
  void Dropped() override {
    if (listener.dropped) listener.dropped();
  }

  void Trace() {
    if (!clicks.All().empty()) Show(Traced_Now());
  }
  bool Trace_Less() {
    const BusyPointer busy;
    for (int tolerance = frmMDI.DigiTolerance; !clicks.All().empty() && tolerance > 0;) {
      tolerance -= std::max(1, tolerance / 4);
      TraceResult tried = Traced(tolerance);
      if (!tried.Found() || tried.part >= runOutPart) continue;
      frmMDI.DigiTolerance = tolerance;
      Show(std::move(tried));
      return true;
    }
    return false;
  }
  void Forget() {
    clicks.Keep_Last(0);
    result = {};
    events.HandChanged.Emit();
  }
  const TraceResult& Result() const { return result; }

 private:
  TraceResult Traced(int tolerance) const {
    const TraceRequest request{Map.MapClip[0].image, clicks.All().back(), tolerance, {}};
    return frmMDI.DigiFill ? Digi_Fill(request) : Digi_Trace_RGB(request);
  }
  TraceResult Traced_Now() const {
    const BusyPointer busy;
    return Traced(frmMDI.DigiTolerance);
  }
  // The patch of the click that is the last one now. What was wrong with it was told before.
  void Trace_Former() {
    TraceResult former = clicks.All().empty() ? TraceResult() : Traced_Now();
    former.fault.clear();
    Show(std::move(former));
  }
  void Show(TraceResult found) {
    result = std::move(found);
    events.HandChanged.Emit();
    if (listener.traced) listener.traced(result);
  }

  TraceListener listener;
  DrawnPoints clicks{QStringLiteral("Fleck"), [this] { Trace_Former(); }};
  TraceResult result;
};

TraceTool* Tool() { return dynamic_cast<TraceTool*>(Map_Tool_In_Use()); }

}  // namespace

bool Start_Tracing(TraceListener listener) { return Use_Map_Tool(std::make_unique<TraceTool>(std::move(listener))); }

void End_Tracing() {
  if (Tool()) End_Map_Tool();
}

void Trace_Again() {
  if (TraceTool* tool = Tool()) tool->Trace();
}

bool Trace_Less() {
  TraceTool* tool = Tool();
  return tool && tool->Trace_Less();
}

void Forget_Trace() {
  if (TraceTool* tool = Tool()) tool->Forget();
}

bool Take_Traced_Area() {
  TraceTool* tool = Tool();
  if (!tool || !tool->Result().Found()) return false;
  if (!Append_Poly(PolyEditor::Kind::Area, tool->Result().outline, QStringLiteral("Fläche digitalisieren")))
    return false;
  tool->Forget();
  Show_Changed_Entries();
  return true;
}
