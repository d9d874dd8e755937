#include "windows/objects/frmDrawBreite.h"
#include "windows/objects/frmFarb.h"
#include "windows/objects/frmFarb_table.h"
#include "windows/objects/frmFill.h"

class LookWindowsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    text = Add(QStringLiteral("Text"), 0, QStringLiteral("Arial"));
    figure = Add(QStringLiteral("Figur1"), 20, QStringLiteral("F 1"));
    picture = Add(QStringLiteral("Bild"), 5, {});
    Map_Redraw();
  }
  static QString Add(const QString& id, int typ, const QString& schrift) {
    const int at = 100 + 20 * typ, size = typ == 20 ? 30 : 0;
    return WindowTest::Add({id, "Reiher", schrift, 12, 0, 14, 0, at, at, size, size, typ});
  }
  static void Pick(const QWidget& colors, int number) {
    auto* table = Part<ColorTable>(colors, "tabFarben");
    QTest::mouseClick(table, Qt::LeftButton, {}, table->Cell(number).center());
  }

  QString text, figure, picture;
};

TEST_F(LookWindowsTest, ColoursFollowTheEntryInHandAndApplyAtOnce) {
  auto& colors = Chosen<FrmFarb>("mnuFarbe");
  EXPECT_EQ(colors.height(), 247);
  Pick(colors, 5);
  EXPECT_EQ(CurVG, 5);
  Take_Entry(text);
  EXPECT_EQ(colors.windowTitle(), " Farbe für Text: Reiher");
  Walk(colors, "btnHG!; lblHint = Wählen Sie hier eine Hintergrundfarbe aus");
  Pick(colors, 11);
  EXPECT_EQ(Row(text).HG, 11);
  auto* table = Part<ColorTable>(colors, "tabFarben");
  EXPECT_EQ(table->Marked(), 11);
  QTest::keyClick(table, Qt::Key_Up);
  QTest::keyClick(table, Qt::Key_Right);
  QTest::keyClick(table, Qt::Key_Return);
  EXPECT_EQ(Row(text).HG, 4);
  EXPECT_TRUE(colors.isVisible());
  Press(colors, "optOhne");
  EXPECT_EQ(Row(text).RA, -100);
  Take_Entry(figure);
  EXPECT_EQ(colors.windowTitle(), " Farbe für Figur: Figur1");
  Take_Entry(picture);
  EXPECT_EQ(colors.windowTitle(), " Rahmenfarbe für Bild: Reiher");
  EXPECT_FALSE(Is_Enabled(colors, "btnVG"));
  Pick(colors, 3);
  EXPECT_EQ(Row(picture).RA, 3);
  // The row goes while the window is open.
  rsEntries->SetBookmark(picture);
  rsEntries->Delete();
  Map_Redraw();
  Pick(colors, 7);
  EXPECT_EQ(Row(figure).VG, 0);
}

TEST_F(LookWindowsTest, PaletteIsMixedAndPutBackAndAFillTaken) {
  Take_Entry(figure);
  dialogHooks.ColorWindow();
  auto& colors = Shown<FrmFarb>();
  const QRgb former = Palette[14];
  const QPoint inside(Window_X(515), Window_Y(515));
  Press(colors, "btnPalette");
  When_Shown([](QWidget& dialog) {
    auto& mixer = dynamic_cast<QColorDialog&>(dialog);
    mixer.setCurrentColor(QColor(10, 20, 30));
    mixer.accept();
  });
  Pick(colors, 14);
  EXPECT_EQ(Palette[14], qRgb(10, 20, 30));
  EXPECT_EQ(Row(figure).HG, 14);
  EXPECT_FALSE(Is_Checked(colors, "btnPalette"));
  With_Box("Standardfarben", MsgAnswer::Yes, [&] { Press(colors, "cmdStandart"); });
  EXPECT_EQ(Palette[14], former);
  // A fill is taken by the entry that is shown then.
  ASSERT_TRUE(End_Entry());
  dialogHooks.FillWindow();
  auto& fill = Shown<FrmFill>();
  Walk(fill, "OptBut4!; btnTake!");
  EXPECT_EQ(NextShape.fill, 4);
  Take_Entry(figure);
  EXPECT_EQ(fill.windowTitle(), "Figur1 füllen");
  Walk(fill, "OptBut1 checked; OptBut6!; optTransparent!");
  const QImage before = Part<QLabel>(fill, "picVorschau")->pixmap().toImage();
  // A change of colour leaves the choice and is seen in the picture.
  Press(fill, "btnFarbe");
  Pick(colors, 12);
  EXPECT_NE(Part<QLabel>(fill, "picVorschau")->pixmap().toImage(), before);
  Press(fill, "btnTake");
  EXPECT_EQ(std::tuple(Row(figure).Schrift, Row(figure).VG), std::tuple("F-6", 12));
  Take_Entry(text);
  EXPECT_FALSE(Is_Enabled(fill, "btnTake"));
}

TEST_F(LookWindowsTest, WidthAndFrameOfWhatIsInHand) {
  dialogHooks.WidthWindow();
  auto& width = Shown<FrmDrawBreite>();
  EXPECT_EQ(width.windowTitle(), "Linienbreite");
  Walk(width, "txtBreite : 6.6; btnTake!; txtBreite = 7,0");
  EXPECT_EQ(NextShape.width, 7);
  Take_Entry(figure);
  EXPECT_EQ(width.windowTitle(), "Strichbreite");
  Take_Entry(text);
  Press_Tool("Rahmen");
  auto& colors = Shown<FrmFarb>();
  EXPECT_EQ(colors.windowTitle(), "Rahmenfarbe für Text: Reiher");
  Pick(colors, 9);
  EXPECT_EQ(width.windowTitle(), "Rahmenbreite");
  Walk(width, "cboMuster : #1; txtBreite : 20; btnTake!");
  EXPECT_EQ(Row(text).RA, 2809);
  Walk(width, "ckRahmen!; btnTake!");
  EXPECT_EQ(Row(text).RA, -2809);
  Press_Tool("Rahmen", true);
  EXPECT_EQ(Row(text).RA, 2809);
  EXPECT_TRUE(Is_Checked(width, "ckRahmen"));
}
