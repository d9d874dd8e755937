#include "tools/magnifier.h"

#include "hand/hand_texts.h"
#include "state/dialog_hooks.h"
#include "state/map_state.h"
#include "tools/map_tool.h"
#include "view/redraw.h"
#include "view/view.h"

namespace {

constexpr double smallestZoom = 0.125;

class Magnifier final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Lupe"); }
  QString Status() const override { return hand_texts::lupe; }
  void Press(QPoint window, MouseKeys) override {
    const auto zoom = static_cast<double>(Map.Zoom);
    const double wanted = std::max(smallestZoom, zoom / 2), ratio = wanted / zoom;
    if (ratio >= 1) return;
    // The view keeps what is under a given position: this is the one that brings the click into the middle.
    const auto fixed = [ratio](int at, int size) { return qRound((at - size / 2.0 * ratio) / (1 - ratio)); };
    Zoom_At(wanted, fixed(window.x(), Map.ViewWidth), fixed(window.y(), Map.ViewHeight));
  }
  bool Right_Click(QPoint) override {
    if (dialogHooks.ZoomWindow) dialogHooks.ZoomWindow();
    return true;
  }
  bool Escape() override {
    Toggle_Lupe();
    return true;
  }
};

}  // namespace

void Toggle_Lupe() {
  if (!Tool_Laid_Over()) {
    Lay_Tool_Over(std::make_unique<Magnifier>());
    Delete_Regions();
    return;
  }
  Take_Tool_Off();
  Map_Redraw();
}
