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
    const auto color = [](int number) { return Palette[number >= 0 && number < 16 ? static_cast<size_t>(number) : 0]; };
    const bool rounded = EntryType::Parse(row.Typ).Kind() == EntryKind::PolygonRound;
    Draw_Line_Entry(context, row, EntryId::Parse(row.ID), points,
                    {.VG = color(row.VG), .HG = color(row.HG), .RA = color(FrameWord::Parse(row.RA).color)},
                    {.rounded = rounded});
  }
  return image;
}
