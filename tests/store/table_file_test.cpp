#include "store/table_file.h"

#include "platform/file_limit.h"
#include "store/history.h"

namespace {
const QStringList oneTwo = {"eins", "zwei"}, oneTwoThree = {"eins", "zwei", "drei"};
const QString unsaved = "Wollen Sie die veränderten Einträge sichern ?",
              notSaved = "Datei kann nicht gesichert werden.", ownName = "unter einem eigenen Namen sichern?";
int Full_Disk(const QString&, qint64) { return errors::diskFull; }
}  // namespace

class TableFileTest : public TableTest {
 protected:
  QString Snapshot() const { return ProgramFolder + "/TEMP.MDB"; }
  QString Table() const { return Path("KARTE.MDB"); }
  void Open_With(const QStringList& texts, const QString& map = "Karte.bmp") {
    Open_Table(map);
    for (const QString& text : texts) Add(Text(text));
  }
  void Save_As(const QString& name) {
    FileDialogScript dialog{Path(name)};
    ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
  }
  static void Undo() { With_Box("Karteneinträge wieder hergestellt.", Undo_Last); }
  static auto Name_And_Tag() { return std::tuple(Tbl.DBGrid1.Caption, Tbl.Tag); }
  // A table file of its own beside the map, made for the map `made` with these texts.
  QString Make_Table(const QString& name, const QStringList& texts, const QString& made = "Karte.bmp") {
    const auto database = Make_Table_File(Path(name), Path(made));
    for (const QString& text : texts) Append_Row(*database, Text(text));
    return Path(name);
  }
  // Nothing may be left of what was built aside.
  void Expect_No_Leftovers() const {
    for (const QString& place : {folder.path(), ProgramFolder}) {
      for (const QString& name : QDir(place).entryList(QDir::Files | QDir::Hidden))
        EXPECT_FALSE(name.endsWith('~') || name.endsWith(".neu") || name.contains("-wal")) << name;
    }
  }
};

// Loading ------------------------------------------------------------------------------------------------------------

TEST_F(TableFileTest, ANewTableComesFromTheTemplate) {
  int loaded = 0, moved = 0;
  events.TableChanged.Connect([&] { ++loaded; });
  events.CurrentRowChanged.Connect([&] { ++moved; });
  Menu("mnuReset").Enabled = true;
  Open_Table();
  EXPECT_EQ(TableFile, Table());
  EXPECT_EQ(Name_And_Tag(), std::tuple(Table(), TableTag::Dirty));
  EXPECT_EQ(Entry_Count(), 0);
  HeaderRow header;
  header.tablePath = Table();
  header.mapName = Shortened_Path(MapFile);
  header.width = 400;
  header.height = 300;
  EXPECT_EQ(Read_Header(), header);
  EXPECT_EQ(Tbl.EintragSize, 79);
  EXPECT_FALSE(Tbl.HasUserColumns || Menu("mnuReset").Enabled);
  EXPECT_TRUE(loaded > 0 && moved > 0);
  // One that was copied here from elsewhere names its new place.
  Close_Table(CloseMode::CloseOnly);
  QFile::remove(Table());
  Make_Table("KARTE.MDB", oneTwo);
  Tbl.Tag = TableTag::Clean;
  Open_Table();
  EXPECT_EQ(Read_Header().tablePath, Table());
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
}

TEST_F(TableFileTest, RowsAndHeaderAreThereAgain) {
  Open_With(oneTwo);
  HeaderRow header = Read_Header();
  header.printFactor = 1.5;
  header.netVisible = false;
  Write_Header(header);
  Write_Font_Factor(0.7F);
  Write_Vertices("Linie0", {{1, 2}, {3, 4}});
  dbEntries->AddColumn("MapData", {"Anzahl", FieldType::Text, 20});
  PrintFactor = 1;
  Tbl.Tag = TableTag::Clean;
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  EXPECT_EQ(Texts(), oneTwo);
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "zwei");  // the last row is the current one
  EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
  EXPECT_EQ(PrintFactor, 1.5F);
  EXPECT_EQ(Read_Font_Factor(), 0.7F);
  EXPECT_FALSE(GridVisible);
  EXPECT_EQ(Load_Vertices("Linie0").size(), 2U);
  EXPECT_TRUE(Tbl.HasUserColumns);
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);  // a sound header is not touched
  // A bad one is put right and nothing else.
  dbEntries->Execute("UPDATE MapData SET ID='Text', Xline=7, Typ=3, VG=11 WHERE Eintrag LIKE '*KARTE.MDB'");
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  const EntryRow row = Rows_Of(*dbEntries)[0];
  EXPECT_EQ(std::tuple(row.ID, row.Xline, row.Typ, row.VG), std::tuple("!Unbekannt", 1, -1, 11));
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  EXPECT_EQ(Texts(), oneTwo);
}

TEST_F(TableFileTest, WithoutTemplateThereIsNoTable) {
  Name_Map();
  QFile::remove(ProgramFolder + "/MUSTER.MDB");
  int ended = 0;
  events.EndWanted.Connect([&] { ++ended; });
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    MessageScript script("von der Programmdiskette\nin folgendes Verzeichnis laden:\n " + ProgramFolder, answer);
    EXPECT_FALSE(Load_Table(LoadMode::First));
  }
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(QFile::exists(Table()));
}

TEST_F(TableFileTest, ForeignFilesAreKeptAndANewTableBegun) {
  const QByteArray first = "kein Datenbankformat " + QByteArray(3000, 'x'), second = "noch eine";
  for (const QByteArray& content : {first, second, QByteArray()}) {
    Close_Table(CloseMode::CloseOnly);
    Replace_File(Table(), content);
    MessageScript script{{"Die Datenbank ist fehlerhaft oder\n gehört nicht zum Programm FLURAX."},
                         {"umbenannt in:\n" + Path("KARTE_err.mdb")}};
    Open_Table();
    EXPECT_EQ(Entry_Count(), 0);
    EXPECT_EQ(Read_Bytes(Path("KARTE_err.mdb")), content);
  }
  // Earlier copies are never overwritten.
  EXPECT_EQ(Read_Bytes(Path("KARTE_err_1.mdb")), first);
  EXPECT_EQ(Read_Bytes(Path("KARTE_err_2.mdb")), second);
  Close_Table(CloseMode::CloseOnly);
  QFile::remove(Table());
  Workspace::CreateDatabase(Table())->CreateTable({"MapData", {{"Nummer", FieldType::Long, 0}}});
  MessageScript script{{"fehlerhafte Datenbank"}, {"Sie können anschließend eine Sicherheitskopie laden."}};
  Open_Table();
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_TRUE(Workspace::OpenDatabase(Path("KARTE_err.mdb"))->HasTable("MapData"));
}

TEST_F(TableFileTest, ADamagedTableIsRescuedWithItsRows) {
  Open_Table();
  QStringList texts;
  dbEntries->BeginTrans();
  for (int i = 0; i < 400; ++i) Add(Text(texts.emplaceBack(QStringLiteral("Eintrag %1").arg(i))));
  dbEntries->CommitTrans();
  Write_Vertices("Linie0", {{1, 2}, {3, 4}});
  Close_Table(CloseMode::CloseOnly);
  const QByteArray sound = Read_Bytes(Table());
  QByteArray headless = sound, rubbish = sound;
  headless.replace(0, 100, QByteArray(100, '#'));
  rubbish.replace(sound.size() - 6 * 1024, 2 * 1024, QByteArray(2 * 1024, '\x5a'));
  // One byte in what the file tells about its columns, and a page that is not whole.
  const QByteArray misnamed = QByteArray(sound).replace("\"Eintrag\"", "\"Eintrbg\"");
  const QByteArray merged = QByteArray(sound).replace("\"VG\" INTEGER,", "\"VG\" INTEGER ");
  const QByteArray nameless = QByteArray(sound).replace("tableMapData", "tableMapDatb");
  const QByteArray cut = sound.chopped(100);
  ASSERT_TRUE(misnamed != sound && merged != sound && nameless != sound);
  const std::tuple<QByteArray, int, LoadMode> cases[] = {
      {headless, 390, LoadMode::First}, {sound.left(sound.size() * 6 / 10), 150, LoadMode::First},
      {rubbish, 350, LoadMode::First},  {misnamed, 400, LoadMode::First},
      {merged, 400, LoadMode::First},   {nameless, 400, LoadMode::First},
      {cut, 380, LoadMode::First},      {headless, 390, LoadMode::Reload}};
  for (const auto& [bytes, least, mode] : cases) {
    Close_Table(CloseMode::CloseOnly);
    Replace_File(Table(), bytes);
    MessageScript script{{"gehört nicht zum Programm FLURAX."}, {"gerettet"}};
    ASSERT_TRUE(Load_Table(mode));
    ASSERT_GE(Entry_Count(), least);
    EXPECT_TRUE(script.Seen().back().text.contains(QStringLiteral(" %1 Karteneinträge").arg(Entry_Count())));
    for (const QString& text : Texts()) EXPECT_TRUE(texts.contains(text)) << text;
    EXPECT_EQ(Read_Header().mapName, Shortened_Path(MapFile));
    EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
    EXPECT_EQ(Read_Bytes(Path("KARTE_err.mdb")), bytes);
  }
  EXPECT_EQ(Load_Vertices("Linie0"), (std::vector<QPoint>{{1, 2}, {3, 4}}));
  EXPECT_TRUE(QFile::exists(Path("KARTE_err_7.mdb")));
}

TEST_F(TableFileTest, ABadFileAtAReloadComesBackFromTheSnapshot) {
  Open_With(oneTwo);
  Undo_Point("Rückgängig: Ersetzen");
  Add(Text("drei"));
  Close_Table(CloseMode::CloseOnly);
  Replace_File(Table(), "Müll");
  MessageScript script{{"fehlerhafte Datenbank"}, {"Karteneinträge wieder hergestellt."}};
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  EXPECT_EQ(Texts(), oneTwo);
  EXPECT_EQ(Read_Bytes(Path("KARTE_err.mdb")), "Müll");
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
}

TEST_F(TableFileTest, ATableInUseIsNotTouched) {
  Make_Table("KARTE.MDB", oneTwo);
  const auto other = Workspace::OpenDatabase(Table());
  Name_Map();
  MessageScript script{{"bereits geöffnet", MsgAnswer::Yes}, {"bereits geöffnet", MsgAnswer::No}};
  EXPECT_FALSE(Load_Table(LoadMode::First));
  EXPECT_FALSE(rsEntries);
  EXPECT_FALSE(QFile::exists(Path("KARTE_err.mdb")));
  other->Close();
  ASSERT_TRUE(Load_Table(LoadMode::First));
  EXPECT_EQ(Texts(), oneTwo);
}

// Checkpoints --------------------------------------------------------------------------------------------------------

// It costs nothing when it is taken; whatever the table has become by then, the file holds the rows of the point.
TEST_F(TableFileTest, AnUndoPointBecomesAFileWhenThereIsTime) {
  const std::function<void()> ways[] = {[this] {
                                          Table_Idle();
                                          ASSERT_TRUE(QFile::copy(Table(), Path("Kopie.MDB")));
                                          EXPECT_EQ(Texts_In(Path("Kopie.MDB")), Texts()) << "the file alone is whole";
                                        },
                                        [] { Close_Table(CloseMode::CloseOnly); },
                                        [this] {  // in pieces, while the user goes on
                                          int pieces = 0;
                                          for (; Table_Idle_Some(0); ++pieces) Add(Text("dazwischen"));
                                          EXPECT_GT(pieces, 0);
                                        },
                                        [] {
                                          Before_Going_Back(0);
                                          Go_To_Step(0);
                                        }};
  for (const auto& way : ways) {
    QFile::remove(Table());
    Open_With(oneTwo);
    Save_As("Sicherung.MDB");
    EXPECT_EQ(Name_And_Tag(), std::tuple(Path("Sicherung.MDB"), TableTag::Clean));
    Write_Vertices("Flaeche0", {{0, 0}, {9, 0}, {9, 9}});
    Add(Text("drei"));
    QFile::remove(Snapshot());
    rsEntries->MoveTo(1);
    Undo_Point("Rückgängig: Ersetzen");
    EXPECT_EQ(std::tuple(Menu("mnuReset").Caption, Menu("mnuReset").Enabled), std::tuple("Rückgängig: Ersetzen", true));
    EXPECT_EQ(std::tuple(rsEntries->Position(), Map.CurBookmark), std::tuple(1, rsEntries->Bookmark()));
    EXPECT_EQ(Tbl.Tag, TableTag::Dirty);  // a checkpoint does not set it
    EXPECT_FALSE(QFile::exists(Snapshot()));
    rsEntries->MoveTo(2);
    rsEntries->Delete();
    rsEntries->MoveTo(1);
    Set_Field(column::Eintrag, "neu");
    dbEntries->DropTable("Flaeche0");
    dbEntries->AddColumn("MapData", {"Farbe", FieldType::Text, 9});
    EXPECT_EQ(Texts_In(Path("Sicherung.MDB")), oneTwo);
    way();
    EXPECT_EQ(Texts_In(Snapshot()), oneTwoThree);
    EXPECT_EQ(Texts_In(Path("Sicherung.MDB")), oneTwoThree) << "the user's table is that of the point";
    if (!rsEntries) Load_Table(LoadMode::Reload);
    Add(Text("danach"));  // steps ahead go
    Undo();
    EXPECT_EQ(Texts(), oneTwoThree);
    EXPECT_EQ(Load_Vertices("Flaeche0").size(), 3U);
    EXPECT_FALSE(rsEntries->HasField(u"Farbe") || Menu("mnuReset").Enabled);
  }
  // Without a change there is nothing to copy.
  Tbl.Tag = TableTag::Clean;
  QFile::remove(Snapshot());
  With_Box("Karteneinträge wieder hergestellt.", [] { EXPECT_TRUE(Save_Table(SaveStep::Restore)); });
}

TEST_F(TableFileTest, ALostSnapshotEmptiesTheTableButKeepsItAside) {
  for (const QByteArray& snapshot : {QByteArray(), QByteArray("Müll")}) {
    Open_With(oneTwo);
    Undo_Point("Rückgängig: Ersetzen");
    Table_Idle();
    QFile::remove(Snapshot());
    if (!snapshot.isEmpty()) Replace_File(Snapshot(), snapshot);
    MessageScript script(notSaved);
    Undo_Last();
    EXPECT_TRUE(script.Seen()[0].text.startsWith("Step: 3\nQuelle: " + Snapshot() + "\nZiel: " + Table()));
    EXPECT_TRUE(script.Seen()[0].text.contains(Path("KARTE_bak.mdb")));
    EXPECT_EQ(Entry_Count(), 0);
    EXPECT_EQ(Texts_In(Path("KARTE_bak.mdb")), oneTwo);
  }
  EXPECT_TRUE(QFile::exists(Path("KARTE_bak_1.mdb")));
}

TEST_F(TableFileTest, AFullDiskLeavesTheCopiesAndTheTable) {
  Open_With(oneTwo);
  Save_As("Sicherung.MDB");
  Undo_Point("Rückgängig: Ersetzen");
  Table_Idle();
  Add(Text("drei"));
  File_Write_Fault = Full_Disk;
  MessageScript script{{"Sicherung.MDB"}, {"TEMP.MDB"}};
  EXPECT_FALSE(Save_Table(SaveStep::Save));
  EXPECT_TRUE(script.Seen()[0].text.contains(Table()));
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  EXPECT_FALSE(Menu("mnuReset").Enabled);  // the old snapshot is not what an undo should bring
  EXPECT_EQ(Texts(), oneTwoThree);
  EXPECT_EQ(Texts_In(Path("Sicherung.MDB")), oneTwo);
  EXPECT_EQ(Texts_In(Snapshot()), oneTwo);
  Expect_No_Leftovers();
  // A new table would throw away what was not copied.
  script.Expect("Wollen Sie die veränderten Einträge sichern", MsgAnswer::No).Expect("Sicherung.MDB").Expect("TEMP");
  New_Table();
  EXPECT_EQ(Entry_Count(), 3);
  File_Write_Fault = nullptr;
  EXPECT_TRUE(Save_Table(SaveStep::Save));
  EXPECT_EQ(Texts_In(Path("Sicherung.MDB")), oneTwoThree);
}

TEST_F(TableFileTest, WhenNoFileCanGrowNoRowIsLost) {
  Open_With(oneTwo);
  Undo_Point("Rückgängig: Ersetzen");
  Table_Idle();
  QStringList texts = oneTwo;
  dbEntries->BeginTrans();
  for (int i = 0; i < 300; ++i) Add(Text(texts.emplaceBack(QStringLiteral("Eintrag %1").arg(i))));
  dbEntries->CommitTrans();
  {
    const FileLimit limit(6000);
    MessageScript script(MsgAnswer::No);
    Undo_Point("Rückgängig: Import");
    Table_Idle();
    EXPECT_FALSE(script.Seen().empty());
    EXPECT_FALSE(Menu("mnuReset").Enabled);
  }
  ASSERT_TRUE(Load_Table(LoadMode::Reload));
  EXPECT_EQ(Texts(), texts);
  EXPECT_EQ(Texts_In(Snapshot()), oneTwo);
  EXPECT_FALSE(QFile::exists(Path("KARTE_err.mdb")));
  Close_Table(CloseMode::CloseOnly);
  Expect_No_Leftovers();
}

// Saving -------------------------------------------------------------------------------------------------------------

TEST_F(TableFileTest, SaveReportsTheName) {
  Open_With(oneTwo);
  frmMDI.MapOpen = true;
  int redraws = 0;
  events.RedrawWanted.Connect([&] { ++redraws; });
  for (const bool changed : {true, false}) {
    QFile::remove(Snapshot());
    EXPECT_TRUE(Save_Table(SaveStep::Save));
    EXPECT_EQ(std::tuple(Tbl.Tag, InfoBar.Panel[2]), std::tuple(TableTag::Clean, Table() + " gesichert."));
    EXPECT_EQ(std::tuple(QFile::exists(Snapshot()), redraws), std::tuple(changed, 1)) << "unchanged: the name only";
  }
}

TEST_F(TableFileTest, SaveAsAsksUntilTheNameIsFit) {
  Open_With(oneTwo);
  MessageScript script;
  FileDialogScript dialog;
  dialog
      .Answer(Path("Wiese-Nord.MDB"))  // a minus is never taken
      .Answer(Path("Wiese 1.MDB"))     // faults are told; the user changes the name
      .Answer(Path("KARTE_Neu.MDB"))   // the map's name: are you sure? No
      .Answer(Path("KARTE_Neu.MDB"));  // Yes
  script.Expect("Minuszeichen - im Dateinamen nicht zulässig.")
      .Expect("Dieser Dateiname ist ungültig", MsgAnswer::Yes)
      .Expect("in folgender Datei sichern?\n" + Path("KARTE_Neu.MDB"), MsgAnswer::No)
      .Expect("in folgender Datei sichern?", MsgAnswer::Yes);
  ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
  QStringList proposals;
  for (const FileRequest& request : dialog.Seen()) proposals.append(request.name);
  EXPECT_EQ(proposals, (QStringList{"KARTE_Neu.MDB", "KARTE_Neu.MDB", "Wiese 1.MDB", "KARTE-Neu.MDB"}));
  EXPECT_EQ(Tbl.DBGrid1.Caption, Path("KARTE_Neu.MDB"));
  EXPECT_EQ(Texts_In(Path("KARTE_Neu.MDB")), oneTwo);
  EXPECT_EQ(Read_Header().tablePath, Path("KARTE_Neu.MDB"));
}

TEST_F(TableFileTest, PathsMayBeLongAndHaveUmlautsBlanksDotsAndAMinus) {
  const QString umlauts = "Örtliche Karten-v1.2/", place = QString(100, 'o') + '/' + QString(60, 'p') + '/';
  ASSERT_TRUE(QDir().mkpath(Path(umlauts)) && QDir().mkpath(Path(place)));
  Open_With(oneTwo, umlauts + "Große Wiese.bmp");
  EXPECT_EQ(TableFile, Path(umlauts + "GROßE WIESE.MDB"));
  {
    FileDialogScript dialog{Path(umlauts + "Sicherung.MDB")};
    ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
    // Cut at the point of the file name, not of the folder.
    EXPECT_EQ(dialog.Seen()[0].folder + dialog.Seen()[0].name, Path(umlauts + "GROßE WIESE_Neu.MDB"));
  }
  EXPECT_EQ(Texts_In(Path(umlauts + "Sicherung.MDB")), oneTwo);
  Close_Table(CloseMode::CloseOnly);
  Open_With(oneTwo, place + QString(140, 'k') + ".bmp");
  ASSERT_GT(TableFile.size(), 300);
  const QString target = place + QString(243, 's') + ".MDB";  // the longest name that can have a log beside it
  {
    MessageScript script{{"Ein Name im Pfad der Datei ist zu lang: 248 Zeichen"}, {"Der Pfad der Datei ist zu lang"}};
    FileDialogScript dialog{Path(place + QString(244, 's') + ".MDB"), Path(place + place + place + "Amsel.MDB"),
                            Path(target)};
    ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
  }
  Add(Text("drei"));
  Undo_Point("Rückgängig: Ersetzen");
  Table_Idle();  // brings it up to date
  EXPECT_EQ(Texts_In(Path(target)), oneTwoThree);
  Recover_Table();
  const QString stem = Path(place + QString(140, 'K'));
  ASSERT_TRUE(Load_Table(LoadMode::First));
  for (const QString& path : {Path(target), stem + "_rep.mdb", stem + "_bak.mdb"}) {
    EXPECT_TRUE(Load_Other_Table(path)) << path;
    EXPECT_EQ(Texts(), oneTwoThree) << path;
    EXPECT_EQ(Tbl.DBGrid1.Caption, path);
    Tbl.Tag = TableTag::Clean;
  }
  Expect_No_Leftovers();
}

TEST_F(TableFileTest, AFailedSaveAsKeepsNamesAndRows) {
  Open_With(oneTwo);
  const QString row = rsEntries->Bookmark();
  FileDialogScript dialog{std::nullopt, Path("fehlt/Amsel.MDB")};
  EXPECT_FALSE(Save_Table(SaveStep::SaveAs));
  MessageScript script(notSaved);
  EXPECT_FALSE(Save_Table(SaveStep::SaveAs));
  EXPECT_TRUE(script.Seen()[0].text.startsWith("Step: 1\nQuelle: " + Table()));
  EXPECT_EQ(Name_And_Tag(), std::tuple(Table(), TableTag::Dirty));
  EXPECT_EQ(Read_Header().tablePath, Table());
  EXPECT_EQ(rsEntries->Bookmark(), row);
  EXPECT_EQ(Texts(), oneTwo);
}

TEST_F(TableFileTest, AtAMapChange) {
  const auto leave = [] { EXPECT_TRUE(Save_Table(SaveStep::AtMapChange)); };
  Open_With({"eins"});
  leave();  // fewer than two entries: no question
  Add(Text("zwei"));
  const QString old = Path("KARTE_old.MDB");
  With_Box(ownName + "\n" + old, MsgAnswer::No, leave);
  EXPECT_FALSE(QFile::exists(old));
  With_Box(ownName, MsgAnswer::Yes, leave);
  EXPECT_EQ(Texts_In(old), oneTwo);
  leave();  // unchanged: no question
  Add(Text("drei"));
  With_Box("\n\nDie Karteneinträge\nwurden verändert.\n" + unsaved, MsgAnswer::Yes, leave);
  EXPECT_EQ(Texts_In(old), oneTwoThree);
}

// Another table ------------------------------------------------------------------------------------------------------

TEST_F(TableFileTest, AnotherOrANewTableIsLoadedAndUndone) {
  Open_With(oneTwo);
  const QStringList birds = {"Amsel", "Drossel", "Fink"};
  const QString other = Make_Table("Amsel.MDB", birds);
  With_Box(unsaved, MsgAnswer::No, New_Table);
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Einträge neu");
  EXPECT_FALSE(QFile::exists(Path("KARTE_old.MDB")));
  Undo();
  EXPECT_EQ(Texts(), oneTwo);
  {
    MessageScript script(unsaved, MsgAnswer::No);
    FileDialogScript dialog{other};
    ASSERT_TRUE(Load_Other_Table({}));
    EXPECT_EQ(QDir::cleanPath(dialog.Seen()[0].folder), folder.path());
  }
  EXPECT_EQ(TableFile, Table());  // the standard table keeps its name
  EXPECT_EQ(Name_And_Tag(), std::tuple(other, TableTag::Clean));
  EXPECT_EQ(Read_Header().tablePath, other);
  EXPECT_EQ(Texts(), birds);
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Einträge laden");
  ASSERT_TRUE(Menu("mnuReset").Enabled);
  Undo();
  EXPECT_EQ(Texts(), oneTwo);
  // The old entries must not be written over the file that was loaded.
  Undo_Point("Rückgängig: Ersetzen");
  EXPECT_EQ(Texts_In(other), birds);
}

TEST_F(TableFileTest, ATableOfAnotherMapIsAskedAbout) {
  Open_With(oneTwo);
  const QString moor = Make_Table("Moor.MDB", {"Moos"}, "Moor.bmp");
  MessageScript script;
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    Tbl.Tag = TableTag::Dirty;
    script.Expect(unsaved, MsgAnswer::No)
        .Expect("Diese Tabelle wurde in Verbindung mit folgender Karte erstellt:\n" + Path("Moor.bmp"), answer);
    const bool loaded = answer == MsgAnswer::Yes;
    EXPECT_EQ(Load_Other_Table(moor), loaded);
    EXPECT_EQ(Texts(), loaded ? QStringList{"Moos"} : oneTwo);  // unsaved changes included
    EXPECT_EQ(Tbl.DBGrid1.Caption, loaded ? moor : Table());
    EXPECT_EQ(Tbl.Tag, loaded ? TableTag::Clean : TableTag::Dirty);
  }
  // The map of the table is known by its name or its shortened path.
  const QString other = Make_Table("Amsel.MDB", {"Amsel"});
  for (const QString& name : {QStringLiteral("C:\\Karten\\karte.BMP"), Shortened_Path("/sehr/langer/weg/zur/Karte.bmp"),
                              QStringLiteral("/vo...karte.bmp"), QString(), QStringLiteral("ohne Karte")}) {
    Set_Field(*Workspace::OpenDatabase(other)->OpenRecordset("MapData"), column::Schrift, name);
    EXPECT_TRUE(Load_Other_Table(other)) << name;
  }
}

TEST_F(TableFileTest, WhatCannotBeLoadedLeavesTheTableAlone) {
  Open_With(oneTwo);
  Tbl.Tag = TableTag::Clean;
  Replace_File(Path("Fremd.MDB"), "keine Datenbank");
  const QString longName = Path(QString(126, u'ä') + ".MDB");
  MessageScript script{{"gehört nicht zum Programm FLURAX."}, {"nicht gefunden"}, {"höchstens 255 sind möglich"}};
  EXPECT_FALSE(Load_Other_Table(Path("Fremd.MDB")));
  EXPECT_FALSE(Load_Other_Table(Path("fehlt.MDB")));
  EXPECT_FALSE(Load_Other_Table(longName));
  FileDialogScript dialog{std::nullopt};
  EXPECT_FALSE(Load_Other_Table({}));
  EXPECT_EQ(Texts(), oneTwo);
  EXPECT_EQ(Tbl.DBGrid1.Caption, Table());
  EXPECT_EQ(Read_Bytes(Path("Fremd.MDB")), "keine Datenbank");
  File_Write_Fault = Full_Disk;
  const QString other = Make_Table("Amsel.MDB", {"Amsel"});
  script.AllowAny(MsgAnswer::Ok);
  EXPECT_FALSE(Load_Other_Table(other));
  EXPECT_EQ(Texts(), oneTwo);
}

TEST_F(TableFileTest, EntriesThatStandNowhereElseAreKeptBeforeOthersTakeTheirPlace) {
  QString other = Make_Table("Amsel.MDB", {"Amsel"});
  const QStringList kept{Path("KARTE_old.MDB"), Path("KARTE_old_1.MDB"), Path("KARTE_old_2.MDB"),
                         Path("KARTE_old_3.MDB")};
  for (int i = 0; i < 4; ++i) {
    const bool changed = i < 2, load = i % 2 == 0;
    QFile::remove(Table());
    const QStringList mine = {"eins", QString::number(i)};
    Open_With(mine);
    if (!changed) Tbl.Tag = TableTag::Clean;
    MessageScript script(changed ? unsaved : ownName + "\n" + kept[i], MsgAnswer::Yes);
    if (changed) script.Expect("liegen jetzt in:\n" + kept[i]);
    load ? static_cast<void>(Load_Other_Table(other)) : New_Table();
    EXPECT_EQ(Texts(), load ? QStringList{"Amsel"} : QStringList{});
    EXPECT_EQ(Texts_In(kept[i]), mine);
    script.Expect("wieder hergestellt");
    Undo_Last();
    EXPECT_EQ(Tbl.DBGrid1.Caption, kept[i]);
    Undo_Point("Rückgängig: Ersetzen");
    Table_Idle();
    EXPECT_EQ(Texts_In(other), QStringList{"Amsel"});
  }
  // Entries that were saved or loaded stand in their own file: nothing to ask, unless that has gone.
  MessageScript script;
  Tbl.Tag = TableTag::Clean;
  New_Table();
  EXPECT_TRUE(Load_Other_Table(other));
  QFile::remove(other);
  script.Expect(ownName, MsgAnswer::Yes);
  New_Table();
  EXPECT_EQ(Texts_In(Path("KARTE_old_4.MDB")), QStringList{"Amsel"});
  // After the map was opened anew nothing is asked while a table of the map holds the same, vertices included.
  Add(Text("eins"));
  Write_Vertices("Linie0", {{1, 2}, {3, 4}});
  Save_As("Sicherung.MDB");
  ASSERT_TRUE(Load_Table(LoadMode::First));
  EXPECT_TRUE(Load_Other_Table(other = Make_Table("Fink.MDB", {"Fink"})));
  EXPECT_TRUE(Load_Other_Table(Path("Sicherung.MDB")));
  ASSERT_TRUE(Load_Table(LoadMode::First));
  Workspace::OpenDatabase(Path("Sicherung.MDB"))->Execute("DELETE FROM Linie0 WHERE xf = 3");
  script.Expect(ownName, MsgAnswer::No);
  New_Table();
  // What cannot be kept is not replaced.
  Add(Text("eins"));
  File_Write_Fault = Full_Disk;
  script.Expect(unsaved, MsgAnswer::Yes).Expect(notSaved).Expect(notSaved);
  New_Table();
  EXPECT_EQ(Texts(), QStringList{"eins"});
}

// Compressing and repairing ------------------------------------------------------------------------------------------

TEST_F(TableFileTest, CompressingTellsBothSizesAndKeepsTheRows) {
  Open_Table();
  dbEntries->BeginTrans();
  for (int i = 0; i < 2000; ++i) Add(Text(QString(70, 'x')));
  dbEntries->CommitTrans();
  dbEntries->Execute("DELETE FROM MapData WHERE Eintrag LIKE 'x*'");
  rsEntries->Requery();
  Add(Text("bleibt"));
  const QString bookmark = rsEntries->Bookmark();
  MessageScript script("ursprüngliche Größe: ");
  Compress_Table();
  EXPECT_TRUE(rsEntries->HasRow(bookmark)) << "rows keep their keys";
  const QStringList lines = script.Seen()[0].text.split('\n');
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0], Tbl.DBGrid1.Caption);
  const auto bytes = [](const QString& line) { return line.section(": ", 1).section(' ', 0, 0).toInt(); };
  EXPECT_GT(bytes(lines[1]), 10 * bytes(lines[2]));
  EXPECT_FALSE(QFile::exists(ProgramFolder + "/SRTDATA.MDB"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Texts(), QStringList{"bleibt"});
    EXPECT_EQ(Texts_In(Snapshot()), QStringList{"bleibt"});
    EXPECT_TRUE(Repair_Table().contains("1 Eintrag"));  // of a sound table: changes nothing
  }
}

TEST_F(TableFileTest, RecoveringLeavesThreeCopies) {
  for (const bool withSnapshot : {false, true}) {
    Open_With(oneTwo);
    MessageScript script;
    if (withSnapshot) {
      Undo_Point("Rückgängig: Ersetzen");
      Add(Text("drei"));
      script.Expect("Karteneinträge wieder hergestellt.");
    }
    Recover_Table();
    EXPECT_FALSE(QFile::exists(Table()));
    EXPECT_EQ(Texts_In(Path("KARTE_err.mdb")), withSnapshot ? oneTwoThree : oneTwo);
    EXPECT_EQ(Texts_In(Path("KARTE_rep.mdb")), withSnapshot ? oneTwoThree : oneTwo);
    EXPECT_EQ(Texts_In(Path("KARTE_bak.mdb")), oneTwo);
  }
  EXPECT_TRUE(QFile::exists(Path("KARTE_err_1.mdb")));
}

TEST_F(TableFileTest, LockFilesAreDeleted) {
  Open_With(oneTwo);
  ASSERT_TRUE(QDir().mkpath(Path("Sicherung")));
  Tbl.DBGrid1.Caption = Path("Sicherung/Amsel.MDB");
  for (const char* name : {"Sicherung/AMSEL.ldb", "Sicherung/alt.ldb", "fremd.ldb"}) Replace_File(Path(name), "");
  Close_Table(CloseMode::CloseOnly);
  Replace_File(Path("KARTE.ldb"), "");
  Delete_Lock_Files();
  for (const char* name : {"Sicherung/AMSEL.ldb", "Sicherung/alt.ldb", "KARTE.ldb"})
    EXPECT_FALSE(QFile::exists(Path(name))) << name;
  EXPECT_TRUE(QFile::exists(Path("fremd.ldb")));
  Tbl.DBGrid1.Caption = TableFile;  // whatever table the user has open
  Delete_Lock_Files();
  EXPECT_FALSE(QFile::exists(Path("fremd.ldb")));
  ASSERT_TRUE(QFile::link("/dev/zero", Path("KARTE.ldb")));
  EXPECT_NO_THROW(Workspace::OpenDatabase(Table()));  // it is not read
}
