#include <csignal>

#include "calibration/typed_place.h"
#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "maps/map_grid.h"
#include "view/cursor_coordinates.h"
#include "windows/calibration/calibration_view.h"
#include "windows/calibration/frmKalibrix.h"

// Kalibrix as its user meets it: mouse, keys, boxes.

class KalibrixTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Set_Shell(Desktop_Shell());
  }
  void TearDown() override {
    tool.reset();
    WindowTest::TearDown();
  }
  // The demo map without its calibration.
  void Open_Demo_Map() {
    map = Path("Karte.png");
    File_Copy(FLURAX_SOURCE_DIR "/data/Beispiele/Karte.png", map);
    Read_Cal(FLURAX_SOURCE_DIR "/data/Beispiele/Karte.cal", Picture_Size(map), shipped);
    Open_Tool();
  }
  void Open_Tool() {
    tool = std::make_unique<FrmKalibrix>();
    tool->resize(1200, 850);
    tool->show();
    ASSERT_TRUE(tool->Open_Map(map));
    Settle();
  }
  template <class Part>
  Part& In(const char* name) const {
    return *tool->findChild<Part*>(QLatin1String(name));
  }
  CalibrationView& View() const { return In<CalibrationView>("view"); }
  const ControlPoints& Points() const { return tool->Work().Points(); }
  QPointF Crossing(int right, int high) const {
    int x = 0, y = 0;
    EXPECT_EQ(Koord_To_Pixel(shipped, right, high, x, y), onMap);
    return {static_cast<double>(x), static_cast<double>(y)};
  }
  QPoint On_Screen(QPointF pixel) const { return View().View_Point(pixel).toPoint(); }
  // At 100 %, where the place is in view.
  void Click(QPointF pixel) {
    View().Zoom_To(1, {});
    View().Make_Visible(pixel);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, On_Screen(pixel));
    Settle();
  }
  void Type(const char* box, const QString& text) {
    auto& line = In<QLineEdit>(box);
    line.setFocus();
    line.selectAll();
    QTest::keyClicks(&line, text);
    QTest::keyClick(&line, Qt::Key_Return);
    Settle();
  }
  void Set_Point(QPointF pixel, int right, int high) {
    Click(pixel);
    Type("txtRW", QString::number(right));
    Type("txtHW", QString::number(high));
  }
  void Drag(QPointF from, QPointF to) {
    View().Make_Visible(from);
    WindowTest::Drag(View().viewport(), On_Screen(from), On_Screen(to));
  }
  QString map;
  CoordinateState shipped;
  std::unique_ptr<FrmKalibrix> tool;
};

constexpr double metresPerPixel = 2.115;  // of the demo map

// Clicks three to seven pixels beside the crossings, typed coordinates: and the program knows where everything is.
TEST_F(KalibrixTest, TheDemoMapGetsItsCoordinatesBack) {
  Open_Demo_Map();
  const QPoint crossings[] = {
      {645000, 5511000}, {649000, 5511000}, {649000, 5514000}, {645000, 5514000}, {647000, 5512000}};
  const QPointF beside[] = {{4, -3}, {-5, 2}, {3, 6}, {-2, -4}, {5, 5}};
  for (size_t i = 0; i < 5; ++i)
    Set_Point(Crossing(crossings[i].x(), crossings[i].y()) + beside[i], crossings[i].x(), crossings[i].y());
  ASSERT_EQ(Points().size(), 5U);
  ASSERT_TRUE(tool->Work().Fit()) << tool->Work().Fault();
  EXPECT_LT(tool->Work().Fit()->meanPixels, 1);
  Walk(*tool, "lblRemarks = ; btnSave!; lblResult = *Gesichert: Karte.cal*");
  EXPECT_FALSE(tool->Work().Changed());
  {
    const FileDialogScript names{Path("Karte.cal"), Path("anders.cal")};
    In<QPushButton>("btnSaveAs").click();
    Walk(*tool, "lblResult = *heißt Karte.cal_alt*");
    With_Box("findet diese Datei nicht von selbst", [this] { In<QPushButton>("btnSaveAs").click(); });
    EXPECT_TRUE(File_Exists(Path("anders.cal")));
  }
  tool->close();
  Open_Map(map);
  ASSERT_EQ(Coord.Grid, gridUtm);
  EXPECT_EQ(Coord.ZoneText, "32U");
  for (int x = 0; x <= 3000; x += 500)
    for (int y = 0; y <= 2200; y += 550) {
      const QPointF off = Pixel_To_Koord(Coord, x, y) - Pixel_To_Koord(shipped, x, y);
      EXPECT_LT(std::hypot(off.x(), off.y()), metresPerPixel) << x << ' ' << y;
    }
  EXPECT_TRUE(Cursor_Texts({701, 1486}).kind.contains("UTM"));
  EXPECT_TRUE(GridVisible);
}

TEST_F(KalibrixTest, PointsAreStretchedCaughtMovedAndTakenBack) {
  Open_Demo_Map();
  In<QCheckBox>("chkSnap").setChecked(false);
  const QPointF a = Crossing(646000, 5511000), b = Crossing(649000, 5512000), c = Crossing(647000, 5514000);
  // Without coordinates a point does not count; the next one is proposed by its direction, from the third on by the
  // net.
  Click(a);
  EXPECT_FALSE(Points()[0].used);
  Type("txtRW", "646 000");
  Type("txtHW", "5511000");
  EXPECT_TRUE(Points()[0].used);
  Click(Crossing(647000, 5511000));
  EXPECT_EQ(Points()[1].place, QPointF(647000, 5511000));
  Click(b), Click(c);
  EXPECT_EQ(Points()[2].place, QPointF(649000, 5512000));
  EXPECT_EQ(Points()[3].place, QPointF(647000, 5514000));
  EXPECT_TRUE(tool->Work().Proof());
  // Within ten pixels a click means the point that is there, and the list says which one.
  Click(b + QPointF(8, 0));
  EXPECT_EQ(Points().size(), 4U);
  EXPECT_EQ(In<QTableWidget>("tblPoints").currentRow(), 2);
  const QPointF over = On_Screen(b + QPointF(0, 7));
  QMouseEvent hover(QEvent::MouseMove, over, View().viewport()->mapToGlobal(over), Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(View().viewport(), &hover);
  EXPECT_EQ(View().Shown().lit, 2U);
  Click(b + QPointF(40, 0));
  EXPECT_EQ(Points().size(), 5U);
  In<QTableWidget>("tblPoints").setFocus();
  QTest::keyClick(&In<QTableWidget>("tblPoints"), Qt::Key_Delete);
  EXPECT_EQ(Points().size(), 4U);
  // Moved with the mouse, nudged with the keys, counted by the step.
  const QPointF before = Points()[2].pixel;
  Drag(before, before + QPointF(25, 10));
  EXPECT_NEAR((Points()[2].pixel - before).x(), 25, 1);
  In<QTableWidget>("tblPoints").setCurrentCell(2, 1);
  QTest::keyClick(&View(), Qt::Key_Left);
  EXPECT_NEAR((Points()[2].pixel - before).x(), 24, 1);
  In<QToolButton>("btnNord").click();
  EXPECT_EQ(Points()[2].place, QPointF(649000, 5513000));
  EXPECT_GT(tool->Work().Fit()->meanPixels, 50);
  In<QTableWidget>("tblPoints").item(2, 0)->setCheckState(Qt::Unchecked);
  EXPECT_LT(tool->Work().Fit()->meanPixels, 2);
  for (int i = 0; i < 4; ++i) QTest::keyClick(tool.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Points()[2].pixel, before);
  EXPECT_EQ(Points()[2].place, QPointF(649000, 5512000));
  EXPECT_TRUE(Points()[2].used);
  QTest::keyClick(tool.get(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_NEAR((Points()[2].pixel - before).x(), 25, 1);
}

TEST_F(KalibrixTest, WhatIsNoCoordinateIsToldAndNothingIsLost) {
  Open_Demo_Map();
  Click(Crossing(646000, 5511000));
  Type("txtRW", "646000");
  With_Box("Das ist keine Koordinate: viel", [&] { Type("txtHW", "viel"); });
  EXPECT_FALSE(Points()[0].used);
  With_Box("mindestens drei Punkte", [&] { QTest::keyClick(tool.get(), Qt::Key_S, Qt::ControlModifier); });
  With_Box("noch nicht gesichert", MsgAnswer::Cancel, [&] { QTest::keyClick(tool.get(), Qt::Key_Escape); });
  EXPECT_TRUE(tool->isVisible());
  With_Box("noch nicht gesichert", MsgAnswer::No, [&] { QTest::keyClick(tool.get(), Qt::Key_Escape); });
  EXPECT_FALSE(tool->isVisible());
  EXPECT_FALSE(QFile::exists(Path("Karte.cal")));
}

TEST_F(KalibrixTest, AFileInForceIsTakenUpAndAWorldFileProposed) {
  Open_Demo_Map();
  File_Copy(FLURAX_SOURCE_DIR "/data/Beispiele/Karte.cal", Path("Karte.cal"));
  Open_Tool();
  EXPECT_EQ(Points().size(), 9U);
  EXPECT_FALSE(tool->Work().Changed());
  Walk(*tool, "lblResult = *Gelesen: Karte.cal*; txtZone = 32U");
  Kill(Path("Karte.cal"));
  Put("Karte.pgw", "2.5\n0\n0\n-2.5\n650000\n5512000\n");
  Open_Tool();
  EXPECT_TRUE(In<QLabel>("lblResult").text().contains("Vorschlag aus Karte.pgw"));
  EXPECT_NEAR(tool->Work().Fit()->metresPerPixel, 2.5, 1e-6);
  // Another kind of net: other words, and the zone has no meaning.
  In<QComboBox>("cmbKind").setCurrentIndex(static_cast<int>(NetKind::DegreesGms));
  Walk(*tool, "lblRW = Länge; txtZone off; txtSpacing = 1'");
  EXPECT_FALSE(In<QLabel>("lblRemarks").text().isEmpty());
  In<QComboBox>("cmbKind").setCurrentIndex(static_cast<int>(NetKind::Utm));
  Walk(*tool, "lblRemarks = ");
  const MessageScript box(MsgAnswer::No);
  tool->close();
}

TEST(TypedPlace, ReadsWhatPeopleWrite) {
  const auto degrees = [](const QString& text) { return Typed_Coordinate(NetKind::DegreesGms, text).value_or(-999); };
  for (const char* text :
       {"11°01'30,5\"", "11 1 30.5", "11° 1' 30,5", "+11°01'30,50¨", "11°01'30,5\" O", "11,0251388889"})
    EXPECT_NEAR(degrees(text), 11.025138889, 1e-8) << text;
  EXPECT_NEAR(degrees("11°30'"), 11.5, 1e-12);
  EXPECT_NEAR(degrees("11°"), 11, 1e-12);
  EXPECT_NEAR(degrees("-11°30'"), -11.5, 1e-12);
  EXPECT_NEAR(degrees("11 30 S"), -11.5, 1e-12);
  for (const char* text : {"", "11°61'", "181", "elf", "11°1'1'1'", "1e999", "nan"})
    EXPECT_EQ(degrees(text), -999) << text;
  EXPECT_EQ(Typed_Coordinate(NetKind::Utm, " 5 512 000,5 "), 5512000.5);
  EXPECT_EQ(Typed_Coordinate(NetKind::Utm, "5.512.000"), std::nullopt);
  for (const double value : {11.025138889, -0.5, 179.999999, 0.0})
    EXPECT_NEAR(degrees(Coordinate_Typed(NetKind::DegreesGms, value)), value, 0.006 / 3600);
  for (const double spacing : {1 / 60.0, 30 / 3600.0, 0.1 / 3600, 2.0})
    EXPECT_NEAR(Typed_Spacing(NetKind::DegreesGms, Spacing_Typed(NetKind::DegreesGms, spacing)).value_or(0), spacing,
                1e-12);
  EXPECT_EQ(Typed_Spacing(NetKind::Utm, "-1000"), std::nullopt);
}

// The command of the main program with the program that is delivered: it starts with the map, and when it has ended the
// map comes back with what lies beside it then.
TEST_F(KalibrixTest, TheMainProgramStartsItAndLoadsTheMapAgain) {
  map = Path("Wiese mit Rand.bmp");
  Save_Picture(QImage(Make_Map("leer.bmp", 500, 400)), map);
  ASSERT_TRUE(QFile::link(FLURAX_BINARY_DIR "/Kalibrix", ProgramFolder + "/Kalibrix"));
  qputenv("FLURAX_HOME", ProgramFolder.toLocal8Bit());
  Open_Map(map);
  MessageScript script({{"Soll die Karte erneut geladen werden ?", MsgAnswer::Yes}});
  Make_Grid();
  EXPECT_FALSE(frmMDI.MapOpen);
  QByteArray child, command;
  for (int i = 0; i < 100 && !command.contains("Kalibrix"); ++i) {
    QTest::qWait(50);
    child = Read_Bytes(u"/proc/self/task/%1/children"_s.arg(QCoreApplication::applicationPid()))
                .trimmed()
                .split(' ')
                .last();
    if (!child.isEmpty()) command = Read_Bytes(u"/proc/%1/cmdline"_s.arg(QString::fromLatin1(child)));
  }
  ASSERT_EQ(command.split('\0').value(1), map.toUtf8()) << "the path is one argument";
  // It lives until its user ends it.
  QTest::qWait(1500);
  EXPECT_TRUE(QFile::exists(u"/proc/%1"_s.arg(QString::fromLatin1(child))));
  EXPECT_TRUE(script.Seen().empty());
  Write_Lines(Path("Wiese mit Rand.cal"), Utm_Calibration({100, 300}, 80));
  ASSERT_EQ(kill(child.toInt(), SIGTERM), 0);
  for (int i = 0; i < 100 && script.Seen().empty(); ++i) QTest::qWait(50);
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(Coord.Grid, gridUtm);
  qunsetenv("FLURAX_HOME");
}
