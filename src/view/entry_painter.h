#pragma once
#include "platform/database.h"
#include "view/draw_counts.h"
#include "view/draw_pass.h"
#include "view/plan_painter.h"
#include "view/text_painter.h"

// Draws the rows of a table one after the other onto the surface of a context: the per-row rules of the redraw. One
// object serves one pass.
class EntryPainter {
 public:
  explicit EntryPainter(DrawContext& context);
  // The current row of the recordset. Errors pass through; the rows behind it can be drawn all the same.
  void Draw_Row(Recordset& rows);
  // After the last row: labels of plan squares over all entries, and their hit regions.
  void Finish();
  const DrawCounts& Counts() const { return counts; }

 private:
  void Draw_What_There_Is(Recordset& rows);
  bool Is_Shown(const PaintedRow& row, bool northArrow);
  void Draw_Kind(Recordset& rows, PaintedRow& row);
  bool Read_Place(const Recordset& rows, PaintedRow& row) const;
  void Draw_Polygon_Row(const Recordset& rows, const PaintedRow& row);
  void Draw_Picture_Row(const Recordset& rows, const PaintedRow& row);
  void Draw_Shape_Row(const Recordset& rows, const PaintedRow& row);
  void Draw_Scale_Row(Recordset& rows, const PaintedRow& row);
  void Draw_North_Arrow_Row(const Recordset& rows, const PaintedRow& row);
  QRgb Color(qint64 number) const;
  std::vector<QPoint> Vertices_Of(const QString& table);

  DrawPass pass;
  TextPainter texts;
  PlanPainter plan;
  double rightLimit = 0, bottomLimit = 0;  // map pixels
  bool greyed = false;                     // a hidden row is shown for looking
  QString lostTable;                       // the vertex table that the row should have
  DrawCounts counts;
};
