#pragma once
#include <QString>
#include <vector>

#include "hand/hand_texts.h"
#include "tools/map_tool.h"

// Drawing a line or area point by point. A left click sets a vertex, Backspace or taking back a step takes the last
// one back; a double click, the right button or Enter ends, Esc drops. The vertices are kept in map pixels: the map can
// be scrolled and zoomed meanwhile. The entry is written at the end, row and vertices in one transaction, and comes
// into hand.
class PolyEditor final : public MapTool {
 public:
  enum class Kind { Line, Area };
  explicit PolyEditor(Kind what) : kind(what) {}

  QString Name() const override;
  QString Status() const override;
  void Press(QPoint window, MouseKeys keys) override;
  void Move(QPoint window, bool leftDown) override;
  void Double_Click(QPoint window) override;
  bool Right_Click(QPoint window) override;
  bool Key(int key, MouseKeys keys) override;
  DrawnPoints* Points() override { return &points; }
  OverPaint Paint_Over() const override;

 private:
  void Finish();

  Kind kind;
  DrawnPoints points{hand_texts::vertex};
  QPoint mouse;  // window pixels
};

// Starts it, or drops it if it is in use. No area is begun when 1000 are there; that is told.
void Poly_Editor(PolyEditor::Kind kind);

// A new row of that kind that looks like the next one, with these vertices (map pixels), in one transaction; it is the
// current entry then. False if no more can be made, or an error took it back; both are told, the latter under `title`.
bool Append_Poly(PolyEditor::Kind kind, const std::vector<QPoint>& points, const QString& title);
