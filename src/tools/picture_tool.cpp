#include "tools/picture_tool.h"

#include "edit/copy.h"
#include "hand/activation.h"
#include "hand/hand_texts.h"
#include "state/global_state.h"
#include "tools/map_tool.h"

namespace {

class PictureTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Bild"); }
  QString Status() const override { return hand_texts::placePicture; }
  void Press(QPoint window, MouseKeys) override {
    End_Map_Tool();
    if (Add_Picture(window, QString()) && rsEntries->Position() > 0) Take_Entry(rsEntries->Bookmark());
  }
};

}  // namespace

bool Toggle_Picture_Tool() { return Toggle_Map_Tool(std::make_unique<PictureTool>()); }
