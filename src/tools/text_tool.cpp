#include "tools/text_tool.h"

#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "tools/map_tool.h"

namespace {

class TextTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Text"); }
  QString Status() const override { return hand_texts::placeText; }
  void Press(QPoint window, MouseKeys) override {
    End_Map_Tool();
    New_Text(window.x(), window.y());
  }
};

}  // namespace

bool Toggle_Text_Tool() { return Toggle_Map_Tool(std::make_unique<TextTool>()); }

void Insert_Text(std::optional<QPoint> window) {
  if (window)
    New_Text(window->x(), window->y());
  else
    Toggle_Text_Tool();
}
