#include "windows/canvas/frmMass.h"

class ScaleWindowsTest : public WindowTest {
 protected:
  ScaleWindowsTest() { mapSize = {600, 400}; }
  FrmMass* Mass() const { return window->findChild<FrmMass*>(); }
};

TEST_F(ScaleWindowsTest, LineIsDrawnAndTheBarStandsAtItsBeginning) {
  Choose("mnuInsMass");
  ASSERT_NE(Mass(), nullptr);
  Walk(*Mass(), "btnLinie checked");
  Drag(Canvas(), {100, 300}, {104, 100});
  Walk(*Mass(), "txtLaenge = 200; optV checked; lblMass = Maßstab = 1 : ?");
  Choose("mnuStepBack");
  Walk(*Mass(), "txtLaenge = ");  // the line goes, no entry
  Choose("mnuStepForward");
  Walk(*Mass(), "txtLaenge = 200");
  MessageScript messages;
  for (const char* bad : {"", "0", "-1", "viel"}) {
    messages.Expect("Maßstab - Fehler");
    Walk(*Mass(), "txtZahl : " + QString(bad) + "; cmdOK!");
    ASSERT_TRUE(Mass()->isVisible());
  }
  Walk(*Mass(), "txtZahl : 2.5; cmbEinheit : Meter; cmdOK!");
  const EntryRow row = Last_Row();
  EXPECT_EQ(std::tuple(row.Schrift, row.Eintrag, row.HG), std::tuple(QStringLiteral("2,5"), QStringLiteral(" m"), 1));
  EXPECT_EQ(QRect(row.Xmap, row.Ymap, row.Xline, row.Yline), QRect(100, 100, 300, 108));
  EXPECT_DOUBLE_EQ(MapUnitPerPixel, 0.0125);
  EXPECT_TRUE(Map.Tool.isEmpty());
  Settle();
  // Opened again it shows what is there; closing asks for what was changed.
  Choose("mnuMass");
  Walk(*Mass(), "txtZahl = 2,5; optV checked; txtZahl < 5");
  messages.Expect("Maßstab sichern?", MsgAnswer::Cancel);
  Mass()->reject();
  ASSERT_TRUE(Mass()->isVisible());
  messages.Expect("Maßstab sichern?", MsgAnswer::Yes);
  Mass()->reject();
  EXPECT_EQ(std::tuple(Last_Row().Schrift, Last_Row().Xmap), std::tuple(QStringLiteral("5"), 100));
}

TEST_F(ScaleWindowsTest, TypedLengthWaitsForAClick) {
  MapWidthMm = 1200;  // 2 mm a pixel
  Press_Tool("Scale");
  ASSERT_NE(Mass(), nullptr);
  Walk(*Mass(), "cmbArt : Millimeter; txtLaenge < 100,4; txtZahl : 1; cmdOK!");
  ASSERT_TRUE(Mass()->isVisible());
  EXPECT_EQ(Map.Tool, "Scale");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {40, 60});
  const EntryRow row = Last_Row();
  EXPECT_EQ(QRect(row.Xmap, row.Ymap, row.Xline, row.HG), QRect(40, 60, 90, 0));
  Settle();
  EXPECT_EQ(Mass(), nullptr);
  // Without a map there is no window, and nothing is asked.
  Choose("mnuInsMass");
  Drag(Canvas(), {10, 10}, {60, 10});
  Choose("mnuMapClose");
  EXPECT_EQ(Mass(), nullptr);
}

TEST_F(ScaleWindowsTest, ReferenceStyleIsSeenAtOnceAndTakenBack) {
  const QString bookmark = Take({"Text", "Text", "Arial", 12, 0, 0, 0, 50, 50, 200, 200, 0});
  const auto ink = [] { return Count_Pixels(Map.canvas, {100, 100, 120, 120}, Is_Ink); };
  const int thin = ink();
  for (const bool keep : {false, true}) {
    Choose_And("mnuRfline", [&](QWidget& dialog) {
      Walk(dialog, "btnArrow!; numBreite : 4; numPfeil : 30");
      EXPECT_GT(ink(), 2 * thin);
      EXPECT_EQ(Last_Row().Typ, 2);
      Press(dialog, keep ? "cmdOK" : "cmdCancel");
    });
    EXPECT_EQ(Last_Row().Typ, keep ? 2 : 1);
    EXPECT_EQ(std::tuple(Map.ReferenceWidth, Map.ReferenceArrow), std::tuple(keep ? 4 : 1, keep ? 30 : 6));
    EXPECT_EQ(ink() > 2 * thin, keep);
  }
}
