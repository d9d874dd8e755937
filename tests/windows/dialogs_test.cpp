#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTextBrowser>
#include <QTimer>
#include <QtTest>

#include "canvas/frmBildZoom.h"
#include "canvas/map_state.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "platform/surface.h"
#include "start/events.h"
#include "start/file_names.h"
#include "start/frmAbgesichert.h"
#include "start/frmMalprg.h"
#include "start/frmMalprgOpen.h"
#include "start/frmMapNeu.h"
#include "start/frmMapSize.h"
#include "start/frmMapStart.h"
#include "start/frmOptions.h"
#include "start/frmTipps.h"
#include "start/frm_dialogs.h"
#include "start/map_open.h"
#include "start/settings.h"
#include "support/fixture.h"

namespace {

class DialogTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    for (int i = 0; i < 16; ++i) Palette.at(static_cast<size_t>(i)) = QBColor(i);
  }

  QStringList Ini() const {
    const QString path = Program_File(QStringLiteral("Flurax.ini"));
    return File_Exists(path) ? Read_Lines(path) : QStringList();
  }
  void Open(int width = 400, int height = 300) {
    const MessageScript script;
    Open_Map(Make_Map(QStringLiteral("Karte.bmp"), width, height));
    ASSERT_TRUE(frmMDI.MapOpen);
  }
};

template <typename T>
T* Part(const QWidget& window, const char* name) {
  T* part = window.findChild<T*>(QLatin1String(name));
  EXPECT_NE(part, nullptr) << name;
  return part;
}
void Press(const QWidget& window, const char* name) { Part<QAbstractButton>(window, name)->click(); }
// Typed over what stands there, as with the keys, so that textEdited is heard.
void Type(const QWidget& window, const char* name, const QString& text) {
  auto* edit = Part<QLineEdit>(window, name);
  edit->selectAll();
  QTest::keyClicks(edit, text);
}
QString Text(const QWidget& window, const char* name) { return Part<QLineEdit>(window, name)->text(); }
QString Label(const QWidget& window, const char* name) { return Part<QLabel>(window, name)->text(); }

}  // namespace

TEST_F(DialogTest, PaperSizesTurnWithTheOrientation) {
  const FrmMapNeu dialog;
  EXPECT_EQ(Label(dialog, "lblGroesse"), QStringLiteral("210 x 297 mm"));
  EXPECT_EQ(Label(dialog, "lblPixel"), QStringLiteral("794 x 1123 Bildpunkte"));
  Press(dialog, "optQuer");
  EXPECT_EQ(Label(dialog, "lblGroesse"), QStringLiteral("297 x 210 mm"));
  EXPECT_EQ(Label(dialog, "lblDIN0"), QStringLiteral("1189 x 841 mm"));
  Press(dialog, "optDIN6");
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
  struct Case {
    const char *width, *height;
    bool good;
  };
  for (const Case& c :
       {Case{"10", "3000", true}, Case{"100,5", "99.5", true}, Case{"9,99", "100", false}, Case{"100", "3000,1", false},
        Case{"", "100", false}, Case{"abc", "100", false}, Case{"-50", "100", false}, Case{"1e9", "100", false}}) {
    FrmMapNeu dialog;
    dialog.show();
    MessageScript script;
    if (!c.good) script.Expect(QStringLiteral("Bitte geben Sie Breite und Höhe zwischen 10 und 3000 mm ein."));
    if (*c.width)
      Type(dialog, "txtBreite", QLatin1String(c.width));
    else
      Part<QLineEdit>(dialog, "txtBreite")->clear();
    Type(dialog, "txtHoehe", QLatin1String(c.height));
    EXPECT_TRUE(Part<QRadioButton>(dialog, "optUser")->isChecked());
    Press(dialog, "cmdOK");
    EXPECT_EQ(dialog.result() == QDialog::Accepted, c.good) << c.width << " x " << c.height;
    EXPECT_EQ(dialog.isVisible(), !c.good);
  }
}

TEST_F(DialogTest, ANewMapIsWrittenAndOpened) {
  const QString path = Path(QStringLiteral("Leere_Karte.BMP"));
  FileDialogScript files;
  files.Answer(path);
  QTimer::singleShot(0, qApp, [] {
    auto* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    Type(*dialog, "txtBreite", QStringLiteral("100,5"));
    Type(*dialog, "txtHoehe", QStringLiteral("50"));
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  Show_frmMapNeu(nullptr);
  ASSERT_EQ(files.Seen().size(), 1U);
  EXPECT_EQ(files.Seen().front().name, QStringLiteral("Leere_Karte"));
  EXPECT_TRUE(frmMDI.MapOpen);
  EXPECT_EQ(QSize(MapWidthPx, MapHeightPx), QSize(380, 189));
}

TEST_F(DialogTest, TheNumbersOfAMapSizeStayInStep) {
  MapWidthPx = 1000;
  MapHeightPx = 500;
  Map.MapXPpM = Map.MapYPpM = 10000;
  const FrmMapSize dialog;
  EXPECT_EQ(Text(dialog, "txtBildbr"), QStringLiteral("100,00"));
  EXPECT_EQ(Text(dialog, "txthdpi"), QStringLiteral("254,00"));
  Part<QCheckBox>(dialog, "chkStretch")->setChecked(false);
  Type(dialog, "txtBildbr", QStringLiteral("200"));
  EXPECT_EQ(Text(dialog, "txthPpM"), QStringLiteral("5000"));
  EXPECT_EQ(Text(dialog, "txthdpi"), QStringLiteral("127,00"));
  EXPECT_EQ(Text(dialog, "txtBildho"), QStringLiteral("50,00"));  // the other direction stays
  Type(dialog, "txtvdpi", QStringLiteral("50,8"));
  EXPECT_EQ(Text(dialog, "txtBildho"), QStringLiteral("250,00"));
  EXPECT_EQ(Text(dialog, "txtvPpM"), QStringLiteral("2000"));
  EXPECT_EQ(Text(dialog, "txtvdpi"), QStringLiteral("50,8"));  // not changed under the fingers

  Part<QCheckBox>(dialog, "chkStretch")->setChecked(true);
  Type(dialog, "txthPpM", QStringLiteral("10000"));  // twice as fine
  EXPECT_EQ(Text(dialog, "txtBildbr"), QStringLiteral("100,00"));
  EXPECT_EQ(Text(dialog, "txtBildho"), QStringLiteral("125,00"));
  EXPECT_EQ(Text(dialog, "txtvPpM"), QStringLiteral("4000"));
}

TEST_F(DialogTest, AMapSizeIsTakenForTheSessionOrWrittenAfterAQuestion) {
  Open(1000, 500);
  const QByteArray before = Read_Bytes(MapFile);
  {
    FrmMapSize dialog;
    dialog.show();
    MessageScript script;
    script.Expect(QStringLiteral("Die neuen Werte wurden von FLURAX übernommen."));
    Type(dialog, "txtBildbr", QStringLiteral("100"));
    Press(dialog, "btnTake");
    EXPECT_FALSE(dialog.isVisible());
  }
  EXPECT_FLOAT_EQ(MapWidthMm, 100);
  EXPECT_EQ(Map.MapXPpM, 10000);
  EXPECT_EQ(Map.MapYPpM, 10000);
  EXPECT_EQ(Read_Bytes(MapFile), before);

  FrmMapSize dialog;
  dialog.show();
  MessageScript script;
  script.Expect(QStringLiteral("Der Informationsteil dieser Datei wird überschrieben"), MsgAnswer::No);
  script.Expect(QStringLiteral("Der Informationsteil dieser Datei wird überschrieben"), MsgAnswer::Yes);
  Press(dialog, "btnSave");
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(Read_Bytes(MapFile), before);
  Press(dialog, "btnSave");
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
    MessageScript script;
    script.Expect(QStringLiteral("Bitte geben Sie"));
    Type(dialog, "txtBildbr", QLatin1String(typed));
    Press(dialog, "btnTake");
    EXPECT_TRUE(dialog.isVisible()) << typed;
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(MapWidthMm, width);
    EXPECT_EQ(Map.MapXPpM, resolution);
  }
}

TEST_F(DialogTest, PaintProgramsAreAddedChosenAndRemovedWithOkOnly) {
  Set_Paint_Programs({QStringLiteral("/usr/bin/a"), QStringLiteral("/usr/bin/b")});
  const QStringList before = Ini();
  {
    FrmMalprg dialog;
    Press(dialog, "cmdRemove");
    Press(dialog, "cmdRemove");
    EXPECT_FALSE(Part<QPushButton>(dialog, "cmdRemove")->isEnabled());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(Ini(), before);
  }
  const QString plain = Path(QStringLiteral("text.txt"));
  Replace_File(plain, "kein Programm");
  FileDialogScript files;
  files.Answer(plain).Answer(QStringLiteral("/bin/sh")).Answer(std::nullopt);
  MessageScript script;
  script.Expect(QStringLiteral("kein Programm, das gestartet werden kann"));
  FrmMalprg dialog;
  for (int i = 0; i < 3; ++i) Press(dialog, "cmdAdd");
  Press(dialog, "cmdOK");
  EXPECT_EQ(Paint_Programs(),
            (QStringList{QStringLiteral("/bin/sh"), QStringLiteral("/usr/bin/a"), QStringLiteral("/usr/bin/b")}));
}

TEST_F(DialogTest, AMissingPaintProgramIsToldAndTheListStays) {
  Open();
  Set_Paint_Programs({Path(QStringLiteral("fehlt")), QStringLiteral("/bin/sh")});
  QString started;
  ShellFace face;
  face.start = [&](const QString& program, const QStringList&, std::function<void()>) {
    started = program;
    return true;
  };
  Set_Shell(face);
  FrmMalprgOpen dialog;
  dialog.show();
  MessageScript script;
  script.Expect(QStringLiteral("Dieses Programm wurde nicht gefunden"));
  Press(dialog, "cmdOK");
  EXPECT_TRUE(dialog.isVisible());
  Part<QListWidget>(dialog, "lstMalprg")->setCurrentRow(1);
  Press(dialog, "cmdOK");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(started, QStringLiteral("/bin/sh"));
}

TEST_F(DialogTest, SafeModeReturnsTheChoiceAndStopsByEsc) {
  const SafeModeQuestion question{QStringLiteral("/k/Karte.bmp"), QStringLiteral("/k/KARTE.MDB"),
                                  QStringLiteral("/k/KARTE_BAK.MDB")};
  for (int i = 0; i < 4; ++i) {
    FrmAbgesichert dialog(question);
    Press(dialog, qPrintable(QStringLiteral("optChoice%1").arg(i)));
    Press(dialog, "cmdWeiter");
    EXPECT_EQ(dialog.Choice(), i);
  }
  FrmAbgesichert dialog(question);
  dialog.show();
  EXPECT_EQ(Label(dialog, "lblDB"), question.table);
  EXPECT_EQ(Label(dialog, "lblBakName"), question.backup);
  QTest::mouseClick(Part<QLabel>(dialog, "lblChoice3"), Qt::LeftButton);
  EXPECT_TRUE(Part<QRadioButton>(dialog, "optChoice3")->isChecked());
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_EQ(dialog.Choice(), 4);
}

TEST_F(DialogTest, TheHooksShowTheWindowsAndBringTheAnswerBack) {
  QMainWindow mainWindow;
  mainWindow.show();
  Set_Dialog_Hooks(&mainWindow);
  QTimer::singleShot(0, qApp, [] {
    auto* dialog = qobject_cast<FrmAbgesichert*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    Press(*dialog, "optChoice2");
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  EXPECT_EQ(dialogHooks.Abgesichert({}), 2);
  QString caption, size;
  QTimer::singleShot(0, qApp, [&] {
    auto* dialog = qobject_cast<FrmTipps*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    caption = dialog->windowTitle();
    size = Label(*dialog, "lblGroesse");
    dialog->reject();
  });
  dialogHooks.BigMapHint({3000, 2334}, 24);
  EXPECT_EQ(caption, QStringLiteral("Tipps & Tricks: Große Bitmap und viele Bildschirmfarben"));
  EXPECT_TRUE(size.contains(QStringLiteral("3000 x 2334")));
  Clear_Dialog_Hooks();
  EXPECT_FALSE(dialogHooks.Abgesichert);
}

TEST_F(DialogTest, TipsAreTurnedOverAndSwitchedOff) {
  Write_Lines(Program_File(QStringLiteral("Tipps.txt")),
              {QStringLiteral("Tipp 1"), QStringLiteral("Erster"), QStringLiteral("Tipp 2"), QStringLiteral("Zweiter"),
               QStringLiteral("weiter"), QStringLiteral("Tipp 3"), QStringLiteral("Dritter")});
  FrmTipps dialog;
  auto* text = Part<QTextBrowser>(dialog, "txtTipp");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("Erster"));
  EXPECT_FALSE(Part<QPushButton>(dialog, "cmdBack")->isEnabled());
  Press(dialog, "cmdNext");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("Zweiter\nweiter"));
  Press(dialog, "cmdNext");
  EXPECT_EQ(text->toPlainText(), QStringLiteral("Dritter"));
  EXPECT_FALSE(Part<QPushButton>(dialog, "cmdNext")->isEnabled());

  Part<QCheckBox>(dialog, "ckTipps")->setChecked(false);
  Press(dialog, "cmdOK");
  EXPECT_FALSE(frmMDI.Tips);
  frmMDI.Tips = true;
  Read_Ini();
  EXPECT_FALSE(frmMDI.Tips);

  FrmTipps again;
  Part<QCheckBox>(again, "ckTipps")->setChecked(true);
  QTest::keyClick(&again, Qt::Key_Escape);
  EXPECT_FALSE(frmMDI.Tips);
}

TEST_F(DialogTest, TheToolbarMovesAtOnceUnlessATaskRuns) {
  int shown = 0;
  events.StateChanged.Connect([&] { ++shown; });
  {
    const FrmOptions dialog;
    Press(dialog, "optLinks");
    EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Left);
    EXPECT_EQ(Ini(), QStringList{QStringLiteral("TLB: vbAlignLeft")});
    EXPECT_EQ(dialog.Tag(), QString());
    EXPECT_EQ(shown, 1);
  }
  frmMDI.MapOpen = true;
  Toolbar1.Tag = QStringLiteral("Text");
  FrmOptions dialog;
  Press(dialog, "optUnten");
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Left);
  EXPECT_EQ(Ini(), QStringList{QStringLiteral("TLB: vbAlignLeft")});
  EXPECT_EQ(dialog.Tag(), QStringLiteral("dirty"));
  Press(dialog, "cmdApply");
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Bottom);
  EXPECT_EQ(Ini(), QStringList{QStringLiteral("TLB: vbAlignBottom")});
  EXPECT_EQ(dialog.Tag(), QString());
}

TEST_F(DialogTest, OptionsAreTakenAfterTheQuestionAndRedrawTheMapOnce) {
  frmMDI.MapOpen = true;
  int redraws = 0;
  events.RedrawWanted.Connect([&] { ++redraws; });
  const OptionValues before = Current_Options();
  const auto change = [](const FrmOptions& dialog) {
    for (const char* box : {"ckSichtbar", "ckText", "ckBild", "ckShow", "ckTipps"}) Press(dialog, box);
    Press(dialog, "optRelief");
    Press(dialog, "btnFarbe3");
  };
  {  // No
    FrmOptions dialog;
    change(dialog);
    EXPECT_EQ(dialog.Tag(), QStringLiteral("dirty"));
    MessageScript script;
    script.Expect(QStringLiteral("Die Optionen wurden verändert;"), MsgAnswer::No);
    Press(dialog, "cmdOK");
  }
  EXPECT_EQ(Current_Options(), before);
  {  // Esc asks nothing
    FrmOptions dialog;
    change(dialog);
    const MessageScript script;
    QTest::keyClick(&dialog, Qt::Key_Escape);
  }
  EXPECT_EQ(Current_Options(), before);
  EXPECT_EQ(redraws, 0);
  EXPECT_TRUE(Ini().isEmpty());
  {  // changed and changed back
    FrmOptions dialog;
    Press(dialog, "ckText");
    Press(dialog, "ckText");
    const MessageScript script;
    Press(dialog, "cmdOK");
  }
  EXPECT_EQ(redraws, 0);
  {  // Yes
    FrmOptions dialog;
    change(dialog);
    MessageScript script;
    script.Expect(QStringLiteral("Möchten Sie die neuen Einstellungen übernehmen?"), MsgAnswer::Yes);
    Press(dialog, "cmdOK");
  }
  EXPECT_TRUE(frmMDI.showHidden && frmMDI.overview && frmMDI.raisedButtons);
  EXPECT_FALSE(frmMDI.showTexts || frmMDI.showPictures || frmMDI.Tips);
  EXPECT_EQ(redraws, 1);
  frmMDI.Tips = true;
  Read_Ini();
  EXPECT_FALSE(frmMDI.Tips);
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Top);
}

TEST_F(DialogTest, StandardColoursComeBackAndAreKept) {
  Palette[4] = qRgb(1, 2, 3);
  FrmOptions dialog;
  Press(dialog, "cmdPalStandart");
  EXPECT_EQ(Palette[4], qRgb(1, 2, 3));  // not before it is applied
  Press(dialog, "cmdApply");
  EXPECT_EQ(Palette[4], QBColor(4));
  EXPECT_TRUE(File_Exists(Program_File(QStringLiteral("MAP-Farb"))));
}

TEST_F(DialogTest, AFullDiskIsToldAndTheOptionsHoldForTheSession) {
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  FrmOptions dialog;
  Press(dialog, "ckText");
  MessageScript script;
  script.Expect(QStringLiteral("Error: 61"), MsgAnswer::No);
  Press(dialog, "cmdApply");
  EXPECT_FALSE(frmMDI.showTexts);
}

TEST_F(DialogTest, AZoomFactorIsTakenWithCommaOrPointWithinItsRange) {
  struct Case {
    const char* typed;
    float zoom;  // 0 = refused
  };
  for (const Case& c : {Case{"0,5", 2}, Case{"0.25", 4}, Case{"8", 0.125F}, Case{"0,05", 20}, Case{"0,04", 0},
                        Case{"8,01", 0}, Case{"x", 0}, Case{"-1", 0}}) {
    Open();
    Map.Zoom = 1;
    Menu(QStringLiteral("mnuZoom100")).Checked = true;
    FrmBildZoom dialog;
    dialog.show();
    MessageScript script;
    if (c.zoom == 0) script.Expect(QStringLiteral("Bitte geben Sie einen Faktor zwischen 0,05 und 8 ein."));
    Type(dialog, "txtFaktor", QLatin1String(c.typed));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_FLOAT_EQ(Map.Zoom, c.zoom == 0 ? 1 : c.zoom) << c.typed;
    EXPECT_EQ(dialog.isVisible(), c.zoom == 0) << c.typed;
    EXPECT_EQ(Menu(QStringLiteral("mnuZoomFak")).Checked, c.zoom != 0) << c.typed;
    EXPECT_EQ(Menu(QStringLiteral("mnuZoom100")).Checked, c.zoom == 0) << c.typed;
    Close_Map();
  }
}

TEST_F(DialogTest, TheShownZoomFactorIsNotRoundedIntoTheMap) {
  Open();
  Map.Zoom = 3;
  FrmBildZoom dialog;
  EXPECT_EQ(Text(dialog, "txtFaktor"), QStringLiteral("0,33"));
  Press(dialog, "cmdOK");
  EXPECT_EQ(Map.Zoom, 3.0F);
}

TEST_F(DialogTest, TheZoomWindowStandsAtTheRightEdge) {
  Open();
  QMainWindow mainWindow;
  mainWindow.setGeometry(50, 40, 600, 400);
  mainWindow.show();
  FrmBildZoom dialog(&mainWindow);
  dialog.show();
  EXPECT_EQ(dialog.frameGeometry().right() + 1, 50 + 600 - 6);
}

TEST_F(DialogTest, TheStartButtonOpensTheMenuAndTheButterflyStaysInside) {
  QMainWindow mainWindow;
  QMenu* map = mainWindow.menuBar()->addMenu(QStringLiteral("&Karte"));
  map->addAction(QStringLiteral("Karte öffnen ..."));
  auto* start = Make_frmMapStart(&mainWindow);
  mainWindow.setCentralWidget(start);
  mainWindow.resize(700, 450);
  mainWindow.show();
  auto* timer = Part<QTimer>(*start, "Timer1");
  EXPECT_TRUE(timer->isActive());
  EXPECT_EQ(timer->interval(), 150);

  auto* butterfly = Part<QWidget>(*start, "Bfly1");
  std::vector<QPoint> places;
  for (int i = 0; i < 400; ++i) {
    QMetaObject::invokeMethod(timer, "timeout");
    ASSERT_TRUE(start->rect().contains(butterfly->geometry())) << i;
    ASSERT_FALSE(Part<QPushButton>(*start, "StartButton")->geometry().intersects(butterfly->geometry())) << i;
    places.push_back(butterfly->pos());
  }
  EXPECT_NE(places[0], places[100]);

  Press(*start, "StartButton");
  EXPECT_TRUE(map->isVisible());
  map->close();
  start->hide();
  EXPECT_FALSE(timer->isActive());
}
