#include "maps/map_scan.h"

#include <QImage>

#include "maps/map_check.h"
#include "platform/picture.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/file_names.h"
#include "view/view.h"

void Take_Scan(const QString& path) {
  if (Capitals(path).contains(QLatin1String(".BMP"))) Check_Bitmap(path);
  const QImage picture = Load_Picture(path);
  MapFile = path;
  MapWidthPx = picture.width();
  MapHeightPx = picture.height();
  MapWidthMm = static_cast<float>(MapWidthPx * 25.4 / 96);
  MapHeightMm = static_cast<float>(MapHeightPx * 25.4 / 96);
  Set_Map_Picture(picture);
  Map.Zoom = 1.0F;
  Map.ZoomMenu = QStringLiteral("mnuZoom100");
}

void Map_Geometry() {
  if (MapWidthPx < 1 || MapHeightPx < 1) return;
  if (PrintFactor <= 0) PrintFactor = 1.0F;
  MapPixelMm = static_cast<double>(MapWidthMm) / MapWidthPx * static_cast<double>(PrintFactor);
  MapPixelMmY = static_cast<double>(MapHeightMm) / MapHeightPx * static_cast<double>(PrintFactor);
}
