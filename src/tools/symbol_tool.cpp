#include "tools/symbol_tool.h"

#include "edit/symbols.h"
#include "hand/hand_texts.h"
#include "tools/map_tool.h"

namespace {

class SymbolTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Symb"); }
  QString Status() const override { return hand_texts::placeSymbol; }
  // What could not be stored was told: the next click tries again.
  void Press(QPoint window, MouseKeys) override {
    if (Place_Symbol(window)) End_Map_Tool();
  }
};

}  // namespace

bool Toggle_Symbol_Tool() { return Toggle_Map_Tool(std::make_unique<SymbolTool>()); }
