#include "objects/line_sample.h"

#include <memory>

#include "objects/polygon.h"
#include "platform/surface.h"
#include "state/global_state.h"

QImage Line_Sample(QSize size, const EntryRow& row, std::span<const QPoint> points) {
  QImage image = Make_Canvas(size.width(), size.height());
  {
    const auto surface = Make_Surface(image);
    DrawContext context{.surface = *surface, .view = {}, .window = QRectF(image.rect())};
    const bool rounded = EntryType::Parse(row.Typ).Kind() == EntryKind::PolygonRound;
    Draw_Line_Entry(context, row, EntryId::Parse(row.ID), points,
                    {.VG = Color_Of(row.VG), .HG = Color_Of(row.HG), .RA = Color_Of(FrameWord::Parse(row.RA).color)},
                    {.rounded = rounded});
  }
  return image;
}
