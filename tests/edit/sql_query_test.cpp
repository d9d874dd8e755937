#include "edit/sql_query.h"

#include "edit/move.h"
#include "edit/property_transfer.h"
#include "edit/search_replace.h"
#include "support/bulk_fixture.h"

namespace {

class QueryTest : public BulkTest {
 protected:
  // The header names the file the user believes to be open; that may change.
  static QStringList Whole_Table() { return BulkTest::Whole_Table().filter(QRegularExpression("^(?!3:!)")); }
  void SetUp() override {
    BulkTest::SetUp();
    Add_Text("Ahorn", 100, 20);
    Add_Text("Buche", 1550, 20);
    Add_Polygon("Linie1", {{10, 10}, {50, 60}});
    Add_Polygon("Flaeche0", {{10, 10}, {50, 60}, {90, 10}});
    Add_Text("Buche klein", 300, 50, 100);
    Open_Sql(sql);
  }
  static QString Undo_Caption() { return Menu("mnuReset").Caption; }
  static void Undo() {
    MessageScript script("Karteneinträge wieder hergestellt.");
    Undo_Last();
  }
  bool Stands_In(const QString& file, const QString& text) const {
    const std::vector<EntryRow> rows = Rows_Of(*Workspace::OpenDatabase(Path(file)));
    return std::any_of(rows.begin(), rows.end(), [&](const EntryRow& row) { return row.Eintrag == text; });
  }
  SqlState sql;
};

}  // namespace

TEST_F(QueryTest, UpdateAndDeleteAreTakenBackByUndo) {
  const QStringList before = Whole_Table();
  ASSERT_TRUE(Apply_Sql(sql, "Update MapData set Eintrag = Eintrag & '!' where Typ = 0 : Ausrufezeichen"));
  EXPECT_EQ(sql.info, "Datensätze in der untenstehenden Tabelle der Einträge wurden geändert.");
  EXPECT_EQ(Texts(), QStringList({"Ahorn!", "Buche!", "Linie1", "Flaeche0", "Buche klein"}));
  EXPECT_EQ(Undo_Caption(), "Rückgängig: SQL-Abfrage");
  Undo();
  EXPECT_EQ(Whole_Table(), before);
  // The header's Xmap is the width of the map: the delivered statement meets it, and it stays all the same.
  const HeaderRow header = Read_Header();
  ASSERT_TRUE(Apply_Sql(sql, "Delete * from [MapData] where Xmap > 1490"));
  EXPECT_EQ(sql.info, "Anzahl der gelöschten Datensätze = 1");
  EXPECT_EQ(Texts(), QStringList({"Ahorn", "Linie1", "Flaeche0", "Buche klein"}));
  EXPECT_EQ(Read_Header(), header);
  ASSERT_TRUE(Apply_Sql(sql, "Delete * from [MapData]"));
  EXPECT_EQ(sql.info, "Anzahl der gelöschten Datensätze = 5");
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_TRUE(rsEntries->Text(column::ID).startsWith(u'!')) << "a new header";
  Undo();
  EXPECT_EQ(Texts(), QStringList({"Ahorn", "Linie1", "Flaeche0", "Buche klein"})) << "one level deep";
}

TEST_F(QueryTest, SelectionIsTakenWithItsUserColumnsAndVertices) {
  ASSERT_TRUE(Add_Column({"Fundort", FieldType::Text, 20}, {}));
  rsEntries->MoveLast();
  Set_Field(QStringLiteral("Fundort"), QStringLiteral("Wald"));
  const QStringList before = Whole_Table();
  {
    MessageScript script("verändert die Reihenfolge", MsgAnswer::Yes);
    ASSERT_TRUE(Apply_Sql(sql, "Select * from MapData where Eintrag like 'b*' or ID = 'Linie1' order by Eintrag desc"));
  }
  EXPECT_EQ(sql.info, "ursprüngliche Anzahl der Datensätze: 6\nAnzahl der ausgewählten Datensätze: 3");
  EXPECT_TRUE(Tbl.DBGrid1.Caption.endsWith("KARTE_SQL.mdb")) << Tbl.DBGrid1.Caption;
  ASSERT_TRUE(Take_Sql(sql));
  EXPECT_EQ(Texts(), QStringList({"Linie1", "Buche klein", "Buche"}));
  rsEntries->MoveTo(2);
  EXPECT_EQ(rsEntries->Text(QStringLiteral("Fundort")), "Wald") << "not mixed up";
  EXPECT_TRUE(dbEntries->HasTable("Linie1"));
  EXPECT_TRUE(dbEntries->HasTable("Qdata"));
  EXPECT_FALSE(dbEntries->HasTable("Flaeche0"));
  EXPECT_TRUE(File_Exists(Path("KARTE_SQL.mdb")));
  Close_Sql(sql);
  EXPECT_EQ(Tbl.DBGrid1.Caption, Path("KARTE_SQL.mdb")) << "it was taken";
  Undo();
  EXPECT_EQ(Whole_Table(), before);
  EXPECT_EQ(Tbl.DBGrid1.Caption, Path("KARTE.MDB")) << "all entries are not written over the selection";
}

TEST_F(QueryTest, ASelectionThatIsNotTakenLeavesTheNameOfTheTable) {
  FileDialogScript dialog{Path("Wiese.MDB")};
  ASSERT_TRUE(Save_Table(SaveStep::SaveAs));
  Add_Text("Ulme", 10, 20);
  const TableTag tag = Tbl.Tag;
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(Apply_Sql(sql, "Select * from MapData where Eintrag like 'b*'"));
    EXPECT_EQ(Tbl.DBGrid1.Caption, Path("Wiese_SQL.mdb"));
    EXPECT_EQ(InfoBar.Panel[2], Path("Wiese_SQL.mdb"));
  }
  EXPECT_FALSE(File_Exists(Path("Wiese_SQL.mdb"))) << "its undo points belong to the user's own table";
  Table_Idle();
  EXPECT_TRUE(Stands_In("Wiese.MDB", "Ulme"));
  Close_Sql(sql);
  EXPECT_EQ(Tbl.DBGrid1.Caption, Path("Wiese.MDB"));
  EXPECT_EQ(InfoBar.Panel[2], Path("Wiese.MDB"));
  EXPECT_EQ(Tbl.Tag, tag);
  Add_Text("Esche", 10, 20);
  ASSERT_TRUE(Save_Table(SaveStep::Save));
  EXPECT_TRUE(Stands_In("Wiese.MDB", "Esche"));
  // A statement that changes something ends the selection as well.
  ASSERT_TRUE(Apply_Sql(sql, "Select * from MapData where Eintrag like 'b*'"));
  ASSERT_TRUE(Apply_Sql(sql, "Update MapData set RA = 1 where Typ = 0"));
  EXPECT_EQ(std::tuple(Tbl.DBGrid1.Caption, Tbl.Tag), std::tuple(Path("Wiese.MDB"), TableTag::Dirty));
}

TEST_F(QueryTest, AsksTellsAndLeavesTheTableAlone) {
  const QStringList before = Whole_Table();
  struct {
    const char *statement, *message;
    MsgAnswer answer = MsgAnswer::Ok;
  } cases[] = {
      {" : nur ein Kommentar", "Bitte geben Sie eine Sql-Abfrage in das Textfeld ein."},
      {"Select * from MapData",
       "keine Untermenge der Datensätze.\nDie Anzahl der Datensätze (= Karteneinträge) bleibt "
       "unverändert: 6",
       MsgAnswer::No},
      {"Select * from MapData where Typ = 4 Order  By Typ", "verändert die Reihenfolge", MsgAnswer::No},
      {"Select * from MapData where Typ = 77", "Anzahl der resultierenden Datensätze = 0\nBitte überprüfen"},
      {"Select * from MapData where Eintrag = 'Update'", "Eine Auswahl kann nicht ausgeführt werden"},
      {"Select * from MapData where Eintrag = 'a:b'", "nicht durch ' beendet"},
      {"Update MapData set Xmap = Xmap * 100", "SQL-Fehler.\nÜberlauf"},
      {"Select Count(*) from MapData, MapData as b where MapData.Farbe = 1", "gibt es nicht"},
  };
  for (const auto& it : cases) {
    MessageScript script(it.message, it.answer);
    EXPECT_FALSE(Apply_Sql(sql, it.statement)) << it.statement;
    EXPECT_EQ(script.Seen().back().title, "SQL-Abfrage");
  }
  EXPECT_EQ(Whole_Table(), before);
  MessageScript script("Zu wenig Datensätze in der Sql-Tabelle.");
  EXPECT_FALSE(Take_Sql(sql)) << "the last statement failed";
  ASSERT_TRUE(Apply_Sql(sql, "Delete from MapData where ID <> 'x' and ID not like '!*'"));
  script.Expect("Zu wenig Datensätze in der Tabelle.");
  EXPECT_FALSE(Apply_Sql(sql, "Select * from MapData"));
}

TEST_F(QueryTest, ListOfStatements) {
  const QString larger = "Select * from MapData where Größe > 9 : größere";
  EXPECT_EQ(sql.list.size(), 6);
  Save_Sql_List(sql, sql.list[2]);
  EXPECT_EQ(sql.info, "Aktuelle SQL-Anweisung ist bereits in der Liste enthalten.");
  Save_Sql_List(sql, "Select 1");
  EXPECT_EQ(sql.list.size(), 6) << "too short";
  Save_Sql_List(sql, larger);
  Delete_Sql_Line(sql, "fehlt");
  EXPECT_EQ(sql.info, "SQL-Anweisung in der Auflistung nicht gefunden.");
  MessageScript script("Wollen Sie diese SQL-Abfrage wirklich löschen?", MsgAnswer::Yes);
  EXPECT_TRUE(Delete_Sql_Line(sql, sql.list[0]));
  SqlState again;
  Open_Sql(again);
  EXPECT_EQ(std::tie(again.list, again.list.back()), std::tie(sql.list, larger));
  // A table of that name is not written over.
  EXPECT_EQ(Sql_Table_Name(Path("KARTE.MDB")), Path("KARTE_SQL.mdb"));
  Write_Lines(Path("KARTE_SQL.mdb"), {"x"});
  for (const char* name : {"KARTE.MDB", "KARTE_SQL_1.mdb"})
    EXPECT_EQ(Sql_Table_Name(Path(name)), Path("KARTE_SQL_1.mdb"));
}

// Search and replace --------------------------------------------------------------------------------------------------

TEST(FindIn, KindsOfMatch) {
  // Whole words, case; place and length of the hit, -1 where there is none.
  const std::tuple<const char*, const char*, bool, bool, int, int> cases[] = {
      {"Rotbuche", "Eintrag = *", false, false, 0, 8},
      {"", "Eintrag=*", false, false, 0, 0},
      {"Rotbuche", "Eintrag = rot*", false, false, 0, 3},
      {"Rotbuche", "Eintrag = *BUCHE", false, false, 3, 5},
      {"Rotbuchen", "Eintrag = *buche*", false, false, 3, 5},
      {"Rotbuche", "Eintrag = buche", false, false, -1, 0},
      {"Rotbuche", "Eintrag = rot*", false, true, -1, 0},
      {"rote Buche", "Eintrag = rot*", true, false, -1, 0},
      {"rot Buche", "Eintrag = ROT*", true, false, 0, 3},
      {"Rotbuche buche", "Eintrag = *buche*", true, false, 9, 5},
      {"ÄSCHE", "Eintrag = ä*", false, false, 0, 1},
      {"a = b", "Eintrag = a = b", false, false, 0, 5},
  };
  for (const auto& [text, line, words, matchCase, at, length] : cases) {
    const auto hit = Find_In(text, Criterion::Parse(line), {matchCase, words});
    EXPECT_EQ(std::tuple(hit ? hit->at : -1, hit ? hit->length : 0), std::tuple(at, length)) << text << " / " << line;
  }
}

TEST_F(QueryTest, SearchGoesFromHitToHit) {
  SearchState state;
  MessageScript script("mindestens ein Kriterium");
  EXPECT_FALSE(Search_Next(state));
  state.search = {"Eintrag = *buche*", "Größe = 10"};
  ASSERT_TRUE(Search_Next(state)) << "the current row is the last: it goes on at the top";
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "Buche");
  EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
  EXPECT_EQ(state.Caption(), "Weitersuchen");
  ASSERT_TRUE(Search_Next(state));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "Buche klein");
  script.Expect(
      "Anzahl der gefundenen Einträge: 2\n\nEs wurde keine weitere Übereinstimmung mit folgenden Kriterien "
      "gefunden:\nEintrag = *buche*\nGröße = 10");
  EXPECT_FALSE(Search_Next(state));
  EXPECT_EQ(state.Caption(), "Suchen");
  EXPECT_TRUE(Search_Next(state));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "Buche") << "again from the top";
  state.search = {"Eintrag = Fichte"};
  script.Expect("In der aktuellen Tabelle der Einträge wurde keine Übereinstimmung");
  EXPECT_FALSE(Search_Next(state));
  state.search = {"Farbe = 3"};
  script.Expect("Beim Filtern der Quelldaten ist ein Fehler aufgetreten.\nDie Spalte \"Farbe\"");
  EXPECT_FALSE(Search_Next(state));
}

TEST_F(QueryTest, ReplacesOneAndAllAndTakesThemBack) {
  const QStringList before = Whole_Table();
  SearchState state;
  MessageScript script;
  const auto all = [&state](const char* search, const QStringList& replace) {
    state.search = {search};
    state.replace = replace;
    return Replace_All(state);
  };
  script.Expect("Die Rahmenfarbe RA  kann nur Werte");
  EXPECT_EQ(all("Eintrag = *", {"RA = 216"}), 0);
  EXPECT_EQ(Whole_Table(), before);
  script.Expect("keine weitere");
  EXPECT_EQ(all("Eintrag = *", {"RA = 215", "Eintrag ="}), 5) << "* is every row but the header";
  EXPECT_EQ(Undo_Caption(), "Rückgängig: Ersetzen");
  state.search = {"Eintrag = *buche*"};
  state.replace = {"Eintrag = Eiche*"};
  rsEntries->MoveTo(1);
  Map.CurBookmark = rsEntries->Bookmark();
  ASSERT_FALSE(Replace_Current(state)) << "first it is shown";
  ASSERT_TRUE(Replace_Current(state));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "Eiche");
  script.Expect("keine weitere");
  EXPECT_EQ(Replace_All(state), 1);
  EXPECT_EQ(Texts().back(), "Eiche klein");
  script.Expect("Die Spalte 'ID' eines Polygons oder einer Figur darf nicht verändert werden!").Expect("keine weitere");
  EXPECT_EQ(all("Typ = 4", {"ID = Text"}), 0);
  const std::pair<const char*, const char*> refused[] = {{"Typ = 1", "nicht mehr richtig dargestellt"},
                                                         {"VG = 16", "Die Vordergurndfarbe VG  kann nur Werte"},
                                                         {"Xmap = 99999", "Überlauf"},
                                                         {"Eintrag =", "Es wurde kein Eintrag verändert."}};
  for (const auto& [replace, told] : refused) {
    script.Expect(told, MsgAnswer::No);
    EXPECT_EQ(all("Typ = 4", {replace}), 0) << replace;
  }
  script.Expect("Karteneinträge wieder hergestellt.");
  Take_Replacements_Back(state);
  EXPECT_EQ(Whole_Table(), before);
  script.Expect("Tabelle der Einträge bereits wieder hergestellt!");
  Take_Replacements_Back(state);
  const StopWorkAt third(3);
  EXPECT_EQ(all("Eintrag = *", {"VG = 3"}), 0);
  EXPECT_EQ(Whole_Table(), before) << "a stopped replacement changes nothing";
}

// A stop, nothing to do: the menu must not promise to take back what did not happen, nor forget the last.
TEST_F(QueryTest, WhatWroteNothingLeavesTheOfferAsItWas) {
  MessageScript script(MsgAnswer::Yes);
  SearchState same;
  same.search = same.replace = QStringList("Eintrag = Ahorn");
  const std::pair<const char*, std::function<void()>> works[] = {
      {"a stopped move",
       [] {
         const StopWorkAt second(2);
         Move_Entries({5, 5});
       }},
      {"the same text", [&] { EXPECT_EQ(Replace_All(same), 0); }},
      {"no row", [&] { Apply_Sql(sql, "Update MapData set VG = 3 where ID = 'fehlt'"); }}};
  for (const auto& [name, work] : works) {
    const QString before = Whole_Table().join(u'\n');
    Undo_Point("Rückgängig: Vorher");
    Add_Text("Neuer Ort", 5, 5);
    const QStringList table = Whole_Table();
    work();
    EXPECT_EQ(Whole_Table(), table) << name;
    EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Vorher") << name;
    ASSERT_TRUE(Menu("mnuReset").Enabled) << name;
    Undo_Last();
    EXPECT_EQ(Whole_Table().join(u'\n'), before) << name;
  }
}

TEST_F(QueryTest, RunningStatementsAreStoppedByAbbrechen) {
  const QStringList before = Whole_Table();
  QString joins = "(Select Count(*) from MapData as a";
  for (char alias = 'b'; alias < 'n'; ++alias) joins += QString(", MapData as ") + alias;
  {
    const StopWorkAt once(0);
    for (const char* begin : {"Select * from MapData where Typ < ", "Update MapData set VG = 3 where Typ < "}) {
      sql.info.clear();
      EXPECT_FALSE(Apply_Sql(sql, begin + joins + ")")) << "without a message";
      EXPECT_EQ(sql.info, "Die Anweisung wurde abgebrochen.");
    }
    EXPECT_EQ(once.Shown(), QStringList(2, "SQL-Abfrage\nDie Anweisung wird ausgeführt ..."));
  }
  EXPECT_EQ(Whole_Table(), before);
  // A join of few rows that needs more than there is.
  MessageScript script("Die Anweisung braucht mehr Speicher, als ihr zusteht (256 MB)");
  EXPECT_FALSE(Apply_Sql(sql,
                         "Select a.* from MapData as a, MapData as b, MapData as c, MapData as d, MapData as e, "
                         "MapData as f, MapData as g, MapData as h, MapData as i, MapData as j"));
}

TEST_F(QueryTest, LookIsCarriedOver) {
  Add({"Text", "12Buche", "Courier New", 20, 4, 0, -1, 5, 5, 0, 0, 0});
  MessageScript script;
  const auto transfer = [&script](const TransferRequest& request, int count) {
    script.Expect(u"%1 Karteneinträge wurden verändert"_s.arg(count));
    EXPECT_EQ(Transfer_Properties(request), count);
  };
  transfer({}, 0);  // no other of the same text
  transfer({.size = false, .to = TransferTo::Similar}, 1);
  EXPECT_EQ(Undo_Caption(), "Rückgängig: Eigenschaften übertragen");
  rsEntries->MoveTo(2);
  const EntryRow similar = Read_Entry(*rsEntries);
  EXPECT_EQ(std::tuple(similar.VG, similar.Schrift, similar.Groesse), std::tuple(4, "Courier New", 10));
  transfer({.size = false, .to = TransferTo::Marked}, 1);
  const QString figure = Add(Make(120, "Figur1", "Kreis", 5, 5));
  Go(QString::number(figure.toLongLong() - 1));
  transfer({.to = TransferTo::Marked}, 2);
  EXPECT_EQ(Row(figure).Schrift, "Arial") << "there stands the fill of a figure";
  EXPECT_EQ(Row(figure).VG, 4);
  Go(Header_Key());
  script.Expect("Kein aktueller Karteneintrag");
  EXPECT_EQ(Transfer_Properties({}), 0) << "the header row is none";
}
