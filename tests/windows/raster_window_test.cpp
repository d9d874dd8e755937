#include "windows/plansquares/frmRaster.h"

class RasterWindow : public WindowTest {
 protected:
  FrmRaster& Frm() { return *window->findChild<FrmRaster*>(); }
  void Go(const QString& steps) { Walk(Frm(), steps); }
};

TEST_F(RasterWindow, FromTheSizeToTheTableAndBack) {
  Open(600, 400);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuRasterBearbeiten"))->isEnabled());
  Choose("mnuRasterErstellen");
  ASSERT_TRUE(Frm().isVisible());
  EXPECT_EQ(Frm().windowTitle(), "Raster-  oder Planquadrate erstellen");
  With_Box("Keine Größe", [&] { Press(Frm(), "btnVorschau"); });
  EXPECT_FALSE(Is_Enabled(Frm(), "btnTake"));
  Go("btnTake off; optTeil!; optPixel!; cmbSize :    100 * 100");
  With_Box("alle vier Eingabefelder", [&] { Press(Frm(), "btnGetTxt"); });
  Go("txt1x : 50; txt1y : 50; txt2x : 390; txt2y : 250; optZentrSchrift!; btnGetTxt!");
  EXPECT_TRUE(Raster_Preview_Shown());
  Go("btnVorschau = << Zurück; lblInfo = Abstimmung*");
  EXPECT_EQ(Entry_Count(), 0);
  Go("btnVorschau!; btnVorschau = Vorschau");
  EXPECT_FALSE(Raster_Preview_Shown());
  Go("btnVorschau!; btnTake!; lblInfo = Raster übernommen.*");
  EXPECT_EQ(Entry_Count(), 3 * 2 + 1);
  EXPECT_FALSE(Raster_Preview_Shown());
  Frm().close();
  Settle();
  Choose("mnuRasterBearbeiten");
  Go("cmbSize = 100 * 100; optZentrSchrift checked; txt2x = 350");
  {
    MessageScript messages("bereits übernommen", MsgAnswer::Yes);
    messages.Expect("bereits in der Karte", MsgAnswer::Ok);
    Go("cmbSize : 50 px; btnVorschau!; btnTake!");
  }
  EXPECT_EQ(Entry_Count(), 6 * 4 + 1);
  Choose("mnuRasterDelete");
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuRasterBearbeiten"))->isEnabled());
}

TEST_F(RasterWindow, TheFieldIsDraggedAndFaultsShowTheirTab) {
  Open(600, 400);
  Choose("mnuRasterErstellen");
  Go("cmbSize : 20 px; optTeil!");
  {
    MessageScript messages("Ungültige(r) Wert(e)", MsgAnswer::Cancel);
    Press(Frm(), "btnVorschau");
    EXPECT_EQ(Part<QTabWidget>(Frm(), "TabStrip")->currentIndex(), 1);
    messages.Expect("Kein Koordinatennetz");
    Go("optKoordinaten!; optPixel checked");
  }
  Press(Frm(), "optMap");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {50, 50});  // no field
  Drag(Canvas(), {110, 70}, {10, 10});
  EXPECT_TRUE(Map.Tool.isEmpty());
  Go("txt1x = " + QString::number(Map_X(10)) + "; btnVorschau!");
  EXPECT_TRUE(Raster_Preview_Shown());
  Go("cmbSize : 2 px");
  EXPECT_FALSE(Raster_Preview_Shown()) << "another size, another preview";
  MessageScript messages("Step: 7\n\nZuviele Planquadrate. 60000");
  Go("optGesamt!; btnVorschau!");
  EXPECT_FALSE(Raster_Preview_Shown());
  Choose("mnuMapClose");
  EXPECT_FALSE(Raster_Preview_Shown());
}
