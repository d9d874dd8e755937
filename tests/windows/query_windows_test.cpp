#include "store/versions.h"
#include "windows/store/frmReplace.h"

class QueryWindowsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(600, 400);
    for (const char* text : {"Ahorn", "Buche", "Buche"}) Add({"Text", text, "Arial", 12, 0, 0, 0, 50, 50, 0, 0, 0});
    rsEntries->MoveTo(1);
    Map.CurBookmark = rsEntries->Bookmark();
    Map_Redraw();
    events.StateChanged.Emit();
  }
  static QString Text_Of_Row(int position) {
    const KeepCurrentRow keep;
    rsEntries->MoveTo(position);
    return rsEntries->Text(column::Eintrag);
  }
};

TEST_F(QueryWindowsTest, SelectionIsShownAndTaken) {
  Choose_And("mnuSql", [](QWidget& dialog) {
    auto* grid = Part<QTableView>(dialog, "sqlGrid");
    auto* text = Part<QComboBox>(dialog, "cmbSqlText");
    EXPECT_EQ(text->count(), 6);
    EXPECT_EQ(text->currentText(), "") << "nothing is carried out that was not chosen";
    EXPECT_EQ(grid->model()->rowCount(), 4) << "the table with its header row";
    Walk(dialog, "lblInfo = Anzahl der Datensätze in der untenstehenden*; btnTake off");
    Walk(dialog, "cmbSqlText : Select * from MapData where Eintrag like 'b*' : Buchen; btnApply!");
    ASSERT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(grid->model()->index(1, 1).data().toString(), "Buche");
    Press(dialog, "btnTake");
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(grid->model()->index(1, 1).data().toString(), "Buche");
    Press(dialog, "cmdCancel");
  });
  EXPECT_EQ(Entry_Count(), 2);
  MessageScript script("Karteneinträge wieder hergestellt.");
  Choose("mnuReset");
  EXPECT_EQ(Entry_Count(), 3);
}

TEST_F(QueryWindowsTest, FormerStatesTellTheirDifferencesAndGiveBack) {
  Keep_Version();
  rsEntries->MoveTo(1);
  rsEntries->Delete();
  Choose_And("mnuStaende", [](QWidget& dialog) {
    auto* list = Part<QListWidget>(dialog, "lstStaende");
    const auto line_becomes = [list](const QString& end) {
      EXPECT_TRUE(QTest::qWaitFor([&] { return list->item(0)->text().endsWith(end); })) << end.toStdString();
    };
    line_becomes("1 gelöscht, 0 geändert, 0 neu");
    auto* entries = Part<QListWidget>(dialog, "lstEintraege");
    ASSERT_TRUE(QTest::qWaitFor([&] { return entries->count() == 1; }));
    EXPECT_EQ(entries->item(0)->text(), "gelöscht   Text: Ahorn");
    EXPECT_FALSE(Is_Enabled(dialog, "btnTakeSome"));
    entries->item(0)->setCheckState(Qt::Checked);
    Press(dialog, "btnTakeSome");
    line_becomes("wie jetzt");
    EXPECT_EQ(Entry_Count(), 3);
    Walk(dialog, "numPlatz : 50; btnClose!");
  });
  Set_Version_Room(70);
  Choose_And("mnuOptionen", [](QWidget& dialog) {
    EXPECT_EQ(Part<QSpinBox>(dialog, "numPlatz")->value(), 70);
    Walk(dialog, "numPlatz : 0; cmdApply!; cmdCancel!");
  });
  EXPECT_EQ(Version_Room(), 0);
}

// While a message is shown the grid is painted: its rows must not have gone with the statement that failed.
TEST_F(QueryWindowsTest, SelectionOutlivesTheNextStatement) {
  const auto shown = [this] {
    return QString(window->Table_Window().windowTitle() + Child<ElidedLabel>("Panel3")->Whole_Text());
  };
  Choose_And("mnuSql", [&](QWidget& dialog) {
    auto* grid = Part<QTableView>(dialog, "sqlGrid");
    const QString good = "cmbSqlText : Select * from MapData where Eintrag like 'b*'; btnApply!";
    Walk(dialog, good);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown().count("_SQL.mdb") == 2; })) << shown();
    QStringList painted;
    const MsgHandler former = Set_Message_Handler([&](const MsgRequest& request) {
      grid->viewport()->repaint();
      painted << request.text.section(u'\n', 0, 0) << grid->model()->index(1, 1).data().toString();
      return MsgAnswer::No;
    });
    for (const char* statement : {"Select * from Nirgends", ""})
      Walk(dialog, "cmbSqlText : " + QString(statement) + "; btnApply!; " + good);
    Set_Message_Handler(former);
    EXPECT_EQ(painted, QStringList({"SQL-Fehler.", "Buche", "SQL-Fehler:", "Buche"}));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return !shown().contains("_SQL.mdb"); })) << shown();
}

TEST_F(QueryWindowsTest, HitsAreTakenInHandAndReplaced) {
  auto* dialog = &Chosen<FrmReplace>("mnuReplace");
  Walk(*dialog, "cmbSearch = Eintrag =; cmbSearch : Eintrag = b*; btnSearch!; btnSearch = Weitersuchen");
  rsEntries->MoveTo(2);
  EXPECT_EQ(Map.InHand, rsEntries->Bookmark());
  Part<QPlainTextEdit>(*dialog, "cmbReplace")->setFocus();
  Walk(*dialog, "btnFarbe!; cmbReplace = VG =\nHG =\nRA =; cmbReplace : Eintrag = Linde; btnReplace!");
  EXPECT_EQ(Text_Of_Row(2), "Linde");
  EXPECT_EQ(Text_Of_Row(3), "Buche");
  MessageScript script("Karteneinträge wieder hergestellt.");
  Press(*dialog, "btnBack");
  EXPECT_EQ(Text_Of_Row(2), "Buche");
  dialog->close();
  // The look of one goes to the others of its text.
  script.Expect("1 Karteneinträge wurden verändert");
  rsEntries->MoveTo(3);
  Map.CurBookmark = rsEntries->Bookmark();
  Set_Field(column::VG, qint64{5});
  Choose_And("mnuPropTransfer", "lblInfo = Möchten Sie die Eigenschaften*; lblMuster = Buche; OKButton!");
  rsEntries->MoveTo(2);
  EXPECT_EQ(rsEntries->Integer(column::VG), 5);
}
