#include <QPainter>

#include "calibration/geodata.h"
#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"

namespace {

MATCHER_P(Says, part, "") { return arg.contains(QString(part)); }

constexpr int pixels = 200;

// Sheets of 400 m, two metres a pixel, in UTM 32; each has a black box of five pixels in its middle.
class Geodata : public FluraxTest {
 protected:
  QString Sheet(const QString& name, double left, double top, const QStringList& more = {}) {
    const QString picture = Make_Map(name + ".bmp", pixels, pixels);
    QImage image = Load_Picture(picture).convertToFormat(QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(98, 98, 5, 5, Qt::black);
    painter.end();
    Save_Picture(image, picture);
    const QString path = Path(name + ".tif");
    const auto text = [](double value) { return QString::number(value, 'f', 1); };
    Run_Tool("gdal_translate", QStringList{"-q", "-a_srs", "EPSG:25832", "-a_ullr", text(left), text(top),
                                           text(left + 400), text(top - 400)} +
                                   more + QStringList{picture, path});
    return path;
  }
  // Where the middle of the box around a map pixel lies, by the map that was made and its calibration.
  static void Expect_Box(const QString& map, const CoordinateState& state, QPointF place, double off) {
    const QImage image = Load_Picture(map).convertToFormat(QImage::Format_RGB32);
    double x = 0, y = 0, weight = 0;
    int atX = 0, atY = 0;
    EXPECT_EQ(Koord_To_Pixel(state, static_cast<int>(place.x()), static_cast<int>(place.y()), atX, atY), onMap);
    for (int row = std::max(0, atY - 15); row < std::min(image.height(), atY + 15); ++row)
      for (int column = std::max(0, atX - 15); column < std::min(image.width(), atX + 15); ++column) {
        const double dark = 255 - qGray(image.pixel(column, row));
        x += dark * column, y += dark * row, weight += dark;
      }
    EXPECT_GT(weight, 1000);
    x /= weight, y /= weight;
    const double right = x - state.Xmap, down = y - state.Ymap;
    EXPECT_NEAR((down * state.Inclin + right) * state.MeterPerPix + state.GridR, place.x(), off) << map;
    EXPECT_NEAR((right * state.Inclin - down) * state.MeterPerPix + state.GridH, place.y(), off) << map;
  }
  CoordinateState Read(const QString& map) {
    CoordinateState state;
    const MessageScript silent;
    EXPECT_EQ(Read_Cal(Path("Karte.cal"), Picture_Size(map), state), -1);
    return state;
  }
};

}  // namespace

TEST_F(Geodata, SheetsAreJoinedAndLieWhereTheyDid) {
  GeodataWish wish;
  wish.rasters = {Look_At_Raster(Sheet("west", 650000, 5512400)), Look_At_Raster(Sheet("ost", 650400, 5512400))};
  EXPECT_EQ(wish.rasters[0].size, QSize(pixels, pixels));
  wish.target = Fitting_Target(wish.rasters);
  EXPECT_EQ(wish.target.Name(), "UTM 32 ETRS89");
  wish.metresPerPixel = Fitting_Resolution(wish);
  EXPECT_EQ(wish.metresPerPixel, 2);
  EXPECT_EQ(Size_Of_Geodata(wish).size, QSize(400, 200));
  const QString map = Path("Karte.bmp");
  ASSERT_TRUE(Make_Map_From_Geodata(wish, map));
  EXPECT_EQ(Picture_Size(map), QSize(400, 200));
  CoordinateState state = Read(map);
  EXPECT_EQ(state.GridDatum, "ETRS89");
  // A box from pixel 98 to 102 has its middle at 100.5 from the corner: to a tenth of a pixel.
  for (const double left : {650000.0, 650400.0}) Expect_Box(map, state, {left + 201, 5512400 - 201}, 0.2);
  // A window of it, coarser.
  wish.window = QRectF(650100, 5512100, 200, 200);
  wish.metresPerPixel = 4;
  ASSERT_TRUE(Make_Map_From_Geodata(wish, map));
  EXPECT_EQ(Picture_Size(map), QSize(50, 50));
  Expect_Box(map, Read(map), {650201, 5512199}, 0.4);
  EXPECT_TRUE(QFile::exists(Path("Karte.cal_alt")));
}

// Whatever bands the sheets have: a grey one with holes, one of a table, one of 16 bits, four with infrared or holes.
TEST_F(Geodata, SheetsOfAllSortsBecomeOneMap) {
  const QString plain = Sheet("west", 650000, 5512400, {"-b", "1", "-b", "1", "-b", "1"});
  const auto made_by = [this](const char* tool, const QStringList& options, const QString& from, const QString& name) {
    Run_Tool(tool, QStringList{"-q"} + options + QStringList{from, Path(name)});
    return Look_At_Raster(Path(name));
  };
  const QStringList east = {"-a_ullr", "650400", "5512400", "650800", "5512000"};
  const GeoRaster flat = made_by("gdal_translate", QStringList{"-b", "1"} + east, plain, "ost.tif"),
                  grey = made_by("gdalwarp", {"-dstalpha"}, flat.path, "grau.tif");
  const std::vector<std::pair<GeoRaster, GeoRaster>> pairs = {
      {made_by("gdalwarp", {"-dstalpha"}, plain, "alpha.tif"), grey},
      {made_by("gdal_translate", {"-b", "1", "-b", "1", "-b", "1", "-b", "1", "-colorinterp_4", "undefined"}, plain,
               "infra.tif"),
       flat},
      {made_by("gdal_translate", {"-ot", "UInt16"}, plain, "u16.tif"), grey},
      {made_by("gdal_translate", {"-of", "MBTILES"}, plain, "kacheln.mbtiles"), flat}};
  EXPECT_TRUE(grey.alpha && pairs[0].first.alpha && !flat.alpha);
  for (const auto& [first, second] : pairs) {
    GeodataWish wish;
    wish.rasters = {first, second};
    wish.target = {ReferenceSystem::Kind::Utm, Datum::Etrs89, 32};
    wish.metresPerPixel = 2;
    const QString map = Path("Karte.bmp");
    ASSERT_TRUE(Make_Map_From_Geodata(wish, map)) << first.path;
    SCOPED_TRACE(first.path.toStdString());
    Expect_Box(map, Read(map), {650201, 5512199}, 2);
  }
}

TEST_F(Geodata, HowFarAProgramIs) {
  EXPECT_EQ(Part_Of_Gdal("Input file size is 600, 440\n"), 0);
  EXPECT_EQ(Part_Of_Gdal("Input file size is 600, 440\n0...10...20."), 0.225);
  EXPECT_EQ(Part_Of_Gdal("Creating output file that is 617P x 464L.\nProcessing a.tif [1/2] : 0...10..100 - "
                         "done.\nProcessing b.tif [2/2] : 0...10...20..."),
            0.6375);
}

TEST_F(Geodata, AnotherSystemIsWarped) {
  GeodataWish wish;
  wish.rasters = {Look_At_Raster(Sheet("west", 650000, 5512400, {"-colorinterp", "red,green,blue"}))};
  wish.target = {ReferenceSystem::Kind::GaussKrueger, Datum::Dhdn, 4};
  wish.metresPerPixel = Fitting_Resolution(wish);
  const QString map = Path("Karte.bmp");
  ASSERT_TRUE(Make_Map_From_Geodata(wish, map));
  const CoordinateState state = Read(map);
  EXPECT_EQ(std::tuple(state.Grid, state.ZoneText), std::tuple(gridGaussKrueger, "4"));
  const auto wanted = Transformation(ReferenceSystem{ReferenceSystem::Kind::Utm, Datum::Etrs89, 32},
                                     wish.target)(QPointF(650201, 5512199));
  ASSERT_TRUE(wanted);
  Expect_Box(map, state, *wanted, 1);
}

TEST_F(Geodata, WhatCannotBeMadeIsSaidBefore) {
  const auto refused = [](const std::function<void()>& work) { return Raised(work).text; };
  GeodataWish wish;
  const auto size_refused = [&] { return refused([&] { Size_Of_Geodata(wish); }); };
  wish.target = {ReferenceSystem::Kind::Utm, Datum::Etrs89, 32};
  wish.metresPerPixel = 2;
  EXPECT_THAT(size_refused(), Says("zuerst eine Karte"));
  wish.rasters = {Look_At_Raster(Sheet("west", 650000, 5512400))};
  for (const auto& [metres, told] :
       {std::pair(400.0 / 60000, "zwischen 0,01"), {0.011, "36 364 x 36 364 Pixel sind zu viel"}}) {
    wish.metresPerPixel = metres;
    EXPECT_THAT(size_refused(), Says(told));
  }
  wish.metresPerPixel = 2;
  wish.window = QRectF(0, 0, 100, 100);
  EXPECT_THAT(size_refused(), Says("neben den Karten"));
  wish.window.reset();
  wish.rasters = {Look_At_Raster(Sheet("süd", 650000, 7500000, {"-a_srs", "EPSG:32733"}))};
  EXPECT_THAT(size_refused(), Says("über den Äquator"));
  wish.rasters = {Look_At_Raster(Path("west.tif"))};
  wish.target.zone = 61;
  EXPECT_FALSE(size_refused().isEmpty());
  EXPECT_THAT(refused([&] { Look_At_Raster(Make_Map("ohne.bmp")); }), Says("kein Bezugssystem"));
  EXPECT_THAT(refused([&] { Look_At_Raster(Put("kein.tif", "nichts")); }), Says("gdalinfo"));
  // Stopped in the middle, or without the programs: no file is left.
  wish.target.zone = 32;
  wish.metresPerPixel = 0.05;  // 64 million pixels take longer than until somebody looks
  {
    const StopWorkAt stop(1);
    EXPECT_FALSE(Make_Map_From_Geodata(wish, Path("Karte.bmp")));
  }
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", "/nirgends");
  EXPECT_THAT(refused([&] { Make_Map_From_Geodata(wish, Path("Karte.bmp")); }), Says("gdal-bin"));
  qputenv("PATH", path);
  EXPECT_FALSE(QFile::exists(Path("Karte.bmp")));
  EXPECT_FALSE(Names().join(u' ').contains("geodaten"));
}
