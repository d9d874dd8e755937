#include "maps/color_command.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "maps/neighbour_command.h"
#include "maps/population_command.h"
#include "platform/for_now.h"
#include "workbook/workbook.h"

// The evaluations with all that they ask and tell.

namespace {

class StatisticsCommands : public FluraxTest, public RowsOfTable {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    QImage picture(600, 400, QImage::Format_RGB32);
    for (int y = 0; y < 400; ++y)
      for (int x = 0; x < 600; ++x) picture.setPixel(x, y, y < 200 ? qRgb(x % 256, x / 256, 7) : qRgb(255, 255, 255));
    ASSERT_TRUE(picture.save(Path("Karte.bmp")));
    const MessageScript none;
    Open_Map(Path("Karte.bmp"));
    book = Workbook_Name(TableFile);
  }
  void TearDown() override {
    Close_Map();
    FluraxTest::TearDown();
  }
  static void Add_Area(const QString& id) {
    Write_Vertices(id, {{10, 10}, {110, 10}, {110, 60}, {10, 60}});
    Add({id, "Wiese", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
  }
  static void Add_Text(const QString& id, const QString& text, int typ = 0, QPoint at = {30, 300}) {
    Add({id, text, "Arial", 8, 0, 15, 0, at.x(), at.y(), 0, 0, typ});
  }
  QStringList Sheets() const { return QFileInfo::exists(book) ? Workbook(book).SheetNames() : QStringList(); }
  QByteArray Bytes() const { return Read_Bytes(book); }
  // Every text of a sheet that was written.
  QString Written(const QString& name) const {
    const Sheet sheet = Workbook(book).Read(name);
    const int columns = sheet.ColumnCount();
    QStringList texts;
    for (int row = 1; row <= sheet.RowCount(); ++row)
      for (int column = 1; column <= columns; ++column) texts += sheet.Text(row, column);
    return texts.join(u'|');
  }

  // With these boxes, and no other.
  static void Calc(std::initializer_list<ExpectedBox> boxes, const PopOptions& options = {}) {
    const MessageScript script(boxes);
    Calc_Chosen_Population(options);
  }

  QString book;
  const ExpectedBox written{QStringLiteral("Arbeitsmappe gesichert"), MsgAnswer::No};
  const QString nothingAssigned = QStringLiteral("Es wurden keine Karteneinträge gefunden, \n"),
                noArea = QStringLiteral("FLURAX hat keine Fläche (Polygon) auf der Karte gefunden.");
};

}  // namespace

TEST_F(StatisticsCommands, AMapWithoutAssignedEntriesOrAreasIsAskedAbout) {
  Add_Text("Text", "Amsel");
  Calc({{"Fehler -  Populationsparameter berechnen", MsgAnswer::No}});
  Calc({{nothingAssigned, MsgAnswer::Yes}, {noArea, MsgAnswer::No}});
  Calc({{nothingAssigned, MsgAnswer::Yes}, {noArea, MsgAnswer::Yes}, {"Es ist keine Fläche ausgewählt.\nMaus"}});
  EXPECT_EQ(Sheets(), QStringList());
  Add({"Figur1", "Kreis", "0", 10, 0, 15, 1, 50, 50, 30, 30, 23});
  Add_Text("Text>Figur1", "3 Amsel");
  Calc({{"1  Karteneinträge sind jedoch", MsgAnswer::No}});
  EXPECT_EQ(Sheets(), QStringList());
  Calc({{"Figuren (Kreis", MsgAnswer::Yes}, {noArea, MsgAnswer::Yes}, written});
  EXPECT_EQ(Sheets(), QStringList("Matrix"));
  EXPECT_TRUE(Written("Matrix").contains("Figur|Figur1|Kreis|3|1|")) << Written("Matrix");
  Add_Area("Flaeche1");
  Add_Text("Text", "2 Igel", 100);
  Calc({{"\"Flächen\" und \"Matrix\"", MsgAnswer::No}}, {.from = SpeciesFrom::Marked});
  EXPECT_EQ(Sheets(), QStringList({QStringLiteral("Flächen"), "Matrix"}));
  EXPECT_TRUE(Written("Matrix").contains("Markierte||markierte Einträge|2|1|")) << Written("Matrix");
}

TEST_F(StatisticsCommands, OneSpeciesAndLargeNumbersAreToldAndNothingIsLostByCancel) {
  Add_Area("Flaeche1");
  Add_Text("Text>Flaeche1", "Amsel");
  Add_Area("Flaeche2");
  Add_Text("Text>Flaeche2", "3 Igel");
  Add_Text("Text>Flaeche2", "Maus");
  Calc({{"11\nDivision durch"}, written});
  EXPECT_TRUE(Written("Flächen").contains("Igel")) << "the next area is in it";
  const QByteArray before = Bytes();
  Calc({{"Flaeche1: Von einer einzigen Art", MsgAnswer::Cancel}});
  EXPECT_EQ(Bytes(), before);
  Add_Text("Text>Flaeche2", "40000 Ameisen");
  Calc({{"Fehler - Flächenstatistik"}, {"40000 Ameisen", MsgAnswer::Cancel}});
  With_Box("40000 Ameisen", MsgAnswer::Cancel, [] { Write_Matrix_Sheet(); });
  {
    const StopWorkAt stop(2);
    const MessageScript none;
    Calc_Chosen_Population({});
    Calc_Chosen_Population({.from = SpeciesFrom::Groups, .diversity = false});
    Write_Matrix_Sheet();
    EXPECT_EQ(Assign_Colors({}), ColorEnd::Stopped);
  }
  EXPECT_EQ(Bytes(), before) << "a stop leaves the former sheets";
  Calc({{"40000 Ameisen"}, written}, {.diversity = false});
  EXPECT_NE(Bytes(), before);
  const ForNow<QString> gone(TableFile, Path("weg/KARTE.MDB"));
  Calc({{"40000 Ameisen"}, {"Pfad nicht gefunden"}}, {.diversity = false});
}

// Hears of the steps of long work.
struct StepsHeard : ProgressFace {
  void Show(const QString& title, int) override { heard += title; }
  bool Step(int) override { return true; }
  void Say(const QString& step) override { heard += step; }
  int Delay() const override { return 0; }
  static inline QStringList heard;
};

TEST_F(StatisticsCommands, LongWorkNamesItsSteps) {
  Add_Area("Flaeche1");
  Add_Text("Text>Flaeche1", "Amsel");
  const ProgressMaker former = Set_Progress_Maker([] { return std::make_unique<StepsHeard>(); });
  Calc({written}, {.from = SpeciesFrom::Groups, .diversity = false});
  Set_Progress_Maker(former);
  EXPECT_EQ(StepsHeard::heard, QStringList({"Flächenstatistik\nFlächen werden berechnet.", "Arten werden gezählt.",
                                            "Arbeitsmappe öffnen", "Arbeitsmappe sichern."}));
}

TEST_F(StatisticsCommands, AreasWithoutVerticesAreToldAndNamesAreNoFormulas) {
  Add_Area("Flaeche1");
  Add_Area("Flaeche10");
  for (const char* id : {"Flaeche1", "Flaeche3", "Flaeche10"}) Add_Text(QStringLiteral("Text>") + id, "=1+1");
  for (const char* name : {"+x", "@y", "-z", "a\x01\x02z", "0 Nichts", "77", "&<b>"}) Add_Text("Text>Flaeche10", name);
  Write_Vertices("Flaeche2", {{5, 5}});  // a point has no size, and nothing is wrong with it
  for (const char* id : {"Flaeche2", "Flaeche3"}) Add({id, "Punkt", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
  Calc({{"ein Fehler aufgetreten.\nDie Eckpunkte fehlen: Flaeche3", MsgAnswer::Cancel}});
  EXPECT_EQ(Sheets(), QStringList());
  Calc({{"fehlen: Flaeche3"}, {"Flaeche1: Von"}, {"Flaeche3: Von"}, written}, {.from = SpeciesFrom::Groups});
  EXPECT_TRUE(Written("Flächen").contains("zugeordnete Einträge:|8|")) << "Flaeche1 is not Flaeche10";
  const Sheet matrix = Workbook(book).Read("Matrix");
  EXPECT_EQ(Written("Matrix").count("=1+1"), 1);
  for (int column = 1; column <= matrix.ColumnCount(); ++column)
    EXPECT_NE(matrix.Text(3, column), "2") << "computed as a formula";
}

TEST_F(StatisticsCommands, ColoursComeFromThePictureAndThe501stEndsTheWork) {
  dbEntries->BeginTrans();
  for (int x = 0; x < 500; ++x) Add_Text("Text", "Art", 0, {x, 20});
  Add_Text("Text", "2 Igel", 0, {10, 300});
  Add_Text("Text", "neben der Karte", 0, {10, 3000});
  dbEntries->CommitTrans();
  QStringList said;
  const ColorWatch watch{[&said](const QString& text) { said += text; }, [](int, int) { return true; }};
  {
    const MessageScript script("Zu viele Durchgänge beim Sortieren der Karteneinträge.", MsgAnswer::Cancel);
    EXPECT_EQ(Assign_Colors({}, watch), ColorEnd::Failed);
    EXPECT_EQ(Sheets(), QStringList());
  }
  EXPECT_EQ(said, QStringList({"Karteneinträge werden sortiert.", " Fehler!"}));
  {
    const MessageScript script({{"Fehler - Abundanz berechnen", MsgAnswer::Ok}, written});
    EXPECT_EQ(Assign_Colors({}, watch), ColorEnd::Failed);
  }
  EXPECT_TRUE(Written("Zuordnung").contains("Fehler: Auswertung abgebrochen!"));
  rsEntries->SetBookmark("2");
  rsEntries->Delete();
  Calc({written}, {.from = SpeciesFrom::AllTexts});
  EXPECT_TRUE(Written("Zuordnung").contains("Igel|2|")) << "numbers in front of names count";
}

TEST_F(StatisticsCommands, NeighboursAreReducedWhereThereAreTooFew) {
  const QString report = ProgramFolder + "/Distanz.erg";
  NeighbourOrder order{5, false};
  const auto run = [&order] { return Calc_Neighbours(order); };
  Add_Text("Text", "Amsel", 0, {10, 10});
  EXPECT_FALSE(With_Box("1 relevante Einträge gefunden.\n\nNachbarn gibt es", run));
  Add_Text("Text", "Igel", 0, {13, 14});
  Add_Text("Text", "Maus", 0, {10, 110});
  EXPECT_FALSE(With_Box("3 relevante Einträge gefunden.\n\nDie Zahl N", MsgAnswer::Cancel, run));
  EXPECT_FALSE(QFileInfo::exists(report));
  order.neighbours = 2;
  MapUnitPerPixel = 3;
  MapHasScale = true;
  MapUnit = QStringLiteral(" m");
  order.detailed = true;
  const MessageScript none;
  EXPECT_TRUE(run());
  const QStringList lines = Read_Lines(report);
  EXPECT_EQ(lines.value(1), "Masseinheit:  m");
  EXPECT_EQ(lines.value(7), "Amsel           Igel      Maus");
  EXPECT_EQ(lines.value(8).simplified(), "Distanz: 15,0 300,0 315,0 157,5");
}

TEST_F(StatisticsCommands, TheMatrixGoesIntoATextAsWell) {
  With_Box("Auf der Karte gibt es keine Fläche", [] { Write_Matrix_Csv(); });
  Add_Area("Flaeche1");
  Add_Text("Text>Flaeche1", "=2+2");
  FileDialogScript files({std::nullopt, Path("Arten.csv")});
  Write_Matrix_Csv();
  With_Box("Die Matrix wurde in folgende Datei geschrieben:", Write_Matrix_Csv);
  EXPECT_EQ(files.Seen()[0].name, "KARTE_Matrix.csv");
  EXPECT_TRUE(Read_Bytes(Path("Arten.csv")).contains(";'=2+2\r\n"));
}
