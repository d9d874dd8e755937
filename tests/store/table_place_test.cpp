namespace {

const QStringList oneTwo = {"eins", "zwei"}, oneTwoThree = {"eins", "zwei", "drei"};
const QString away = QStringLiteral("Die Datei der Karteneinträge ist nicht mehr an ihrem Ort:\n");

// What others do to the file of the open table, or to its folder.
class TablePlace : public TableTest {
 protected:
  // Another program put the rows there: none was written since the table was opened.
  void Open_Unwritten() {
    ASSERT_TRUE(QDir().mkpath(Path("Karten")));
    const auto database = Make_Table_File(Path("Karten/KARTE.MDB"), Path("Karten/Karte.bmp"));
    for (const QString& text : oneTwo) Append_Row(*database, Text(text));
    database->Close();
    Open_Table("Karten/Karte.bmp");
    Tbl.Tag = TableTag::Clean;
  }
  void Open_Written() {
    Open_Unwritten();
    Write_Vertices("Linie0", {{1, 2}, {3, 4}});
    Undo_Point("Rückgängig: Verschieben");
    Add(Text("drei"));
  }
  QString Table() const { return Path("Karten/KARTE.MDB"); }
};

TEST_F(TablePlace, ADeletedFileIsWrittenAgainAndUndoGoesOn) {
  for (const bool written : {false, true}) {
    written ? Open_Written() : Open_Unwritten();
    const QStringList rows = Texts();
    rsEntries->MoveTo(1);
    ASSERT_TRUE(QFile::remove(Table()));
    MessageScript script(away + Table() + "\n\nSie wurde gelöscht", MsgAnswer::Yes);
    Undo_Point("Rückgängig: Ersetzen");
    EXPECT_EQ(rsEntries->Text(column::Eintrag), "eins");
    EXPECT_EQ(Texts_In(ProgramFolder + "/TEMP.MDB"), rows);
    ASSERT_TRUE(Menu("mnuReset").Enabled);
    Add(Text("vier"));
    EXPECT_EQ(Load_Vertices("Linie0").size(), written ? 2U : 0U);
    script.Expect("wieder hergestellt");
    Undo_Last();
    EXPECT_EQ(Texts(), rows);
    Close_Table(CloseMode::CloseOnly);
    EXPECT_EQ(Texts_In(Table()), rows);
    EXPECT_EQ(QDir(Path("Karten")).entryList(QDir::Files | QDir::Hidden), QStringList{"KARTE.MDB"});
    ASSERT_TRUE(QDir(Path("Karten")).removeRecursively());
  }
}

TEST_F(TablePlace, WithoutItsFolderTheRowsGoWhereTheUserWants) {
  for (const bool written : {false, true}) {
    written ? Open_Written() : Open_Unwritten();
    const QStringList rows = Texts();
    const QString kept = Path(written ? "Wiese.MDB" : "Moor.MDB");
    ASSERT_TRUE(QDir().rename(Path("Karten"), Path("Alte Karten")));
    MessageScript script;
    FileDialogScript dialog;
    // Whoever gives no answer keeps the open rows; nothing takes their place.
    script.Expect("Jetzt liegt sie hier:\n" + Path("Alte Karten/KARTE.MDB"), MsgAnswer::Cancel);
    Undo_Point("Rückgängig: Ersetzen");
    EXPECT_EQ(Texts(), rows);
    EXPECT_FALSE(Menu("mnuReset").Enabled);
    script.Expect(away, MsgAnswer::Ok);
    dialog.Answer(std::nullopt);
    New_Table();
    EXPECT_EQ(Texts(), rows);
    script.Expect(away, MsgAnswer::Ok);
    dialog.Answer(kept);
    Undo_Point("Rückgängig: Ersetzen");
    EXPECT_EQ(dialog.Seen().back().name, "KARTE.MDB");
    EXPECT_EQ(Texts_In(kept), rows);
    EXPECT_EQ(Tbl.DBGrid1.Caption, kept);
    EXPECT_EQ(Texts(), rows);
    if (written) {
      Add(Text("vier"));
      Undo_Point("Rückgängig: Ersetzen");  // asked once: the file is kept up to date
      EXPECT_EQ(Texts_In(kept), rows + QStringList{"vier"});
      dialog.Answer(Path("Weide.MDB"));
      ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
      EXPECT_EQ(Texts_In(Path("Weide.MDB")), rows + QStringList{"vier"});
    }
    Close_Table(CloseMode::CloseOnly);
    EXPECT_EQ(Texts_In(Path("Alte Karten/KARTE.MDB")), written ? rows + QStringList{"vier"} : rows);
    EXPECT_FALSE(QDir(Path("Karten")).exists());
    ASSERT_TRUE(QDir(Path("Alte Karten")).removeRecursively());
  }
}

TEST_F(TablePlace, AFileInItsPlaceIsNeverOverwrittenUnasked) {
  Open_Written();
  ASSERT_TRUE(QFile::rename(Table(), Path("Karten/alt.MDB")));
  const auto other = Make_Table_File(Table(), MapFile);
  Append_Row(*other, Text("von anderswo"));
  other->Close();
  const QByteArray foreign = Read_Bytes(Table());
  MessageScript script;
  FileDialogScript dialog;
  script.Expect("Jetzt liegt sie hier:\n" + Path("Karten/alt.MDB"), MsgAnswer::Ok);
  dialog.Answer(std::nullopt);
  EXPECT_FALSE(Save_Table(SaveStep::Save));
  EXPECT_EQ(dialog.Seen()[0].name, "KARTE_old.MDB");
  EXPECT_EQ(Read_Bytes(Table()), foreign);
  EXPECT_EQ(Texts(), oneTwoThree);
  script.Expect(away, MsgAnswer::Ok);
  dialog.Answer(Table());  // chosen in the dialog, which asks
  EXPECT_TRUE(Save_Table(SaveStep::Save));
  EXPECT_EQ(Texts(), oneTwoThree);
  Close_Table(CloseMode::CloseOnly);
  EXPECT_EQ(Texts_In(Table()), oneTwoThree);
}

TEST_F(TablePlace, ClosingLosesNoRows) {
  // Moved: they are where the file is. Deleted: at the worst they lie in the program folder.
  Open_Written();
  ASSERT_TRUE(QFile::rename(Table(), Path("Karten/alt.MDB")));
  With_Box("Jetzt liegt sie hier:\n" + Path("Karten/alt.MDB"), [&] { Close_Table(CloseMode::CloseOnly); });
  EXPECT_EQ(Texts_In(Path("Karten/alt.MDB")), oneTwoThree);
  for (const MsgAnswer answer : {MsgAnswer::Yes, MsgAnswer::Cancel}) {
    QFile::remove(Table());
    Open_Written();
    ASSERT_TRUE(QFile::remove(Table()));
    MessageScript script(away, answer);
    const QString last = ProgramFolder + "/KARTE_old.MDB";
    if (answer == MsgAnswer::Cancel) script.Expect("liegen jetzt in:\n" + last);
    Close_Table(CloseMode::CloseOnly);
    EXPECT_EQ(Texts_In(answer == MsgAnswer::Yes ? Table() : last), oneTwoThree);
  }
}

TEST_F(TablePlace, APlaceThatCannotBeWrittenKeepsTheRowsOpen) {
  Open_Written();
  const QStringList rows = Texts();
  ASSERT_TRUE(QDir().rename(Path("Karten"), Path("Alte Karten")));
  MessageScript script;
  FileDialogScript dialog;
  script.Expect(away, MsgAnswer::Ok).Expect("konnte nicht geschrieben werden:\n" + Path("fehlt/Wiese.MDB"));
  dialog.Answer(Path("fehlt/Wiese.MDB"));
  EXPECT_FALSE(Save_Table(SaveStep::Save));
  EXPECT_FALSE(script.Seen().back().text.contains("vollständig in")) << "nothing is there";
  EXPECT_EQ(Texts(), rows);
  EXPECT_TRUE(Table_Is_Changed());
  script.Expect("Jetzt liegt sie hier");
  Close_Table(CloseMode::CloseOnly);
}

}  // namespace
