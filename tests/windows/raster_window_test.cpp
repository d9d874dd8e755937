#include <QTabWidget>

#include "tools/plan_squares.h"
#include "windows/plansquares/frmRaster.h"
#include "windows/window_fixture.h"

class RasterWindow : public WindowTest {
 protected:
  FrmRaster& Frm() { return *window->findChild<FrmRaster*>(); }
  QString Info() { return Text_In(Frm(), "lblInfo"); }
  QString Preview() { return Text_In(Frm(), "btnVorschau"); }
  void Size(const QString& text) { Fill(Frm(), "cmbSize", text); }
  void Write(const char* name, const QString& text) { Part<QLineEdit>(Frm(), name)->setText(text); }
};

TEST_F(RasterWindow, FromTheSizeToTheTableAndBack) {
  Open(600, 400);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuRasterBearbeiten"))->isEnabled());
  Choose("mnuRasterErstellen");
  ASSERT_TRUE(Frm().isVisible());
  EXPECT_EQ(Frm().windowTitle(), "Raster-  oder Planquadrate erstellen");
  With_Box("Keine Größe", [&] { Press(Frm(), "btnVorschau"); });
  EXPECT_FALSE(Is_Enabled(Frm(), "btnTake"));
  Press(Frm(), "optTeil");
  Press(Frm(), "optPixel");
  Size(QStringLiteral("   100 * 100"));
  With_Box("alle vier Eingabefelder", [&] { Press(Frm(), "btnGetTxt"); });
  Write("txt1x", QStringLiteral("50"));
  Write("txt1y", QStringLiteral("50"));
  Write("txt2x", QStringLiteral("390"));
  Write("txt2y", QStringLiteral("250"));
  Press(Frm(), "optZentrSchrift");
  Press(Frm(), "btnGetTxt");
  EXPECT_TRUE(Raster_Preview_Shown());
  EXPECT_EQ(Preview(), "<< Zurück");
  EXPECT_TRUE(Info().startsWith("Abstimmung")) << Info();
  EXPECT_EQ(Entry_Count(), 0);
  Press(Frm(), "btnVorschau");
  EXPECT_FALSE(Raster_Preview_Shown());
  EXPECT_EQ(Preview(), "Vorschau");
  Press(Frm(), "btnVorschau");
  Press(Frm(), "btnTake");
  EXPECT_EQ(Entry_Count(), 3 * 2 + 1);
  EXPECT_FALSE(Raster_Preview_Shown());
  EXPECT_TRUE(Info().startsWith("Raster übernommen.")) << Info();
  Frm().close();
  Settle();
  Choose("mnuRasterBearbeiten");
  EXPECT_EQ(Text_In(Frm(), "cmbSize"), "100 * 100");
  EXPECT_TRUE(Is_Checked(Frm(), "optZentrSchrift"));
  EXPECT_EQ(Text_In(Frm(), "txt2x"), "350");
  {
    MessageScript messages("bereits übernommen", MsgAnswer::Yes);
    messages.Expect("bereits in der Karte", MsgAnswer::Ok);
    Size(QStringLiteral("50 px"));
    Press(Frm(), "btnVorschau");
    Press(Frm(), "btnTake");
  }
  EXPECT_EQ(Entry_Count(), 6 * 4 + 1);
  Choose("mnuRasterDelete");
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuRasterBearbeiten"))->isEnabled());
}

TEST_F(RasterWindow, TheFieldIsDraggedAndFaultsShowTheirTab) {
  Open(600, 400);
  Choose("mnuRasterErstellen");
  Size(QStringLiteral("20 px"));
  Press(Frm(), "optTeil");
  {
    MessageScript messages("Ungültige(r) Wert(e)", MsgAnswer::Cancel);
    Press(Frm(), "btnVorschau");
    EXPECT_EQ(Part<QTabWidget>(Frm(), "TabStrip")->currentIndex(), 1);
    messages.Expect("Kein Koordinatennetz");
    Press(Frm(), "optKoordinaten");
    EXPECT_TRUE(Is_Checked(Frm(), "optPixel"));
  }
  Press(Frm(), "optMap");
  QWidget* canvas = Canvas();
  QTest::mousePress(canvas, Qt::LeftButton, {}, {10, 10});
  QTest::mouseMove(canvas, {60, 40});
  QTest::mouseMove(canvas, {110, 70});
  QTest::mouseRelease(canvas, Qt::LeftButton, {}, {110, 70});
  EXPECT_EQ(Text_In(Frm(), "txt1x"), QString::number(Map_X(10)));
  Press(Frm(), "btnVorschau");
  EXPECT_TRUE(Raster_Preview_Shown());
  Size(QStringLiteral("2 px"));
  EXPECT_FALSE(Raster_Preview_Shown()) << "another size, another preview";
  Press(Frm(), "optGesamt");
  MessageScript messages("Step: 7\n\nZuviele Planquadrate. 60000");
  Press(Frm(), "btnVorschau");
  EXPECT_FALSE(Raster_Preview_Shown());
  Choose("mnuMapClose");
  EXPECT_FALSE(Raster_Preview_Shown());
}
