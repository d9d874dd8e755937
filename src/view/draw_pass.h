#pragma once
#include <QPointF>
#include <QString>
#include <optional>

#include "objects/draw_context.h"
#include "objects/reference_line.h"
#include "platform/region.h"
#include "store/entry_type.h"
#include "store/frame_word.h"

// What the painters of the kinds of entries share: the row that is being drawn, and the surface with its hit list.

struct PaintedRow {
  EntryType type;
  EntryColors colors;
  FrameWord frame;
  QString id;
  QPointF at;  // surface position
  int xLine = 0;
  std::optional<QPointF> foot;  // foot point on the surface
};

// One pass over the rows. Everything is surface pixels.
class DrawPass {
 public:
  explicit DrawPass(DrawContext& drawContext)
      : context(drawContext), surface(drawContext.surface), onMap(drawContext.regions != nullptr) {}
  // Hit region of an entry that can be hit, and its marks.
  void Add_Region(const PaintedRow& row, const QRectF& box, RegionShape shape);
  void Draw_Marks(const PaintedRow& row, const QRectF& box);  // the dotted frames of a marked row
  // What stands for texts and pictures in the overview.
  void Draw_Overview_Box(const PaintedRow& row);

  DrawContext& context;
  Surface& surface;
  const bool onMap;  // the map window: hit regions, marks, questions
};

// Look of reference lines, as it is set for the map.
ReferenceStyle Set_Reference_Style();
