#include "windows/canvas/figure_fields.h"

#include <cmath>

#include "platform/text.h"
#include "state/global_state.h"

std::optional<int> Pixels_Of(const QString& text) {
  const auto value = Number_Typed(text);
  if (!value || std::abs(*value) >= 1e6) return std::nullopt;
  return static_cast<int>(std::lrint(*value));
}

QString Pixels_Text(double pixels, bool vertical) {
  const QString text = QStringLiteral("Pixel");
  const double mm = vertical ? MapPixelMmY : MapPixelMm;
  if (MapHasScale && MapUnitPerPixel > 0)
    return text + QStringLiteral("  (%1%2)").arg(Format(pixels * MapUnitPerPixel, QStringLiteral("###0.0##")), MapUnit);
  return mm > 0 ? text + QStringLiteral("  (%1 mm)").arg(Format(pixels * mm, QStringLiteral("###0.0"))) : text;
}
