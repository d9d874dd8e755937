#include "tools/pick_tool.h"

#include <utility>

#include "state/map_state.h"
#include "tools/map_tool.h"

namespace {

class PickTool final : public MapTool {
 public:
  explicit PickTool(PickWish what) : wish(std::move(what)) {}
  QString Name() const override { return wish.name; }
  QString Status() const override { return wish.status; }
  void Press(QPoint window, MouseKeys) override {
    End_Map_Tool();
    wish.taken({Map_X(window.x()), Map_Y(window.y())});
  }
  void Dropped() override {
    if (wish.dropped) wish.dropped();
  }

 private:
  PickWish wish;
};

}  // namespace

bool Pick_Point(PickWish wish) { return Use_Map_Tool(std::make_unique<PickTool>(std::move(wish))); }

void Give_Up_Picking(const QString& name) {
  if (dynamic_cast<PickTool*>(Map_Tool_In_Use()) && Map.Tool == name) Drop_Map_Tool();
}
