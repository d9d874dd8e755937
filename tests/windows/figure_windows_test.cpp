#include "edit/figure_edit.h"
#include "windows/canvas/frmEigenschaften.h"
#include "windows/canvas/frmFigur.h"
#include "windows/canvas/frmFigurDraw.h"

class FigureWindowsTest : public WindowTest {
 protected:
  FigureWindowsTest() { mapSize = {600, 400}; }
  static EntryRow Figure() { return Figure_In_Hand().value_or(EntryRow{}); }
  static QRect Place() { return {Figure().Xmap, Figure().Ymap, Figure().Xline, Figure().Yline}; }
};

TEST_F(FigureWindowsTest, AFigureIsPlacedChangedAndFollowed) {
  int colors = 0;
  dialogHooks.ColorWindow = [&colors] { ++colors; };
  auto* dialog = &Chosen<FrmFigur>("mnuInsFigur");
  EXPECT_EQ(Canvas()->cursor().shape(), Qt::CrossCursor);
  Walk(*dialog, "lstFigur : #1; txtBreite off; txtLaenge < 80");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {50, 40});
  EXPECT_EQ(Place(), QRect(50, 40, 80, 80));
  EXPECT_EQ(Figure().Typ, 21);
  // The window tells of the figure in hand and changes it.
  Walk(*dialog, "lstFigur : #2");
  EXPECT_EQ(Figure().Typ, 22);
  Type(*dialog, "txtBreite", "30");
  QTest::keyClick(Part<QLineEdit>(*dialog, "txtBreite"), Qt::Key_Return);
  EXPECT_EQ(Place(), QRect(50, 40, 80, 30));
  Drag(Canvas(), {90, 55}, {190, 155});
  EXPECT_EQ(Place(), QRect(150, 140, 80, 30));
  Drag(Canvas(), {230, 170}, {250, 200});
  EXPECT_EQ(Text_In(*dialog, "txtLaenge"), "100");
  for (const char* bad : {"0", "zehn", "-4", "99999"}) {
    const MessageScript messages("Figur");
    Walk(*dialog, "txtLaenge < " + QString(bad) + "; cmdOK!");
    EXPECT_EQ(Place().size(), QSize(100, 60)) << bad;
  }
  Press(*dialog, "btnFarb");
  EXPECT_EQ(colors, 1);
}

TEST_F(FigureWindowsTest, AFreeFigureIsDrawnAndItsVerticesAreEdited) {
  Choose("mnuInsFigur");
  Part<QListWidget>(Shown<FrmFigur>(), "lstFigur")->setCurrentRow(4);
  auto* dialog = &Shown<FrmFigurDraw>();
  for (const QPoint at : {QPoint(20, 20), {120, 20}, {120, 90}}) QTest::mouseClick(Canvas(), Qt::LeftButton, {}, at);
  QTest::mouseClick(Canvas(), Qt::RightButton, {}, {20, 20});
  auto* table = Part<QTableWidget>(*dialog, "tblPunkte");
  ASSERT_EQ(table->rowCount(), 3);
  EXPECT_FALSE(Is_Enabled(*dialog, "btnRemove"));
  table->setCurrentCell(2, 0);
  Press(*dialog, "btnInsert");
  table->item(3, 1)->setText(QStringLiteral("150"));
  Press(*dialog, "cmdOK");
  const std::vector<QPoint> want = {{20, 20}, {120, 20}, {120, 90}, {70, 150}};
  EXPECT_EQ(Load_Vertices("Figur1"), want);
  Press(*dialog, "optRund");
  EXPECT_EQ(Figure().Typ, 25);
  table->item(0, 0)->setText(QStringLiteral("links"));
  MessageScript messages{{QStringLiteral("Eckpunkt 1")}, {QStringLiteral("32767")}};
  Press(*dialog, "cmdOK");
  table->item(0, 0)->setText(QStringLiteral("70000"));
  Press(*dialog, "cmdOK");
  EXPECT_EQ(Load_Vertices("Figur1"), want);
  Press(*dialog, "cmdCancel");
}

TEST_F(FigureWindowsTest, TheFrameIsTurnedWithTheFigure) {
  const QString key = Add({"Figur1", "Figur", "F 0<90", 12, 0, 14, -100, 200, 100, 120, 40, 20});
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(key));
  Settle();
  const auto* frame = Child<QWidget>("lblShape");
  const QRect around = frame->geometry();
  EXPECT_LE((around.topLeft() - QPoint(240, 60)).manhattanLength(), 4);
  EXPECT_LE(std::abs(around.width() - 40) + std::abs(around.height() - 120), 6);
  const QImage canvas = Canvas()->grab().toImage();
  EXPECT_GT(Count_Pixels(canvas, {238, 80, 6, 80}, Is_Ink), 20) << "its left edge";
  EXPECT_EQ(Count_Pixels(canvas, {195, 95, 30, 50}, Is_Ink), 0) << "where it would lie unturned";
}

TEST_F(FigureWindowsTest, PropertiesShowTurnAndMarkTheFigure) {
  NextShape.figure = 22;
  Place_Figure({100, 100});
  auto* dialog = &Chosen<FrmEigenschaften>("mnuEigenschaften");
  const auto picture = [dialog] { return Part<QLabel>(*dialog, "picFigur")->pixmap().toImage(); };
  const QImage plain = picture();
  Walk(*dialog, "ckLaengsachse!; ckAchsenText!");
  EXPECT_NE(picture(), plain);
  Walk(*dialog, "txtWinkel < -90; cmdOK!; txtWinkel = 270,000");
  EXPECT_EQ(Figure().Schrift, "F 1<270");
  EXPECT_EQ(Extras_Of(Figure()), (FigureExtras{false, false, true, false, true}));
  // A click on the frame, then the mouse on the map; the angle is written where it is clicked.
  QTest::mouseClick(Part<QGroupBox>(*dialog, "fraWinkel"), Qt::LeftButton, {}, {4, 4});
  QTest::mouseMove(Canvas(), {160, 20});
  EXPECT_EQ(Text_In(*dialog, "txtWinkel"), "90,000");
  QTest::mouseClick(Canvas(), Qt::LeftButton, {}, {300, 140});
  EXPECT_EQ(Figure().Schrift, "F 1");
  EXPECT_EQ(Extras_Of(Figure()).Laengsachse, true);
  EXPECT_FALSE(Is_Checked(*dialog, "btnDrehen"));
  // Esc on the map leaves the angle as it was.
  Press(*dialog, "btnDrehen");
  for (const int y : {60, 20}) QTest::mouseMove(Canvas(), {160, y});
  EXPECT_EQ(Text_In(*dialog, "txtWinkel"), "90,000");
  QTest::keyClick(window->findChild<MapWindow*>(), Qt::Key_Escape);
  EXPECT_EQ(Text_In(*dialog, "txtWinkel"), "0,000");
  EXPECT_FALSE(Figure().ID.isEmpty());
  const MessageScript messages("Winkel");
  Walk(*dialog, "txtWinkel < schief; cmdOK!");
  EXPECT_EQ(Figure().Schrift, "F 1");
}
