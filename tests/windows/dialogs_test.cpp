#include "windows/canvas/frmBildZoom.h"
#include "windows/main/dialog_hooks.h"
#include "windows/maps/frmAbgesichert.h"
#include "windows/maps/frmMalprg.h"
#include "windows/maps/frmMalprgOpen.h"
#include "windows/maps/frmMapNeu.h"
#include "windows/maps/frmMapSize.h"
#include "windows/maps/frmMapStart.h"
#include "windows/maps/frmOptions.h"
#include "windows/maps/frmTipps.h"

class DialogTest : public FluraxTest {
 protected:
  QStringList Ini() const {
    const QString path = Program_File("Flurax.ini");
    return File_Exists(path) ? Read_Lines(path) : QStringList();
  }
  void Open(int width = 400, int height = 300) {
    const MessageScript script;
    Open_Map(Make_Map("Karte.bmp", width, height));
    ASSERT_TRUE(frmMDI.MapOpen);
  }
};

TEST_F(DialogTest, PaperSizesTurnWithTheOrientation) {
  const FrmMapNeu dialog;
  Walk(dialog, "lblGroesse = 210 x 297 mm; lblPixel = 794 x 1123 Bildpunkte; optQuer!; lblGroesse = 297 x 210 mm");
  Walk(dialog, "lblDIN0 = 1189 x 841 mm; optDIN6!");
  EXPECT_EQ(dialog.Chosen_Size(), QSizeF(148, 105));
  // Every sheet is half of the one before it, cut to whole millimetres.
  Press(dialog, "optHoch");
  for (int i = 1; i < 7; ++i) {
    Press(dialog, qPrintable(QStringLiteral("optDIN%1").arg(i - 1)));
    const QSizeF larger = dialog.Chosen_Size();
    Press(dialog, qPrintable(QStringLiteral("optDIN%1").arg(i)));
    EXPECT_EQ(dialog.Chosen_Size(), QSizeF(std::floor(larger.height() / 2), larger.width())) << "DIN A" << i;
  }
}

TEST_F(DialogTest, OwnSizesAreTakenWithCommaAndWithinTheLimits) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"10", "3000", true}, {"100,5", "99.5", true}, {"9,99", "100", false}, {"100", "3000,1", false},
      {"", "100", false},   {"abc", "100", false},   {"-50", "100", false},  {"1e9", "100", false}};
  for (const auto& [width, height, good] : cases) {
    FrmMapNeu dialog;
    dialog.show();
    MessageScript script;
    if (!good) script.Expect("Bitte geben Sie Breite und Höhe zwischen 10 und 3000 mm ein.");
    Walk(dialog, QString("txtBreite < %1; txtHoehe < %2; optUser checked").arg(QString(width), QString(height)));
    Press(dialog, "cmdOK");
    EXPECT_EQ(dialog.result() == QDialog::Accepted, good) << width << " x " << height;
    EXPECT_EQ(dialog.isVisible(), !good);
  }
}

TEST_F(DialogTest, ANewMapIsWrittenAndOpened) {
  FileDialogScript files{Path("Leere_Karte.BMP")};
  When_Shown([](QWidget& dialog) {
    Walk(dialog, "txtBreite < 100,5; txtHoehe < 50");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  Show_frmMapNeu(nullptr);
  EXPECT_EQ(files.Seen().at(0).name, "Leere_Karte");
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(QSize(MapWidthPx, MapHeightPx), QSize(380, 189));
  EXPECT_EQ(Map.MapClip[0].image.pixel(370, 180), qRgb(255, 255, 255));
}

TEST_F(DialogTest, TheNumbersOfAMapSizeStayInStep) {
  MapWidthPx = 1000;
  MapHeightPx = 500;
  Map.MapXPpM = Map.MapYPpM = 10000;
  const FrmMapSize dialog;
  struct Case {
    bool stretch;
    const char *field, *typed;
    const char* after;  // size, pixels per metre and per inch, across and down
  };
  for (const Case& c : {Case{false, nullptr, "", "100,00 50,00 10000 10000 254,00 254,00"},
                        Case{false, "txtBildbr", "200", "200 50,00 5000 10000 127,00 254,00"},
                        Case{false, "txtvdpi", "50,8", "200,00 250,00 5000 2000 127,00 50,8"},
                        Case{true, "txthPpM", "10000", "100,00 125,00 10000 4000 254,00 101,60"}}) {
    Fill(dialog, "chkStretch", c.stretch);
    if (c.field) Type(dialog, c.field, c.typed);
    QStringList shown;
    for (const char* field : {"txtBildbr", "txtBildho", "txthPpM", "txtvPpM", "txthdpi", "txtvdpi"})
      shown << Text_In(dialog, field);
    EXPECT_EQ(shown.join(' '), c.after);
  }
}

TEST_F(DialogTest, AMapSizeIsTakenForTheSessionOrWrittenAfterAQuestion) {
  Open(1000, 500);
  const QByteArray before = Read_Bytes(MapFile);
  MessageScript script;
  {
    FrmMapSize dialog;
    dialog.show();
    script.Expect("Die neuen Werte wurden von FLURAX übernommen.");
    Walk(dialog, "txtBildbr < 100; btnTake!");
    EXPECT_FALSE(dialog.isVisible());
  }
  EXPECT_FLOAT_EQ(MapWidthMm, 100);
  EXPECT_NEAR(MapPixelMm, 0.1, 1e-6);
  EXPECT_EQ(std::tuple(Map.MapXPpM, Map.MapYPpM), std::tuple(10000, 10000));
  FrmMapSize dialog;
  dialog.show();
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    EXPECT_EQ(Read_Bytes(MapFile), before);
    EXPECT_TRUE(dialog.isVisible());
    script.Expect("Der Informationsteil dieser Datei wird überschrieben", answer);
    Press(dialog, "btnSave");
    EXPECT_TRUE(script.Seen().back().text.contains("Wollen Sie die Größe der Karte wirklich verändern? "));
  }
  QByteArray expected = before;
  expected.replace(38, 8, QByteArray::fromHex("1027000010270000"));
  EXPECT_EQ(Read_Bytes(MapFile), expected);  // 10000 twice, nothing else
}

TEST_F(DialogTest, UnusableMapSizesAreRefusedAndEscChangesNothing) {
  Open(1000, 500);
  const float width = MapWidthMm;
  const int resolution = Map.MapXPpM;
  for (const char* typed : {"0", "abc", "-5", "0,0001", "200000"}) {
    FrmMapSize dialog;
    dialog.show();
    MessageScript script("Bitte geben Sie");
    Walk(dialog, "txtBildbr < " + QString(typed) + "; btnTake!");
    EXPECT_TRUE(dialog.isVisible()) << typed;
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(MapWidthMm, width);
    EXPECT_EQ(Map.MapXPpM, resolution);
  }
}

TEST_F(DialogTest, PaintProgramsAreAddedChosenAndRemovedWithOkOnly) {
  const QStringList two = {"/usr/bin/a", "/usr/bin/b"};
  Set_Paint_Programs(two);
  {
    FrmMalprg dialog;
    Walk(dialog, "cmdRemove!; cmdRemove!; cmdRemove off");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(Paint_Programs(), two);
  }
  const QString plain = Path("text.txt");
  Replace_File(plain, "kein Programm");
  FileDialogScript files{plain, "/bin/sh", std::nullopt};
  MessageScript script("kein Programm, das gestartet werden kann");
  FrmMalprg dialog;
  Walk(dialog, "cmdAdd!; cmdAdd!; cmdAdd!; cmdOK!");
  EXPECT_EQ(Paint_Programs(), QStringList{"/bin/sh"} + two);
  // One that is missing is told, and the list stays.
  Open();
  Set_Paint_Programs({Path("fehlt"), "/bin/sh"});
  const RecordedShell shell;
  FrmMalprgOpen start;
  start.show();
  With_Box("Dieses Programm wurde nicht gefunden", [&] { Press(start, "cmdOK"); });
  EXPECT_TRUE(start.isVisible());
  Walk(start, "lstMalprg : #1; cmdOK!");
  EXPECT_FALSE(start.isVisible());
  EXPECT_EQ(shell.program, "/bin/sh");
}

TEST_F(DialogTest, TheHooksShowTheWindowsAndBringTheAnswerBack) {
  QMainWindow mainWindow;
  mainWindow.show();
  Set_Dialog_Hooks(&mainWindow);
  const SafeModeQuestion question{"/k/Karte.bmp", "/k/KARTE.MDB", "/k/KARTE_BAK.MDB"};
  for (int choice = 0; choice <= 4; ++choice) {
    When_Shown([&](QWidget& dialog) {
      Walk(dialog, "lblDB = " + question.table + "; lblBakName = " + question.backup);
      if (choice == 4) return QTest::keyClick(&dialog, Qt::Key_Escape);
      const QByteArray number = QByteArray::number(choice);
      QTest::mouseClick(Part<QLabel>(dialog, "lblChoice" + number), Qt::LeftButton);
      EXPECT_TRUE(Part<QRadioButton>(dialog, "optChoice" + number)->isChecked());
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(dialogHooks.Abgesichert(question), choice);
  }
  When_Shown([&](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Tipps & Tricks: Große Bitmap und viele Bildschirmfarben");
    Walk(dialog, "lblGroesse = *3000 x 2334*");
    dialog.close();
  });
  dialogHooks.BigMapHint({3000, 2334});
  Clear_Dialog_Hooks();
  EXPECT_FALSE(dialogHooks.Abgesichert);
}

TEST_F(DialogTest, TipsAreTurnedOverAndSwitchedOff) {
  Write_Lines(Program_File("Tipps.txt"), {"Tipp 1", "Erster", "Tipp 2", "Zweiter", "weiter", "Tipp 3", "Dritter"});
  FrmTipps dialog;
  Walk(dialog, "txtTipp = Erster; cmdBack off; cmdNext!; txtTipp = Zweiter\nweiter; cmdNext!; txtTipp = Dritter");
  Walk(dialog, "cmdNext off; ckTipps : false; cmdOK!");
  EXPECT_FALSE(frmMDI.Tips);
  frmMDI.Tips = true;
  Read_Ini();
  EXPECT_FALSE(frmMDI.Tips);
  FrmTipps again;
  Fill(again, "ckTipps", true);
  QTest::keyClick(&again, Qt::Key_Escape);
  EXPECT_FALSE(frmMDI.Tips);
}

TEST_F(DialogTest, TheToolbarMovesAtOnceUnlessATaskRuns) {
  int shown = 0;
  events.StateChanged.Connect([&] { ++shown; });
  const auto expect = [&](const FrmOptions& dialog, ToolbarPlace place, const char* line, bool changed) {
    EXPECT_EQ(frmMDI.toolbarPlace, place);
    EXPECT_EQ(Ini(), QStringList{line});
    EXPECT_EQ(dialog.Is_Changed(), changed);
  };
  const FrmOptions dialog;
  Press(dialog, "optLinks");
  expect(dialog, ToolbarPlace::Left, "TLB: vbAlignLeft", false);
  EXPECT_EQ(shown, 1);
  frmMDI.MapOpen = true;
  Toolbar1.Tag = ToolMode::Text;
  const FrmOptions second;
  Press(second, "optUnten");
  expect(second, ToolbarPlace::Left, "TLB: vbAlignLeft", true);
  Press(second, "cmdApply");
  expect(second, ToolbarPlace::Bottom, "TLB: vbAlignBottom", false);
}

TEST_F(DialogTest, OptionsAreTakenAfterTheQuestionAndRedrawTheMapOnce) {
  frmMDI.MapOpen = true;
  int redraws = 0;
  events.RedrawWanted.Connect([&] { ++redraws; });
  const OptionValues before = Current_Options();
  enum class Way { No, Escape, ChangedBack, Yes };
  for (const Way way : {Way::No, Way::Escape, Way::ChangedBack, Way::Yes}) {
    EXPECT_EQ(Current_Options(), before);
    EXPECT_EQ(redraws, 0);
    EXPECT_TRUE(Ini().isEmpty());
    FrmOptions dialog;
    for (const char* box : {"ckSichtbar", "ckText", "ckBild", "ckShow", "ckTipps"}) {
      Press(dialog, box);
      if (way == Way::ChangedBack) Press(dialog, box);
    }
    if (way != Way::ChangedBack) Walk(dialog, "optRelief!; btnFarbe3!");
    EXPECT_EQ(dialog.Is_Changed(), way != Way::ChangedBack);
    MessageScript script;
    if (way == Way::No) script.Expect("Die Optionen wurden verändert;", MsgAnswer::No);
    if (way == Way::Yes) script.Expect("Möchten Sie die neuen Einstellungen übernehmen?", MsgAnswer::Yes);
    if (way == Way::Escape) QTest::keyClick(&dialog, Qt::Key_Escape);
    if (way != Way::Escape) Press(dialog, "cmdOK");
  }
  EXPECT_TRUE(frmMDI.showHidden && frmMDI.overview && frmMDI.raisedButtons);
  EXPECT_FALSE(frmMDI.showTexts || frmMDI.showPictures || frmMDI.Tips);
  EXPECT_EQ(redraws, 1);
  frmMDI.Tips = true;
  Read_Ini();
  EXPECT_FALSE(frmMDI.Tips);
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Top);
}

TEST_F(DialogTest, StandardColoursComeBackAndAFullDiskIsTold) {
  Palette[4] = qRgb(1, 2, 3);
  FrmOptions dialog;
  Press(dialog, "cmdPalStandart");
  EXPECT_EQ(Palette[4], qRgb(1, 2, 3));  // not before it is applied
  Press(dialog, "cmdApply");
  EXPECT_EQ(Palette[4], QBColor(4));
  EXPECT_TRUE(File_Exists(Program_File("MAP-Farb")));
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  MessageScript script("Error: 61", MsgAnswer::No);
  Walk(dialog, "ckText!; cmdApply!");
  EXPECT_FALSE(frmMDI.showTexts);
}

TEST_F(DialogTest, AZoomFactorIsTakenWithCommaOrPointWithinItsRange) {
  const std::pair<const char*, float> cases[] = {
      // 0: refused
      {"0,5", 2}, {"0.25", 4}, {"8", 0.125F}, {"0,05", 20}, {"0,04", 0}, {"8,01", 0}, {"x", 0}, {"-1", 0}};
  for (const auto& [typed, zoom] : cases) {
    Open();
    Map.Zoom = 1;
    Map.ZoomMenu = "mnuZoom100";
    FrmBildZoom dialog;
    dialog.show();
    MessageScript script;
    if (zoom == 0) script.Expect("Bitte geben Sie einen Faktor zwischen 0,05 und 8 ein.");
    Type(dialog, "txtFaktor", typed);
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_FLOAT_EQ(Map.Zoom, zoom == 0 ? 1 : zoom) << typed;
    EXPECT_EQ(dialog.isVisible(), zoom == 0) << typed;
    EXPECT_EQ(Map.ZoomMenu, zoom != 0 ? "mnuZoomFak" : "mnuZoom100") << typed;
    Close_Map();
  }
  // The window stands at the right edge and rounds nothing into the map.
  Open();
  Map.Zoom = 3;
  QMainWindow mainWindow;
  mainWindow.setGeometry(50, 40, 600, 400);
  mainWindow.show();
  FrmBildZoom dialog(&mainWindow);
  dialog.show();
  EXPECT_EQ(dialog.frameGeometry().right() + 1, 50 + 600 - 6);
  Walk(dialog, "txtFaktor = 0,33; cmdOK!");
  EXPECT_EQ(Map.Zoom, 3.0F);
}

TEST_F(DialogTest, TheStartButtonOpensTheMenuAndTheButterflyStaysInside) {
  QMainWindow mainWindow;
  QMenu* map = mainWindow.menuBar()->addMenu("&Karte");
  map->addAction("Karte öffnen ...");
  auto* start = Make_frmMapStart(&mainWindow);
  mainWindow.setCentralWidget(start);
  mainWindow.resize(700, 450);
  mainWindow.show();
  auto* timer = Part<QTimer>(*start, "Timer1");
  EXPECT_TRUE(timer->isActive());
  EXPECT_EQ(timer->interval(), 150);
  auto* butterfly = Part<QWidget>(*start, "Bfly1");
  const QPoint first = butterfly->pos();
  for (int i = 0; i < 400; ++i) {
    QMetaObject::invokeMethod(timer, "timeout");
    ASSERT_TRUE(start->rect().contains(butterfly->geometry())) << i;
    ASSERT_FALSE(Part<QPushButton>(*start, "StartButton")->geometry().intersects(butterfly->geometry())) << i;
    EXPECT_TRUE(i != 100 || butterfly->pos() != first);
  }
  Press(*start, "StartButton");
  EXPECT_TRUE(map->isVisible());
  map->close();
  start->hide();
  EXPECT_FALSE(timer->isActive());
}
