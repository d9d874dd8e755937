#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "windows/calibration/frmGeodaten.h"
#include "windows/window_fixture.h"

// A map from geodata, by its window.

TEST_F(WindowTest, ASheetBecomesTheOpenMap) {
  const QString sheet = Path("Blatt.tif"), made = Path("Neu.bmp");
  Run_Tool("gdal_translate", {"-q", "-a_srs", "EPSG:25832", "-a_ullr", "650000", "5512600", "650800", "5512000",
                              Make_Map("Scan.bmp", 400, 300), sheet});
  FrmGeodaten dialog(window.get());
  auto& size = *dialog.findChild<QLabel*>("lblSize");
  auto& resolution = *dialog.findChild<QLineEdit*>("txtResolution");
  auto& make = *dialog.findChild<QPushButton*>("btnOK");
  dialog.show();
  EXPECT_FALSE(make.isEnabled());
  With_Box("kein Bezugssystem", [&] { EXPECT_FALSE(dialog.Add_Raster(Path("Scan.bmp"))); });
  ASSERT_TRUE(dialog.Add_Raster(sheet));
  EXPECT_EQ(resolution.text(), "2");
  EXPECT_TRUE(size.text().contains("400 x 300 Pixel")) << size.text();
  EXPECT_EQ(dialog.findChild<QLineEdit*>("txtLeft")->text(), "650000");
  // Before the work: what is too large is said, and cannot be begun.
  resolution.setText("0,01");
  EXPECT_TRUE(size.text().contains("sind zu viel")) << size.text();
  EXPECT_FALSE(make.isEnabled());
  resolution.setText("4");
  EXPECT_TRUE(size.text().contains("200 x 150 Pixel")) << size.text();
  dialog.findChild<QGroupBox*>("grpWindow")->setChecked(true);
  dialog.findChild<QLineEdit*>("txtLeft")->setText("650 400");
  EXPECT_TRUE(size.text().contains("100 x 150 Pixel")) << size.text();
  const FileDialogScript file({made});
  make.click();
  Settle();
  EXPECT_FALSE(dialog.isVisible());
  ASSERT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(MapFile, made);
  EXPECT_EQ(MapWidthPx, 100);
  ASSERT_EQ(Coord.Grid, gridUtm);
  EXPECT_EQ(Coord.GridDatum, "ETRS89");
  EXPECT_NEAR(Coord.MeterPerPix, 4, 1e-2);
}
