#include "maps/sheet_bridge.h"

#include "exchange/sheet_rows.h"
#include "windows/bridge/frmTabAustausch.h"
#include "windows/bridge/frmTabExport.h"

class SheetBridgeTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(400, 300);
    for (const char* text : {"Uhu", "Star", "Specht"})
      Add({"Text", QString::fromUtf8(text), "Arial", 10, 0, 15, 0, 40, 50, 0, 0, 0});
    events.StateChanged.Emit();
    qputenv("FLURAX_HOME", ProgramFolder.toLocal8Bit());
    ASSERT_TRUE(QFile::link(QStringLiteral(FLURAX_BINARY_DIR "/TabBridge"), Program_File("TabBridge")));
    Set_Shell({[this](const QString& program, const QStringList& words, std::function<void()> after) {
                 given = words;
                 ended = std::move(after);
                 if (!real) return true;
                 tool.start(program, words);
                 return tool.waitForStarted();
               },
               {}});
  }
  void TearDown() override {
    tool.kill();
    tool.waitForFinished();
    qunsetenv("FLURAX_HOME");
    WindowTest::TearDown();
  }
  QString Book() const { return Path("KARTE.XLS"); }
  // The workbook of the map with that text in the first row.
  void Write_Book(const CellValue& text) {
    Sheet sheet = Sheet_Of_Rows(*rsEntries);
    sheet.Put(2, 3, text);
    Workbook book(Book());
    book.Put(sheet);
    book.Save();
  }
  // What a user does in the tool's window, with the copy the program has given it.
  static void In_Window(const std::function<void(QWidget&)>& act) {
    SheetExchange exchange(Exchange_File());
    FrmTabAustausch tab(exchange);
    tab.show();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "its help could not be used";
    tab.Take_Workbook(exchange.Proposed_Workbook());
    act(tab);
  }
  static QString Cell(QWidget& tab, int row, int column) {
    return Part<QTableView>(tab, "tblUnterschiede")->model()->index(row, column).data().toString();
  }
  static int Lines(QWidget& tab) { return Part<QTableView>(tab, "tblUnterschiede")->model()->rowCount(); }

  QStringList given{"?"};
  std::function<void()> ended;
  QProcess tool;
  bool real = false;
};

// The program itself, without its user: it writes at once, and waits for him then.
TEST_F(SheetBridgeTest, TheRealToolWritesTheTableOfTheLastMap) {
  real = true;
  Undo_Point("Rückgängig: Import");
  Add({"Text", "Reiher", "Arial", 10, 0, 15, 0, 40, 50, 0, 0, 0});
  Tbl.Tag = TableTag::Dirty;
  Choose("mnuExportxls");
  EXPECT_EQ(given, QStringList());
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  const QRect screen = window->screen()->availableGeometry();
  EXPECT_NEAR(window->geometry().right(), screen.left() + screen.width() / 2, 10) << "room for the tool";
  ASSERT_TRUE(QTest::qWaitFor([this] { return File_Exists(Book()); }, 20000));
  EXPECT_EQ(Workbook(Book()).Read("MapData").Text(4, 3), "Specht");
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Import");
  With_Box("wieder hergestellt", [this] { Choose("mnuReset"); });
  EXPECT_EQ(Texts(), QStringList({"Uhu", "Star", "Specht"})) << "the table is open again";
}

TEST_F(SheetBridgeTest, TheRealToolHasTheCopyToItselfAndLeavesItAsItWas) {
  real = true;
  Write_Book(QString("Uhu"));
  Choose("mnuExChangeXL");
  EXPECT_EQ(given, QStringList("ColExchange"));
  ASSERT_TRUE(QTest::qWaitFor([] { return !Lock_Holder(Exchange_File()).isEmpty(); }, 20000));
  With_Box("TabBridge läuft schon", [this] { Choose("mnuExChangeXL"); });
  tool.terminate();
  ASSERT_TRUE(tool.waitForFinished());
  ended();
  EXPECT_FALSE(Menu("mnuReset").Enabled);
  EXPECT_EQ(Texts().first(), "Uhu");
}

TEST_F(SheetBridgeTest, DifferencesAreListedTakenBackAndTakenOver) {
  Write_Book(QString("Uhu, 2 juv."));
  Choose("mnuExChangeXL");
  In_Window([](QWidget& tab) {
    ASSERT_EQ(Lines(tab), 1);
    QStringList line;
    for (int column = 0; column < 5; ++column) line << Cell(tab, 0, column);
    EXPECT_EQ(line, QStringList({"1", "2", "Eintrag", "Uhu", "Uhu, 2 juv."}));
    Walk(tab, "cmdKeine!; cmdUebernehmen off");  // what is shown must be what is chosen
    Walk(tab, "cmdVergleichen!; lblErgebnis = Keine Änderung.; cmdAlle!; cmdVergleichen!; cmdBack off");
    for (const int lines : {0, 1}) {
      Press(tab, lines == 0 ? "cmdUebernehmen" : "cmdBack");
      EXPECT_EQ(Lines(tab), lines);
    }
    Walk(tab, "cmdUebernehmen!; lblErgebnis = Übernommen: 1 Werte in 1 Zeilen.*");
  });
  EXPECT_EQ(Texts().first(), "Uhu");
  ended();
  EXPECT_EQ(Texts(), QStringList({"Uhu, 2 juv.", "Star", "Specht"}));
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Einträge austauschen");
  With_Box("wieder hergestellt", [this] { Choose("mnuReset"); });
  EXPECT_EQ(Texts().first(), "Uhu");
}

TEST_F(SheetBridgeTest, TheUserChoosesKeyColumnsAndSheet) {
  Sheet list("Arten");
  const QStringList cells = {"Art", "Bemerkung", "Star", "Gast", "Kranich", "neu"};
  for (int i = 0; i < cells.size(); ++i) list.Put(i / 2 + 1, i % 2 + 1, cells[i]);
  Workbook book(Book());
  book.Put(list);
  book.Put(Sheet("Leer"));
  book.Save();
  Choose("mnuExChangeXL");
  In_Window([](QWidget& tab) {
    Walk(tab, "lblErgebnis = *Schlüssel*; cmdVergleichen off; cmbSchluessel : #2; cmbSchluesselBlatt : #1");
    auto* columns = Part<QTableWidget>(tab, "tblSpalten");
    auto* font = qobject_cast<QComboBox*>(columns->cellWidget(column::Schrift, 1));
    font->setCurrentIndex(2);
    Q_EMIT font->activated(2);
    EXPECT_EQ(columns->item(column::Schrift, 0)->checkState(), Qt::Checked);
    Press(tab, "cmdVergleichen");
    ASSERT_EQ(Lines(tab), 4);
    EXPECT_EQ(Cell(tab, 0, 4), "Gast");
    EXPECT_EQ(Cell(tab, 1, 5), "steht nur im Blatt: Die Zeile hat keinen Text in der Spalte Eintrag.");
    auto* sheets = Part<QComboBox>(tab, "cmbBlatt");
    sheets->setCurrentIndex(1);
    Q_EMIT sheets->textActivated("Leer");
    EXPECT_EQ(Lines(tab), 0);
    EXPECT_FALSE(Is_Enabled(tab, "cmdUebernehmen"));
  });
}

TEST_F(SheetBridgeTest, ChangesOfTheProgramAreNotLostUnasked) {
  Write_Book(QString("Uhu, 2 juv."));
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    Choose("mnuExChangeXL");
    In_Window([](QWidget& tab) { Press(tab, "cmdUebernehmen"); });
    Add({"Text", "Reiher", "Arial", 10, 0, 15, 0, 40, 50, 0, 0, 0});
    With_Box("wurde geändert, während TabBridge lief", answer, [this] { ended(); });
    EXPECT_EQ(Texts().first(), answer == MsgAnswer::Yes ? "Uhu, 2 juv." : "Uhu");
  }
  With_Box("wieder hergestellt", [this] { Choose("mnuReset"); });
  EXPECT_EQ(Texts(), QStringList({"Uhu", "Star", "Specht", "Reiher", "Reiher"}));
  Write_Book(QString("Uhu"));
  Choose("mnuExChangeXL");
  Workspace::OpenDatabase(Exchange_File())->Execute("UPDATE MapData SET Schrift = 'Serif'");
  Choose("mnuMapClose");
  ASSERT_FALSE(frmMDI.MapOpen);
  With_Box("nicht mehr geöffnet", [this] { ended(); });
}

// The program may end before the tool does: what that left is offered when the map is opened again.
TEST_F(SheetBridgeTest, WhatWasLeftIsOfferedAtTheNextOpening) {
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    Write_Book(QString("Uhu, 2 juv."));
    Choose("mnuExChangeXL");
    In_Window([](QWidget& tab) { Press(tab, "cmdUebernehmen"); });
    const QString map = MapFile;
    Choose("mnuMapClose");
    With_Box("werden angeboten, wenn sie wieder geöffnet wird", [this] { ended(); });
    Open_Map(map);
    With_Box("als Flurax schon beendet war", answer, [] {
      Offer_Left_Exchange();
      Settle();
    });
    EXPECT_EQ(Texts().first(), answer == MsgAnswer::Yes ? "Uhu, 2 juv." : "Uhu");
    Offer_Left_Exchange();  // once
    Settle();
  }
}

TEST_F(SheetBridgeTest, TheExportTellsWhereItLiesAndTakesAnotherMap) {
  const QString other = Make_Map("Andere.bmp");
  FrmTabExport tab(Last_Map());
  tab.show();
  EXPECT_EQ(Text_In(tab, "txtKarte"), MapFile);
  EXPECT_EQ(Text_In(tab, "txtMappe"), Book());
  tab.Write_Table();
  EXPECT_TRUE(Text_In(tab, "lblErgebnis").contains("3 Einträge"));
  // The office program has it open.
  Put(".~lock.KARTE.XLS#", ",jo,rechner,2026,;");
  With_Box("geöffnet (von jo", MsgAnswer::Cancel, [&] { Press(tab, "cmdSchreiben"); });
  EXPECT_EQ(Text_In(tab, "lblErgebnis"), "Es wurde nichts geschrieben.");
  const FileDialogScript files{other};
  With_Box("nicht gefunden", [&] { Press(tab, "cmdKarte"); });
  EXPECT_FALSE(File_Exists(Path("ANDERE.XLS"))) << "a map without a table has nothing to write";
  FrmTabExport none{QString()};
  EXPECT_FALSE(Is_Enabled(none, "cmdSchreiben"));
}
