#pragma once
#include <QHash>
#include <QString>
#include <optional>
#include <vector>

#include "objects/draw_context.h"
#include "objects/text_box.h"
#include "platform/database.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "tools/plan_squares.h"
#include "view/redraw.h"

// Draws the rows of a table one after the other onto the surface of a context: the per-row rules of the redraw. One
// object serves one pass.
class EntryPainter {
 public:
  explicit EntryPainter(DrawContext& context);
  // The current row of the recordset. Errors pass through.
  void Draw_Row(Recordset& rows);
  // After the last row: labels of plan squares over all entries, and their hit regions.
  void Finish();
  const DrawCounts& Counts() const { return counts; }

 private:
  // What the paths of one row share.
  struct Row {
    EntryType type;
    EntryColors colors;
    FrameWord frame;
    QString id;
    QPointF at;  // surface position
    int xLine = 0;
    std::optional<QPointF> foot;  // foot point on the surface
  };

  bool Read_Row(const Recordset& rows, Row& row);
  void Draw_Polygon_Row(Recordset& rows, Row& row);
  void Draw_Text_Row(const Recordset& rows, Row& row);
  void Draw_Rotated_Row(const FontSpec& font, const QString& text, const Row& row, const TextLook& look);
  void Draw_Picture_Row(const Recordset& rows, const Row& row);
  void Draw_Shape_Row(Recordset& rows, const Row& row);
  void Draw_Scale_Row(Recordset& rows, const Row& row);
  void Draw_Overview_Box(const Row& row);
  bool Set_Row_Font(const FontSpec& font, double size);
  void Ask_Missing_Font(const QString& text, const FontSpec& font, const Row& row);

  void Add_Region(const Row& row, const QRectF& box, RegionShape shape);
  void Note_Plan_Row(const Recordset& rows, const Row& row);
  void Draw_Plan_Square(Recordset& rows, const Row& row);
  void Add_Plan_Regions();
  void Draw_Marks(const Row& row, const QRectF& box);
  const FontSpec& Font_Of(const QString& schrift);
  QRgb Color(qint64 number) const;

  DrawContext& context;
  Surface& surface;
  double rightLimit = 0, bottomLimit = 0;  // map pixels
  bool greyed = false;                     // a hidden row is shown for looking
  bool onMap = false;                      // the map window: hit regions, questions
  DrawCounts counts;
  QHash<QString, FontSpec> fonts;
  FontKey key;
  // Plan squares met in this pass.
  struct Square {
    PlanLabel label;
    QRectF box;
    bool inactive = false;
  };
  PlanLabels planLabels;
  std::vector<Square> squares;
  int planMode = 0;
};
