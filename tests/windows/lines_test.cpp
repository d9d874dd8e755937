#include "windows/canvas/frmFlKord.h"
#include "windows/objects/frmLineEndpunkte.h"
#include "windows/objects/frmLnStil.h"

class LinesWindowTest : public WindowTest {
 protected:
  LinesWindowTest() { mapSize = {800, 600}; }
  QString Take(const QString& id, const std::vector<QPoint>& vertices, int typ = 4) {
    Write_Vertices(EntryId::Parse(id).TableName(), vertices);
    return WindowTest::Take({id, "Weg", "Arial", 8, 0, 0, 0, 0, 0, 1, 1, typ});
  }
  static EntryRow Now() { return Row(Map.InHand); }
};

TEST_F(LinesWindowTest, StyleAndEndsAreWrittenAtOnceAndTakenBack) {
  Take("Linie1", {{100, 100}, {300, 200}});
  When_Shown([](QWidget& dialog) {
    Walk(dialog, "cmbStil : #2; optTransparent : true");
    EXPECT_EQ(Now().Yline, -3);
    Press(dialog, "cmdCancel");
  });
  Press_Tool("LnStil");
  EXPECT_EQ(Now().Yline, 1);
  When_Shown([](QWidget& dialog) {
    Walk(dialog, "chkEnde unchecked; cmbForm : #2; chkEnde : true; optTeilstrecke : true; txtLaenge : 5; cmdOK!");
  });
  Press_Tool("LnEnd");
  EXPECT_EQ(Now().ID, "Linie1 - C1011L5.0B3.0");
}

TEST_F(LinesWindowTest, VertexTableEditsDeletesInsertsAndPutsBack) {
  Take("Linie1 - P0010L1.0B1.0", {{100, 100}, {200, 100}, {300, 200}});
  Press_Tool("LnKorr");
  auto* dialog = &Shown<FrmFlKord>();
  EXPECT_EQ(dialog->windowTitle(), "Linie1 Korrektur");
  auto* table = Part<QTableView>(*dialog, "DBGrid1");
  auto& model = *table->model();
  Tbl.Tag = TableTag::Clean;
  EXPECT_FALSE(model.setData(model.index(1, 0), 40000, Qt::EditRole));
  EXPECT_FALSE(model.setData(model.index(1, 0), QStringLiteral("x"), Qt::EditRole));
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  EXPECT_TRUE(model.setData(model.index(1, 1), 150, Qt::EditRole));
  EXPECT_EQ(Load_Vertices("Linie1")[1], QPoint(200, 150));
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  table->setCurrentIndex(model.index(1, 0));
  EXPECT_EQ(Map.Circled, QPoint(200, 150));
  Walk(*dialog, "btnInsert!; lblCount = Polygoneckpunkte: 4");
  EXPECT_EQ(Load_Vertices("Linie1")[2], QPoint(250, 175));
  table->selectAll();
  Press(*dialog, "btnDelete");
  EXPECT_EQ(Load_Vertices("Linie1").size(), 4U) << "two must stay";
  // A vertex moved on the map is seen in the table.
  Write_Vertices("Linie1", {{1, 2}, {3, 4}, {50, 60}});
  events.TableChanged.Emit();
  EXPECT_EQ(model.rowCount(), 3);
  table->selectRow(0);
  Press(*dialog, "btnDelete");
  EXPECT_EQ(Load_Vertices("Linie1"), (std::vector<QPoint>{{3, 4}, {50, 60}}));
  Press(*dialog, "btnReset");
  EXPECT_EQ(Load_Vertices("Linie1"), (std::vector<QPoint>{{100, 100}, {200, 100}, {300, 200}}));
  // The entry goes, and the window with it.
  MessageScript script(MsgAnswer::Yes);
  Map_Key(Qt::Key_Delete, {});
  Settle();
  EXPECT_FALSE(Is_Open<FrmFlKord>());
  EXPECT_FALSE(Map.Circled);
}

TEST_F(LinesWindowTest, TheCheckStopsAtEveryDisturbingVertex) {
  Take("Figur1", {{100, 100}, {300, 300}, {300, 100}, {100, 300}}, 24);
  auto* dialog = &Chosen<FrmFlKord>("mnuFigKorr");
  auto* button = Part<QAbstractButton>(*dialog, "btnPruefen");
  auto* table = Part<QTableView>(*dialog, "DBGrid1");
  Walk(*dialog, "btnPruefen = Prüfen ; btnPruefen!; btnPruefen = Stop");
  Settle();
  EXPECT_EQ(button->text(), "Prüfen | ");
  EXPECT_EQ(table->currentIndex().row(), 1);
  EXPECT_EQ(Map.Circled, QPoint(300, 300));
  Push(button);
  EXPECT_EQ(table->currentIndex().row(), 3);
  Push(button);
  Walk(*dialog, "btnPruefen = Prüfen ; lblFound = Kein weiterer störender Polygoneckpunkt gefunden.");
  Write_Vertices("Figur1", {{100, 100}, {300, 100}, {300, 300}});
  events.TableChanged.Emit();
  Push(button);
  EXPECT_EQ(Text_In(*dialog, "lblFound"), "Kein störender Polygoneckpunkt gefunden.");
}
