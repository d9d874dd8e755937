#include "tools/free_figure_tool.h"

#include <qnamespace.h>

#include "edit/figure_edit.h"
#include "hand/hand_texts.h"
#include "hand/next_shape.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "tools/map_tool.h"

namespace {

bool In_View(QPoint window) { return QRect(0, 0, Map.ViewWidth, Map.ViewHeight).contains(window); }
QPoint On_Map(QPoint window) { return {Map_X(window.x()), Map_Y(window.y())}; }
QPoint On_Window(QPoint map) { return {Window_X(map.x()), Window_Y(map.y())}; }

class FreeFigureTool final : public MapTool {
 public:
  QString Name() const override { return QStringLiteral("Fig"); }
  QString Status() const override {
    return QStringLiteral(
        "Freie Figur: Klicken setzt Eckpunkte, Rücktaste nimmt den letzten zurück. Doppelklick oder rechte Maustaste: "
        "fertig, Esc: verwerfen.");
  }
  void Press(QPoint window, MouseKeys) override {
    if (!In_View(window)) return;
    const QPoint at = On_Map(window);
    if (vertices.All().empty() || vertices.All().back() != at) vertices.Add(at);
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
      vertices.Take_Back();
      return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    Finish();
    return true;
  }
  DrawnPoints* Points() override { return &vertices; }
  OverPaint Paint_Over() const override {
    if (vertices.All().empty()) return {};
    std::vector<QPointF> shown;
    for (const QPoint& vertex : vertices.All()) shown.emplace_back(On_Window(vertex));
    if (vertices.All().back() != pointer) shown.emplace_back(On_Window(pointer));
    const EntryKind kind = NextShape.rounded ? EntryKind::FreeFigureRound : EntryKind::FreeFigure;
    return Dashed(Figure_Outline(kind, {}, 0, shown));
  }

 private:
  // Too few points: the tool stays, so that the missing ones can be set.
  void Finish() {
    const std::vector<QPoint> drawn = vertices.All();
    if (drawn.size() >= fewestVertices) End_Map_Tool();
    Add_Free_Figure(drawn, NextShape.rounded);
  }

  DrawnPoints vertices{hand_texts::vertex};
  QPoint pointer;
};

}  // namespace

bool Draw_Free_Figure() { return frmMDI.MapOpen && rsEntries && Use_Map_Tool(std::make_unique<FreeFigureTool>()); }
