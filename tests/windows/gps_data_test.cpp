#include <QLabel>
#include <QLineEdit>
#include "state/coordinate_state.h"
#include "state/events.h"
#include "tools/coordinate_input.h"
#include "view/hit_test.h"
#include "windows/canvas/frmGPSData.h"
#include "windows/dialog_parts.h"
#include "windows/window_fixture.h"

namespace {

class GpsWindow : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    const QString map = Make_Map(QStringLiteral("Karte.bmp"), 1600, 1200);
    QFile cal(Path(QStringLiteral("Karte.cal")));
    ASSERT_TRUE(cal.open(QIODevice::WriteOnly));
    cal.write(
        "ID = Test\r\nGrid UTM Zone: 32U D: WGS-84 R: 646000 H: 5512000\r\nGwidth = 1000\r\nInclin = 0.0000001\r\n"
        "Xmap = 100\r\nYmap = 1100\r\nXline = 200\r\nYline = 200\r\nVG = 12\r\nHG = 15\r\n");
    cal.close();
    FileDialogScript files;
    files.Answer(map);
    Choose(QStringLiteral("mnuFOpen"));
    ASSERT_EQ(Coord.Grid, gridUtm);
  }
  FrmGPSData& Input() {
    Choose(QStringLiteral("mnuGridXYInput"));
    return *window->findChild<FrmGPSData*>();
  }
};

}  // namespace

TEST_F(GpsWindow, TypedAndClickedCoordinates) {
  FrmGPSData& input = Input();
  EXPECT_EQ(input.windowTitle(), QStringLiteral("UTM - Koordinateneingabe"));
  EXPECT_EQ(Part<QLabel>(input, "lblZone")->text(), QStringLiteral("32U"));
  auto* right = Part<QLineEdit>(input, "txtRW");
  auto* high = Part<QLineEdit>(input, "txtHW");
  {  // the start value is no coordinate
    MessageScript script;
    script.Expect(QStringLiteral("Bitte geben Sie eine Koordinate ein."));
    Press(input, "btnShow");
  }
  events.MapClicked.Emit({300, 100});
  EXPECT_EQ(right->text(), QStringLiteral("600000"));
  Press(input, "ckMausclick");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {Window_X(300), Window_Y(200)});
  EXPECT_EQ(right->text(), QStringLiteral("647000"));
  EXPECT_EQ(high->text(), QStringLiteral("5516500"));
  Press(input, "btnShow");
  EXPECT_EQ(Map.PositionMark, QPoint(300, 200));
  EXPECT_EQ(Part<QAbstractButton>(input, "btnSetback")->text(), QStringLiteral("Zurück"));
  EXPECT_FALSE(Part<QAbstractButton>(input, "btnTake")->isEnabled());
  Press(input, "btnSetback");
  EXPECT_FALSE(Map.PositionMark);
  auto* letter = Part<QLineEdit>(input, "txtR");
  letter->selectAll();
  QTest::keyClicks(letter, "x7");
  EXPECT_EQ(letter->text(), QStringLiteral("R"));
  QTest::keyClicks(letter, "-");
  EXPECT_EQ(letter->text(), QStringLiteral("-"));
  right->clear();
  QTest::keyClicks(right, "");
  Q_EMIT right->editingFinished();
  EXPECT_EQ(right->text(), QStringLiteral("600000"));
  Press(input, "ckMausclick");
}

TEST_F(GpsWindow, TheMenuFollowsTheNet) {
  EXPECT_TRUE(window->Action(QStringLiteral("mnuGridXYShow"))->isChecked());
  Choose(QStringLiteral("mnuGridXYShow"));
  EXPECT_EQ(frmMDI.mouseUnit, MouseUnit::Pixel);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuGridXYShow"))->isChecked());
  const bool before = GridVisible;
  Choose(QStringLiteral("mnuGridonoff"));
  EXPECT_NE(GridVisible, before);
  Input();
  Choose(QStringLiteral("mnuGridDel"));
  EXPECT_EQ(Coord.Grid, gridNone);
  EXPECT_FALSE(window->Action(QStringLiteral("mnuGridXYInput"))->isEnabled());
  QTest::qWait(20);
  EXPECT_EQ(window->findChild<FrmGPSData*>(), nullptr);
}
