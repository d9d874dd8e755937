#include "windows/calibration/frmGeodaten.h"

// A map from geodata, by its window.

TEST_F(WindowTest, ASheetBecomesTheOpenMap) {
  const QString sheet = Path("Blatt.tif"), made = Path("Neu.bmp");
  Run_Tool("gdal_translate", {"-q", "-a_srs", "EPSG:25832", "-a_ullr", "650000", "5512600", "650800", "5512000",
                              Make_Map("Scan.bmp", 400, 300), sheet});
  FrmGeodaten dialog(window.get());
  dialog.show();
  Walk(dialog, "btnOK off");
  With_Box("kein Bezugssystem", [&] { EXPECT_FALSE(dialog.Add_Raster(Path("Scan.bmp"))); });
  ASSERT_TRUE(dialog.Add_Raster(sheet));
  Walk(dialog, "txtResolution = 2; lblSize = *400 x 300 Pixel*; txtLeft = 650000");
  // Before the work: what is too large is said, and cannot be begun.
  Walk(dialog, "txtResolution : 0,01; lblSize = *sind zu viel*; btnOK off");
  Walk(dialog, "txtResolution : 4; lblSize = *200 x 150 Pixel*");
  Part<QGroupBox>(dialog, "grpWindow")->setChecked(true);
  Walk(dialog, "txtLeft : 650 400; lblSize = *100 x 150 Pixel*");
  const FileDialogScript file({made});
  Press(dialog, "btnOK");
  Settle();
  EXPECT_FALSE(dialog.isVisible());
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(MapFile, made);
  EXPECT_EQ(MapWidthPx, 100);
  ASSERT_EQ(Coord.Grid, gridUtm);
  EXPECT_EQ(Coord.GridDatum, "ETRS89");
  EXPECT_NEAR(Coord.MeterPerPix, 4, 1e-2);
}
