#include "view/hit_test.h"
#include "windows/canvas/frmGPSData.h"

TEST_F(WindowTest, TypedAndClickedCoordinates) {
  const QString map = Make_Map("Karte.bmp", 1600, 1200);
  Write_Lines(Path("Karte.cal"), Utm_Calibration({100, 1100}, 200, 0.0000001));
  Open(map);
  auto& input = Chosen<FrmGPSData>("mnuGridXYInput");
  EXPECT_EQ(input.windowTitle(), "UTM - Koordinateneingabe");
  {  // the start value is no coordinate
    MessageScript script("Bitte geben Sie eine Koordinate ein.");
    Press(input, "btnShow");
  }
  events.MapClicked.Emit({300, 100});
  Walk(input, "lblZone = 32U; txtRW = 600000; ckMausclick!");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {Window_X(300), Window_Y(200)});
  Walk(input, "txtRW = 647000; txtHW = 5516500; btnShow!; btnSetback = Zurück; btnTake off");
  EXPECT_EQ(Map.PositionMark, QPoint(300, 200));
  Press(input, "btnSetback");
  EXPECT_FALSE(Map.PositionMark);
  Walk(input, "txtR < x7; txtR = R; txtRW = 7");  // a digit begins the number
  QTest::keyClicks(Part<QLineEdit>(input, "txtR"), "-");
  EXPECT_EQ(Text_In(input, "txtR"), "-");
  auto* right = Part<QLineEdit>(input, "txtRW");
  right->clear();
  Q_EMIT right->editingFinished();
  EXPECT_EQ(right->text(), "600000");
  // From one number the tab key goes to the other.
  input.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&input));
  right->setFocus();
  QTest::keyClick(input.focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(input.focusWidget()->objectName(), "txtHW");
  Part<QLineEdit>(input, "txtH")->setFocus();
  for (const char digit : {'5', '5', '1', '6'}) QTest::keyClick(input.focusWidget(), digit);
  EXPECT_EQ(Text_In(input, "txtHW"), "5516");
  EXPECT_EQ(input.focusWidget()->objectName(), "txtHW");
  Choose("mnuGridDel");
  EXPECT_FALSE(Is_Open<FrmGPSData>());
}
