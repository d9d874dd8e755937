#include "windows/canvas/dlgBMP.h"
#include "windows/canvas/frmMoveObjects.h"

class MoveObjectsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    for (const int typ : {0, 100}) Add({"Text", "Text", "Arial", 12, 0, 0, 0, 50, 50, 0, 0, typ});
    Map_Redraw();
    dialog = &Chosen<FrmMoveObjects>("mnuMoveObjects");
  }
  // X and Y of both entries.
  static std::vector<int> Places() {
    const QPoint first = At("2"), second = At("3");
    return {first.x(), first.y(), second.x(), second.y()};
  }

  FrmMoveObjects* dialog = nullptr;
};

using Numbers = std::vector<int>;

TEST_F(MoveObjectsTest, MovesAllOrTheMarkedOnesAndTakesItBack) {
  Choose("mnuMoveObjects");
  EXPECT_EQ(window->findChildren<FrmMoveObjects*>().size(), 1);
  for (const char* bad : {"", "zehn", "40000", "1,2,3"}) {
    const MessageScript messages("Einträge verschieben");
    Walk(*dialog, "txtY : 1; txtX : " + QString(bad) + "; cmdOK!");
    EXPECT_EQ(Places(), Numbers({50, 50, 50, 50})) << bad;
  }
  Walk(*dialog, "optMarked checked; txtX : 10,4; txtY : -3; lblBetrag = Betrag = 10,8 Pixel*; cmdOK!");
  EXPECT_EQ(Places(), Numbers({50, 50, 60, 47}));
  EXPECT_TRUE(dialog->isVisible()) << "the window stays for the next distance";
  MessageScript messages(MsgAnswer::Ok);
  Press(*dialog, "btnBack");
  EXPECT_EQ(Places(), Numbers({50, 50, 50, 50}));
  Walk(*dialog, "btnBack off; optAll!; txtX : -20; txtY : 5; cmdOK!");
  EXPECT_EQ(Places(), Numbers({30, 55, 30, 55}));
}

TEST_F(MoveObjectsTest, TwoClicksOnTheMapShowTheDistance) {
  Press(*dialog, "optFix");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {60, 60});
  EXPECT_TRUE(Map.InHand.isEmpty()) << "the click took the entry instead";
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {160, 40});
  Walk(*dialog, "txtX = 100,0; txtY = -20,0; lblFix = Fixpunkt = 60,60");
  EXPECT_EQ(Places(), Numbers({50, 50, 50, 50})) << "showing alone moves nothing";
  Walk(*dialog, "optFixZero!; btnPoint!");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {33, 44});
  Walk(*dialog, "txtX = 33,0; btnPoint!");  // closed in the middle of showing it gives the mouse back to the map
  Key_On(dialog, Qt::Key_Escape);
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {60, 58});
  EXPECT_FALSE(Map.InHand.isEmpty());
}

TEST(PictureSizeTest, TheOtherSideFollowsWhileProportional) {
  PictureSizeNumbers numbers({400, 300});
  numbers.Set_Sizing(PictureSizing::Proportional);
  numbers.Set_Width(200);
  EXPECT_EQ(numbers.Size(), QSize(200, 150));
  numbers.Set_Height(1);
  EXPECT_EQ(numbers.Size(), QSize(1, 1));
  numbers.Set_Sizing(PictureSizing::Free);
  numbers.Set_Width(70);
  EXPECT_EQ(numbers.Size(), QSize(70, 1));
  numbers.Set_Height(0);
  EXPECT_FALSE(numbers.Usable());
  numbers.Set_Sizing(PictureSizing::Original);
  EXPECT_EQ(numbers.Size(), QSize(400, 300));
}
