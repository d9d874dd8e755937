// A map with an area of 100 x 50 pixels and one entry that is assigned to it.
class AnalysisMenuTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    Open(300, 200);
    Write_Vertices("Flaeche0", {{10, 10}, {110, 10}, {110, 60}, {10, 60}});
    Add({"Flaeche0", "Wiese", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
    Add({"Text>Flaeche0", QStringLiteral("7Höckerschrecke"), "Arial", 8, 0, 15, 0, 30, 30, 0, 0, 0});
    events.StateChanged.Emit();
    Settle();
  }
};

TEST_F(AnalysisMenuTest, ReportsAreWrittenAnewButNotOverWhatTheUserChanged) {
  auto& pad = Chosen<FrmNotePad>("mnuFlGrosTxt");
  auto* text = pad.findChild<QPlainTextEdit*>();
  EXPECT_EQ(pad.windowTitle(), "Flaechen.stk");
  EXPECT_TRUE(pad.Text().contains("Höckerschrecke")) << pad.Text();
  Add({"Text>Flaeche0", QStringLiteral("Łąka"), "Arial", 8, 0, 15, 0, 40, 30, 0, 0, 0});
  Choose("mnuFlGrosTxt");
  EXPECT_EQ(window->findChildren<FrmNotePad*>().size(), 1);
  EXPECT_TRUE(pad.Text().contains("Łąka")) << pad.Text();
  const QByteArray written = Read_Bytes(Path("Flaechen.stk"));
  text->insertPlainText(QStringLiteral("eigene Zeile"));
  Add({"Text>Flaeche0", "Neu", "Arial", 8, 0, 15, 0, 50, 30, 0, 0, 0});
  const MessageScript changed("wurde geändert");
  Choose("mnuFlGrosTxt");
  EXPECT_TRUE(pad.Text().contains("eigene Zeile"));
  EXPECT_EQ(Read_Bytes(Path("Flaechen.stk")), written);
  text->document()->setModified(false);
}

TEST_F(AnalysisMenuTest, SheetsGoIntoTheWorkbookBesideTheTable) {
  const RecordedShell shell;
  MessageScript script({{"\"Flächen\"", MsgAnswer::No}, {"\"Kataster\"", MsgAnswer::Yes}, {"keine Linie"}});
  Choose("mnuFlExcel");
  const QString path = Workbook_Name(TableFile);
  EXPECT_EQ(shell.opened, QString());
  Choose("mnuKataster");
  EXPECT_EQ(shell.opened, path);
  Choose("mnuLaengeXL");
  EXPECT_EQ(Workbook(path).SheetNames(), QStringList({QStringLiteral("Flächen"), "Kataster"}));
  // Open in the spreadsheet program: asked again until the user gives up.
  Replace_File(QFileInfo(path).path() + "/.~lock." + QFileInfo(path).fileName() + "#", ",Erna,r,,;");
  Write_Vertices("Linie0", {{10, 10}, {40, 50}});
  Add({"Linie0", "Weg", "Arial", 8, 0, 0, 0, 10, 10, 1, 1, 4});
  script.Expect("Erna", MsgAnswer::Ok).Expect("Erna", MsgAnswer::Cancel);
  Choose("mnuLaengeXL");
  EXPECT_EQ(Workbook(path).SheetNames().size(), 2);
}
