#include "windows/canvas/frmDigi.h"

class DigiTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    const QString path = Make_Map();
    QImage picture(path);
    QPainter(&picture).fillRect(60, 50, 120, 80, QColor(120, 180, 90));
    ASSERT_TRUE(picture.save(path));
    Open(path);
    Choose("mnuInsDigi");
  }
  void Click(int x, int y) {
    QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {Window_X(x), Window_Y(y)});
    Settle();
  }
  QString Points() { return Child<QLabel>("lblPoints")->text(); }
  QPushButton* Take() { return Child<QPushButton>("cmdTake"); }
};

TEST_F(DigiTest, AClickASliderAnArea) {
  EXPECT_FALSE(Take()->isEnabled());
  With_Box("über den oberen Fensterrand hinaus", [&] { Click(300, 200); });
  EXPECT_FALSE(Take()->isEnabled());
  Click(120, 90);
  EXPECT_TRUE(Take()->isEnabled());
  const QString followed = Points();
  Child<QSlider>("Slider1")->setValue(30);
  EXPECT_NE(Points(), "0 Randpunkte") << "it tries again at once";
  Child<QAbstractButton>("optFuellen")->click();
  EXPECT_EQ(Points(), "4 Randpunkte") << followed.toStdString();
  // A step back is the patch before, and after the last one the table's, while the window stays.
  Click(300, 200);
  EXPECT_TRUE(Child<QPushButton>("btnSenken")->isVisible());
  Choose("mnuStepBack");
  EXPECT_FALSE(Child<QPushButton>("btnSenken")->isVisible());
  Push(Take());
  EXPECT_FALSE(Take()->isEnabled());
  Choose("mnuStepBack");
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_TRUE(Is_Open<FrmDigi>());
  Choose("mnuStepForward");
  const EntryRow row = Last_Row();
  EXPECT_EQ(std::tuple(row.ID, row.Typ), std::tuple(QStringLiteral("Flaeche0"), 4));
  const std::vector<QPoint> vertices = Load_Vertices(row.ID);
  EXPECT_EQ(QPolygon(QList<QPoint>(vertices.begin(), vertices.end())).boundingRect(),
            QRect(QPoint(60, 50), QPoint(180, 130)));
  // The next one at once, with the same settings, also in another window.
  Click(64, 54);
  EXPECT_TRUE(Take()->isEnabled());
  Push(Child<QPushButton>("btnEnd"));
  EXPECT_FALSE(Is_Open<FrmDigi>());
  EXPECT_EQ(Map.Tool, QString());
  Press_Tool("Fd");
  EXPECT_EQ(Child<QSlider>("Slider1")->value(), 30);
  EXPECT_TRUE(Child<QAbstractButton>("optFuellen")->isChecked());
  Key_On(Canvas(), Qt::Key_Escape);
  EXPECT_FALSE(Is_Open<FrmDigi>());
}

// A white lake on grey paper: at 30 % the paper is meant, too.
TEST_F(DigiTest, AColourThatRunsOutIsNamed) {
  QImage& scan = Map.MapClip[0].image;
  scan.fill(QColor(230, 230, 230));
  QPainter(&scan).fillRect(60, 50, 120, 80, Qt::white);
  auto* lower = Child<QPushButton>("btnSenken");
  Child<QAbstractButton>("optFuellen")->click();
  Child<QSlider>("Slider1")->setValue(30);
  Click(120, 90);
  EXPECT_TRUE(lower->isVisible());
  EXPECT_TRUE(Child<QLabel>("Label1")->text().startsWith(u"Die Fläche füllt 100 % der Karte"_s));
  Push(lower);
  EXPECT_FALSE(lower->isVisible());
  EXPECT_EQ(Points(), u"4 Randpunkte"_s);
  EXPECT_LT(frmMDI.DigiTolerance, 10);
  EXPECT_EQ(Child<QSlider>("Slider1")->value(), frmMDI.DigiTolerance);
  // The paper itself is that large.
  Click(20, 20);
  EXPECT_TRUE(lower->isVisible());
  Push(lower);
  EXPECT_TRUE(Child<QLabel>("Label1")->text().startsWith(u"Auch mit kleinerer"_s));
}

// A fault is told while the click is still being worked on: the window, or the map, may go meanwhile.
TEST_F(DigiTest, ItMayGoWhileAFaultIsTold) {
  for (const bool mapToo : {false, true}) {
    int boxes = 0;
    const MsgHandler former = Set_Message_Handler([&](const MsgRequest&) {
      if (++boxes > 1) return MsgAnswer::Ok;
      if (mapToo)
        Close_Map();
      else
        Child<QPushButton>("btnEnd")->click();
      Settle();
      return MsgAnswer::Ok;
    });
    Click(300, 200);
    Set_Message_Handler(former);
    EXPECT_EQ(boxes, 1);
    EXPECT_FALSE(Is_Open<FrmDigi>());
    EXPECT_EQ(Map.Tool, QString());
    if (!mapToo) Choose(u"mnuInsDigi"_s);
  }
}
