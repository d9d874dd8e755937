#pragma once
#include <optional>
#include <vector>

#include "plansquares/plan_labels.h"
#include "platform/database.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "view/draw_counts.h"
#include "view/draw_pass.h"

// Draws the plan squares of one pass: each where its row stands, their labels over all entries at the end.
class PlanPainter {
 public:
  explicit PlanPainter(DrawPass& drawPass);
  // Takes the row of a square or of the design into account, also a hidden one. Errors pass through.
  void Note(const Recordset& rows, const PaintedRow& row, DrawCounts& counts);
  // The square where its row stands.
  void Draw(const Recordset& rows, const PaintedRow& row);
  // Labels and, on the map window, the hit regions: they lie below those of smaller entries.
  void Finish();

 private:
  int Plan_Mode();
  void Add_Regions();

  struct Square {
    PlanLabel label;
    QRectF box;
    bool inactive = false;
  };
  DrawPass& pass;
  PlanLabels labels;
  std::vector<Square> squares;  // in the window
  bool noted = false;           // there is a row of the raster
  std::optional<int> planMode;  // negative: the squares are not drawn
};
