#include "tools/duplicate_tool.h"

#include "edit/bulk_change.h"
#include "edit/copy.h"
#include "hand/hand_texts.h"
#include "state/map_state.h"
#include "tools/map_tool.h"

namespace {

class DuplicateTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Dupl"); }
  QString Status() const override { return hand_texts::placeDuplicate; }
  bool Keeps_Hand() const override { return true; }
  void Press(QPoint window, MouseKeys) override {
    const QString source = Map.ToolRow;
    End_Map_Tool();
    Place_Duplicate(source, window);
  }
};

}  // namespace

void Duplicate_Entry() {
  if (!On_Current_Entry()) return;
  const QString source = rsEntries->Bookmark();
  if (dynamic_cast<DuplicateTool*>(Map_Tool_In_Use()) && Map.ToolRow == source)
    Drop_Map_Tool();
  else
    Use_Map_Tool(std::make_unique<DuplicateTool>(), source);
}
