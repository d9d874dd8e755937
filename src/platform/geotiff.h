#pragma once
#include <QSize>
#include <QString>
#include <optional>

#include "platform/pixel_affine.h"

// What the tags of a TIFF picture say of its place on the ground. Own reader: no picture is loaded.
struct GeoTiff {
  QSize size;
  std::optional<PixelAffine> place;  // of the pixels' middles, whichever way the file counts
  int epsg = 0;                      // of its reference system; 0 where it names none
};
// Errors 53, 70; 481 with a German text if the file is no TIFF picture or its tags are damaged.
GeoTiff Read_Geotiff(const QString& path);
