#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>

#include "tools/text_tool.h"
#include "windows/analysis/frmDiagramme.h"
#include "windows/analysis/frmDistanz.h"
#include "windows/analysis/frmNachbar.h"
#include "windows/analysis/frmPopOptions.h"
#include "windows/analysis/frmZuord.h"
#include "windows/analysis/frm_chart.h"

class StatisticsWindows : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    MapHasScale = true;
    MapUnitPerPixel = 2;
    MapUnit = QStringLiteral(" m");
  }
  static QString Add_Text(const char* id, const char* text, QPoint at, QPoint foot = {}) {
    return Add({id, text, "Arial", 12, 0, 14, 0, at.x(), at.y(), foot.x(), foot.y(), foot.isNull() ? 0 : 1});
  }
  void Click(QPoint at) {
    QTest::mouseClick(Canvas(), Qt::LeftButton, {}, at);
    Settle();
  }
  QString book = QStringLiteral("KARTE.XLS");
};

static QStringList Figures(const FrmDistanz& window) {
  QStringList texts;
  for (const char* name : {"lblDist", "lblZahl", "lblSum", "lblMean", "lblStreuung"}) texts += Text_In(window, name);
  return texts;
}

// Where the measuring lines end, in pixels of the window.
static std::vector<QPoint> Line_Ends() {
  std::vector<QPoint> ends;
  for (const OverLine& line : Map_Tool_In_Use()->Paint_Over())
    ends.push_back(line.path.elementAt(line.path.elementCount() - 1).operator QPointF().toPoint());
  return ends;
}

TEST_F(StatisticsWindows, DistancesFollowTheClicksOnEntries) {
  Add_Text("Text", "Amsel", {100, 100});
  Add_Text("Text", "Igel", {300, 40}, {148, 155});
  Add({"Figur1", "Haus", "0", 10, 0, 15, 1, 80, 300, 136, 8, 20});
  Write_Vertices("Flaeche1", {{400, 200}, {500, 200}, {500, 300}, {400, 300}});
  Add({"Flaeche1", "Wiese", "Arial", 8, 0, 0, 0, 560, 10, 1, 1, 4});
  Map_Redraw();
  events.StateChanged.Emit();
  auto* distances = &Chosen<FrmDistanz>("mnuDistPoly");
  Click({550, 350});  // nothing there
  Walk(*distances, "lblPrompt = Mauscursor auf einen Eintrag*");
  Click({105, 106});
  Click({108, 108});  // the same entry
  Walk(*distances, "lblPrompt = Cursor auf nächsten Eintrag\nsetzen.");
  Click({305, 46});  // its foot point is 48, 55 away
  EXPECT_EQ(Figures(*distances), QStringList({"146,00 m", "1", "146,00 m", QStringLiteral("–"), QStringLiteral("–")}));
  Click({80, 304});  // its middle is 149 below the foot point
  EXPECT_EQ(Figures(*distances), QStringList({"298,00 m", "2", "444,00 m", "222,00 m", QStringLiteral("±107,48 m")}));
  EXPECT_EQ(Line_Ends().back(), QPoint(148, 304));
  // Going back means the last point, also by the keys of the window itself.
  const QStringList two = Figures(*distances);
  const int steps = Step_Position();
  EXPECT_EQ(Command_Text(*Find_Command("mnuStepBack")), "Rückgängig: Messpunkt");
  Choose("mnuStepBack");
  EXPECT_EQ(Figures(*distances), QStringList({"146,00 m", "1", "146,00 m", QStringLiteral("–"), QStringLiteral("–")}));
  QTest::keyClick(distances, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Figures(*distances), QStringList(5, QStringLiteral("–")));
  Choose("mnuStepForward");
  Choose("mnuStepForward");
  EXPECT_EQ(Figures(*distances), two);
  EXPECT_EQ(Step_Position(), steps);
  Set_Zoom(2);
  EXPECT_EQ(Line_Ends().back(), QPoint(Window_X(148), Window_Y(304))) << "lines stay on their places of the map";
  Set_Zoom(1);
  Walk(*distances, "optBundel!; lblDist = 419,14 m");
  Choose("mnuDist_Einfach");
  EXPECT_EQ(window->findChildren<FrmDistanz*>().size(), 1);
  EXPECT_EQ(Figures(*distances).mid(0, 3), QStringList({"298,00 m", "1", "298,00 m"})) << "the last two are left";
  Click({105, 106});
  EXPECT_EQ(Text_In(*distances, "lblDist"), "419,14 m");
  Click({420, 220});
  const QStringList toArea = Figures(*distances);
  EXPECT_NE(toArea[0], "419,14 m") << "an area counts where it is clicked";
  Click({480, 280});
  EXPECT_EQ(Figures(*distances), toArea) << "the same area once more";
  Toggle_Text_Tool();  // somebody else takes the mouse
  Settle();
  EXPECT_FALSE(Is_Open<FrmDistanz>());
  Choose("mnuDistBundle");
  Key_On(&Shown<FrmDistanz>(), Qt::Key_Escape);
  EXPECT_EQ(Map_Tool_In_Use(), nullptr);
}

TEST_F(StatisticsWindows, PopulationOptionsGoToTheirSheets) {
  Write_Vertices("Flaeche1", {{10, 10}, {110, 10}, {110, 60}, {10, 60}});
  Add({"Flaeche1", "Wiese", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
  for (const char* text : {"2 Amsel", "3 Igel"}) Add_Text("Text>Flaeche1<1", text, {30, 30});
  events.StateChanged.Emit();
  const auto run = [this](const char* option, bool diversity, const QString& sheets) {
    When_Shown([&](QWidget& dialog) {
      Fill(dialog, "chkDiversitaet", diversity);
      Walk(dialog, QString(option) + "!; cmdApply!; cmdOK!");
    });
    const MessageScript script({{"Hier Code eingeben"}, {sheets, MsgAnswer::No}});
    Choose("mnuPopParm");
    const Sheet sheet = Workbook(Path(book))
                            .Read(Workbook(Path(book)).SheetNames().contains("Zuordnung") ? QStringLiteral("Zuordnung")
                                                                                          : QStringLiteral("Flächen"));
    QString all;
    for (int row = 1; row <= sheet.RowCount(); ++row) all += sheet.Text(row, 1) + u'|' + sheet.Text(row, 3) + u'|';
    return all;
  };
  EXPECT_TRUE(run("optFlch", true, "\"Flächen\"").contains("Shannon-Wiener-Index"));
  EXPECT_FALSE(run("optGroup", false, "\"Flächen\" und \"Matrix\"").contains("Shannon-Wiener-Index"));
  EXPECT_TRUE(run("optAll", true, "\"Zuordnung\"").contains("Igel"));
}

TEST_F(StatisticsWindows, ColoursAreStartedStoppedAndDone) {
  for (int i = 0; i < 3; ++i) Add_Text("Text", "2 Amsel", {30 * i, 30});
  Add({"Text", "Igel", "Arial", 8, 0, 15, 0, 30, 90, 0, 0, 100});
  events.StateChanged.Emit();
  Choose_And("mnuZuordBackgdColor", [&](QWidget& dialog) {
    const auto total = [&] {
      Press(dialog, "cmdOK");
      const Sheet sheet = Workbook(Path(book)).Read("Zuordnung");
      for (int row = 1; row <= sheet.RowCount(); ++row)
        if (sheet.Text(row, 1) == "Summe:") return sheet.Number(row, 2);
      return -1.0;
    };
    MessageScript script({{"\"Zuordnung\"", MsgAnswer::No}});
    EXPECT_EQ(dialog.windowTitle(), "Texteinträge -> Excel");
    EXPECT_EQ(total(), 6);
    EXPECT_EQ(dialog.windowTitle(), "Einträge -> Excel");
    // Another choice is another work.
    Walk(dialog, "cmdOK = Ok; chkMarkiert!; optWahl checked; cmdOK = Berechnen");
    script.Expect("\"Zuordnung\"", MsgAnswer::No).Expect("\"Zuordnung\"", MsgAnswer::No);
    EXPECT_EQ(total(), 7);
    Press(dialog, "chkZahl");
    EXPECT_EQ(total(), 4);
    Walk(dialog, "optAll!; chkMarkiert unchecked");
    // Pressed again while it runs, it stops: the sheet stays.
    const QByteArray before = Read_Bytes(Path(book));
    QTest::qWait(60);
    auto* button = Part<QPushButton>(dialog, "cmdOK");
    QTimer::singleShot(0, &dialog, [&dialog, button] {
      EXPECT_EQ(button->text(), "Stop");
      Key_On(&dialog, Qt::Key_Escape);
    });
    button->click();
    Walk(dialog, "Label1 = *Abgebrochen*; Label1 shown");
    EXPECT_EQ(Read_Bytes(Path(book)), before);
    Key_On(&dialog, Qt::Key_Escape);
  });
}

TEST_F(StatisticsWindows, NeighboursAreReportedAndTheReducedNumberIsShown) {
  for (int i = 0; i < 3; ++i) Add_Text("Text", "Amsel", {30 * i, 30});
  events.StateChanged.Emit();
  MessageScript script({{"N = 2", MsgAnswer::Cancel}});
  Choose_And("mnuNachbar", [&](QWidget& dialog) {
    Walk(dialog, "txtZahl : 7; btnRechn!");
    EXPECT_TRUE(dialog.isVisible()) << "cancelled: another number can be given";
    script.Expect("N = 2", MsgAnswer::Ok);
    Press(dialog, "btnRechn");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.findChild<QSpinBox*>("txtZahl")->value(), 2);
  });
  EXPECT_TRUE(Shown<FrmNotePad>().Text().startsWith("Distanz zu den 2 naechstgelegenen Eintraegen."));
}

// Of very many species the first ones are drawn, and it is said.
TEST_F(StatisticsWindows, ThousandsOfSpeciesStayReadable) {
  for (const size_t species : {5000U, 200U}) {
    const std::unique_ptr<QChart> chart(Make_Rank_Chart(std::vector<RankedSpecies>(species, {"Art", 1}), {}, "Karte"));
    const auto* series = static_cast<const QBarSeries*>(chart->series().constFirst());
    EXPECT_EQ(series->barSets().constFirst()->count(), 200);
    EXPECT_EQ(chart->title().contains("die 200 häufigsten"), species > 200) << chart->title();
  }
}

TEST_F(StatisticsWindows, DiagramsFollowTheTableAndCanBeTakenAway) {
  Write_Vertices("Flaeche1", {{0, 0}, {100, 0}, {100, 100}, {0, 100}});
  Add({"Flaeche1", "Wiese <&>", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
  Add_Text("Text>Flaeche1", "4 Amsel", {10, 10});
  Add_Text("Text>Flaeche1", "<b>Igel\x01z", {13, 14});
  events.StateChanged.Emit();
  auto& diagrams = Chosen<FrmDiagramme>("mnuDiagramme");
  // What is chosen, and what the title says then.
  const auto title = [&](const QString& choice, const QString& part) {
    if (!choice.isEmpty()) Walk(diagrams, choice);
    const QString now = Part<QChartView>(diagrams, "view")->chart()->title();
    EXPECT_TRUE(now.contains(part)) << now;
  };
  title({}, "N = 5 Individuen, S = 2 Arten");
  title("cboWo : #1", "Wiese &lt;&amp;&gt;");
  Add_Text("Text>Flaeche1", "3 Maus", {20, 20});
  Map_Redraw();
  QTest::qWait(400);
  title({}, "N = 8 Individuen, S = 3 Arten");
  EXPECT_EQ(Part<QComboBox>(diagrams, "cboWo")->currentIndex(), 1) << "the place stays chosen";
  title("cboArt : #2", "M = 3 Einträge");
  title({}, "R = ");
  title("cboArt : #1; cboWo off", "3 Arten auf einer Fläche");
  Walk(diagrams, "cboArt : #0");
  FileDialogScript files({Path("a.png"), Path("a.svg"), Path("weg/a.png")});
  Press(diagrams, "cmdPng");
  const QImage picture(Path("a.png"));
  EXPECT_GT(picture.width(), 1000);
  Press(diagrams, "cmdSvg");
  QXmlStreamReader svg(Read_Bytes(Path("a.svg")));
  QString texts;
  while (!svg.atEnd())
    if (svg.readNext() == QXmlStreamReader::Characters) texts += svg.text().trimmed().toString() + u'|';
  EXPECT_FALSE(svg.hasError()) << svg.errorString();
  EXPECT_TRUE(texts.contains("3. <b>Igel z|")) << texts;
  With_Box("Pfad nicht gefunden", MsgAnswer::No, [&] { Press(diagrams, "cmdPng"); });
  Press(diagrams, "cmdCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->image().size(), picture.size());
  PrinterFace printer = Set_Printer({});
  Press(diagrams, "cmdPrint");
  EXPECT_TRUE(QFileInfo::exists(ProgramFolder + "/Karte.pdf"));
  Set_Printer(printer);
}
