#pragma once
#include <QRectF>
#include <QSize>
#include <QStringList>
#include <optional>
#include <vector>

#include "platform/geodesy.h"

// Maps from the rasters of survey offices: GDAL's programs read them, as guests, and warp them into a picture the
// program opens, with its calibration file beside it.

// What one raster says of itself.
struct GeoRaster {
  QString path;
  QSize size;                             // pixels
  QString driver;                         // "GTiff", "JP2OpenJPEG"
  std::optional<ReferenceSystem> system;  // of those the program counts in
  std::vector<QPointF> outline;           // longitude and latitude (WGS-84), all round
  QRectF exact;                           // in its own system where its pixels lie along it; else null
  int bands = 0;
  bool palette = false, bytes = true;  // colours of a table; 8 bits a value
  bool alpha = false;                  // a band tells where there is nothing
};
// Error 5000 with a German text: GDAL is missing (the text names the package), the file is none of its rasters, it has
// no reference system, or the user has stopped.
GeoRaster Look_At_Raster(const QString& path);

// Pixels of all of them together.
double Source_Pixels(const std::vector<GeoRaster>& rasters);
// How far one of GDAL's programs is, 0 to 1, by the "0...10...20" it writes.
double Part_Of_Gdal(const QByteArray& output);

// What is wanted of them. Metres of the target system.
struct GeodataWish {
  std::vector<GeoRaster> rasters;
  ReferenceSystem target;
  double metresPerPixel = 0;
  std::optional<QRectF> window;  // left and lowest corner, width, height; nothing for the whole
};
// What comes of it, before it is made.
struct GeodataSize {
  QRectF extent;      // in whole pixels, as in GeodataWish
  QSize size;         // pixels of the map
  qint64 memory = 0;  // bytes of it while it is open
};
// Errors 5000 with a German text: no raster, no such zone, sheets south of the equator, a resolution that is none, a
// window beside the rasters, a target that does not reach so far, a map of more pixels than the program opens.
GeodataSize Size_Of_Geodata(const GeodataWish& wish);
// The rasters' own, in the middle of them; 0 without rasters.
double Fitting_Resolution(const GeodataWish& wish);
// The UTM zone (ETRS89 in Europe's zones 28 to 38, else WGS-84) of the middle of the rasters; their own system where
// it is a plane one.
ReferenceSystem Fitting_Target(const std::vector<GeoRaster>& rasters);

// Makes the map and its calibration file; existing files are replaced (the calibration file goes to "_alt"). False if
// the user stopped: then nothing was written. Errors of the above, of the guests and of writing.
bool Make_Map_From_Geodata(const GeodataWish& wish, const QString& mapFile);
