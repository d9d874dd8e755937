#include "windows/import/frmCSVImport.h"
#include "windows/import/frmGPS.h"
#include "windows/import/frmGPSGeraet.h"
#include "windows/import/frmImport.h"
#include "windows/import/frmWpImport.h"

// A metre a pixel; the lower left corner of the map lies at 640 000 / 5 500 000.
class GpsWindowTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    Coord = Utm_Net({600, 400}, {0, 400}, 1000);
    Coord.GridR = 640000, Coord.GridH = 5500000;
    dialog = &Chosen<FrmGPS>("mnuImportGPS");
  }
  QString Own_File(const QString& name = QStringLiteral("Gang.wpt")) {
    const QString path = Path(name);
    Write_Lines(path, {"D  WGS-84", "M  UTM", "H  Name      Zone Rechtswert Hochwert Bemerkung",
                       "W  Igel      32U  640100     5500300  am Bach", "W  Dachs     32U  640200     5500300",
                       "W  Otter     32U  640300     5500300", "W  Fern      32U  740300     5500300",
                       "W  Zone      33U  640300     5500300", "W  Kaputt    32U  sechs      5500300"});
    return path;
  }
  void Load(const char* menu, const QString& path) {
    FileDialogScript files{path};
    dialog->findChild<QAction*>(QLatin1String(menu))->trigger();
    Settle();
  }
  FrmWpImport& Onward() {
    Press(*dialog, "cmdWeiter");
    Settle();
    return Shown<FrmWpImport>();
  }
  QStringList List(int column) {
    QStringList all;
    const QAbstractItemModel* model = Part<QTableView>(*dialog, "Text1")->model();
    for (int row = 0; row < model->rowCount(); ++row) all << model->index(row, column).data().toString();
    return all;
  }

  FrmGPS* dialog = nullptr;
};

TEST_F(GpsWindowTest, ShowsEveryRecordAndImportsAll) {
  EXPECT_EQ(Text_In(*dialog, "cmdWeiter"), "&Abbrechen");
  Append_Entry({"Text", "Otter", "Arial", 10, 0, 14, -1, 300, 100, 0, 0, 0});
  Load("mnuLoadWp", Own_File());
  EXPECT_EQ(List(2), (QStringList{"Igel", "Dachs", "Otter", "Fern", "Zone"}));
  EXPECT_EQ(List(1), (QStringList{"", "", "EG", "", ""}));
  const QStringList symbols = List(0);
  EXPECT_EQ(symbols[0], symbols[1]);
  EXPECT_EQ(QSet<QString>(symbols.begin(), symbols.end()).size(), 4) << "there, exists, too far, another zone";
  EXPECT_FALSE(symbols.contains(QString())) << "the font shows all of them";
  Walk(*dialog, "lblzurechts = 1; lblObjOk = 2; lblNamePosExist = 1; lblHeader = *UTM (WGS-84)*");
  Walk(*dialog, "lblInfo3 = *die erste: Zeile 9 \"Kaputt\"*; cmdWeiter = &Weiter >>");
  FrmWpImport& choice = Onward();
  Fill(choice, "chkBemerkung", true);
  With_Box("2 Einträge wurden in die Karte importiert.", [&] { Press(choice, "cmdImport"); });
  EXPECT_EQ(Texts(), (QStringList{"Otter", "Igel am Bach", "Dachs"}));
  EXPECT_EQ(List(0).size(), 0) << "not twice";
  EXPECT_FALSE(choice.isVisible());
  Press(*dialog, "cmdWeiter");
  Settle();
  EXPECT_FALSE(Is_Open<FrmGPS>()) << "nothing to go on with";
}

TEST_F(GpsWindowTest, TakesTheMarkedOnesOrAsksOfEach) {
  Load("mnuLoadWp", Own_File());
  FrmWpImport& choice = Onward();
  Fill(choice, "optMark", true);
  With_Box("Option: Markierte Wegpunkte importieren", [&] { Press(choice, "cmdImport"); });
  auto* list = Part<QTableView>(*dialog, "Text1");
  list->setCurrentIndex(list->model()->index(1, 2));
  Key_On(list, Qt::Key_Down, Qt::ShiftModifier);
  Key_On(list, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(dialog->Marked_Rows(), (std::vector<int>{1, 2, 3}));
  With_Box("5 Einträge in der Datei, 2 davon tatsächlich importiert.", MsgAnswer::Cancel,
           [&] { Press(choice, "cmdImport"); });
  EXPECT_TRUE(Texts().isEmpty()) << "taken back";
  Load("mnuLoadWp", Own_File());
  Fill(Onward(), "optEinzel", true);
  MessageScript messages{{"Igel", MsgAnswer::No}, {"Dachs", MsgAnswer::Yes}, {"Otter", MsgAnswer::No}};
  messages.Expect("5 Einträge in der Datei, 1 davon");
  Press(choice, "cmdImport");
  EXPECT_EQ(Texts(), QStringList("Dachs"));
}

TEST_F(GpsWindowTest, OtherCoordinatesAreAskedAndFaultsAreTold) {
  const QString gpx = Path("Gang.gpx");
  // 640 100 / 5 500 200 in degrees.
  Write_Lines(gpx, {"<gpx><trk><name>Weg</name><trkseg><trkpt lat='49.6380798' lon='10.9404049'/>",
                    "<trkpt lat='49.6390798' lon='10.9414049'/></trkseg></trk></gpx>"});
  With_Box("Koordinatensystem falsch", MsgAnswer::No, [&] { Load("mnuLoadWp", gpx); });
  EXPECT_TRUE(List(0).isEmpty());
  MessageScript messages("Koordinatensystem falsch", MsgAnswer::Other);
  Load("mnuLoadWp", gpx);
  EXPECT_EQ(List(2), (QStringList{"Weg", "Weg"})) << "no waypoints: its track";
  EXPECT_TRUE(Text_In(*dialog, "lblHeader").contains("umgerechnet: WGS-84 -> UTM 32 WGS-84"));
  FrmWpImport& choice = Onward();
  EXPECT_FALSE(Is_Enabled(choice, "cmdSchrift"));
  messages.Expect("1 Einträge wurden in die Karte importiert.");
  Press(choice, "cmdImport");
  EXPECT_EQ(Texts(), QStringList("Weg"));
  for (const QByteArray& content : {QByteArray(), QByteArray("<gpx></gpx>"), QByteArray("W  x\nW  y\n")}) {
    messages.AllowAny(MsgAnswer::Ok);
    Load("mnuLoadTrack", Put("schlecht.trk", content));
    EXPECT_EQ(Text_In(*dialog, "cmdWeiter"), "&Abbrechen");
  }
  EXPECT_TRUE(messages.Seen().back().text.contains("Kopfzeile")) << messages.Seen().back().text;
  Coord = {};
  dialog->findChild<QAction*>("mnuLoadWp")->trigger();
  EXPECT_TRUE(messages.Seen().back().text.contains("Karte ist nicht georeferenziert"));
}

// Each kind of file into the window it belongs to, whose help F1 opens.
TEST_F(GpsWindowTest, AFileDroppedOnTheMapOpensItsImport) {
  const auto help = [](QWidget& of) {
    of.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&of));
    QTest::keyClick(&of, Qt::Key_F1);
    HelpWindow* page = Help();
    return page ? (page->close(), page->Page()) : QString();
  };
  ASSERT_TRUE(QDir().mkpath(Program_File("Hilfe")));
  for (const char* page : {"GPS.htm", "Overlay.htm"})
    Write_Lines(Program_File("Hilfe/") + QLatin1String(page), {"<p>Seite</p>"});
  dialog->close();
  Settle();
  ASSERT_TRUE(Drop(Own_File()));
  dialog = &Shown<FrmGPS>();
  EXPECT_EQ(List(2).size(), 5);
  EXPECT_EQ(help(*dialog), "GPS.htm");
  MessageScript messages("Koordinatensystem falsch", MsgAnswer::Other);
  // 640 100 / 5 500 200 in degrees.
  ASSERT_TRUE(Drop(Put("a.OVL", "[Symbol 1]\nTyp=2\nText=hier\nXKoord=10.9404049\nYKoord=49.6380798\n")));
  EXPECT_EQ(Text_In(*dialog, "lblObjOk"), "1");
  EXPECT_EQ(help(*dialog), "Overlay.htm");
  EXPECT_EQ(dialog->windowTitle(), "Karteneinträge importieren");
  messages.Expect("binäres Overlay", MsgAnswer::Cancel);
  ASSERT_TRUE(Drop(Put("b.ovl", "DOMGVCRD Ovlfile V2.0:")));
  EXPECT_FALSE(Is_Open<FrmGPS>()) << "given up";
  ASSERT_TRUE(Drop(Put("c.csv", "#X;#Y;#Eintrag;#UTM\n32640100;5500300;Igel\n")));
  EXPECT_TRUE(Text_In(Shown<FrmCSVImport>(), "lblMsg").startsWith("1 Karteneinträge"));
  Make_Table_File(Path("Andere.MDB"), "Andere.bmp").reset();
  ASSERT_TRUE(Drop(Path("Andere.MDB")));
  EXPECT_EQ(Text_In(Shown<FrmImport>(), "lblInfo"), "Quelle: " + Path("Andere.MDB"));
  EXPECT_FALSE(Drop(Path("Brief.odt")));
}

TEST_F(GpsWindowTest, TheTransferProgramLeavesAFile) {
  const QString program = Put("Programm/GPS/Gps.exe", "#!"), left = Path("Programm/GPS/Wegpunkte.txt");
  QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
  const RecordedShell shell;
  dialog->findChild<QAction*>("mnuGPS")->trigger();
  EXPECT_EQ(shell.given, QStringList("GPSe,," + left));
  QFile::copy(Own_File(), left);
  shell.ended();
  EXPECT_EQ(List(2).size(), 5);
  Kill(program);
  When_Shown([](QWidget& asked) {
    EXPECT_GT(Part<QComboBox>(asked, "cmbGeraet")->count(), 3);
    Walk(asked, "cmbPort = usb:; cmdCancel!");
  });
  MessageScript messages;
  if (Find_Program("gpsbabel", ProgramFolder).isEmpty()) messages.Expect("'G7toWin.exe' wurde nicht gefunden");
  dialog->findChild<QAction*>("mnuGPS")->trigger();
}
