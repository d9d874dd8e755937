#include "store/entry.h"

using EntryTest = OpenTableTest;

TEST_F(EntryTest, RowsComeBackAsTheyWereWritten) {
  const QString id = "-Flaeche0 - P1101L5.0B2.5>Linie3", text = "Größe „ß“ \r\nzweite Zeile";
  const EntryRow area{id, text, "Times New Roman-B<45", -8.5, 15, 0, -215, -32768, 32767, 3, -7, -240};
  Add(area);
  EXPECT_EQ(Read_Entry(*rsEntries), area);
  EXPECT_EQ(Tbl.Tag, TableTag::Dirty);
  EntryRow changed = area;
  changed.Groesse = 12.25;
  changed.Typ = 40;
  Update_Entry(changed);
  EXPECT_EQ(Read_Entry(*rsEntries), changed);
  EXPECT_EQ(Entry_Count(), 1);
}

TEST_F(EntryTest, BoxOfFiguresAndSquares) {
  const std::tuple<int, int, int, int, int> cases[] = {{20, 30, 40, 30, 40},
                                                       {223, 300, 400, 300, 400},
                                                       {16, 130, 240, 30, 40},  // lower right corner
                                                       {-116, 130, 240, 30, 40},
                                                       {16, 30, 240, 30, 240}};
  for (const auto& [typ, xline, yline, width, height] : cases) {  // an older row with a size
    EntryRow row{"Figur1", "x", "F 1", 10, 0, 15, 0, 100, 200, xline, yline, typ};
    EXPECT_EQ(entry_box(row), (EntryBox{100, 200, width, height})) << typ;
    const EntryBox moved{5, 6, width, height};
    set_entry_box(row, moved);
    EXPECT_EQ(entry_box(row), moved) << typ;
  }
}

TEST_F(EntryTest, NamesForMessages) {
  struct Case {
    const char *id, *schrift;
    int typ;
    double size;
    const char* name;
  };
  for (const Case& c : {Case{"Text", "Arial", 203, 10, "Text\n"}, Case{"Text", "Wingdings-B", 0, 10, "Symbol\n"},
                        Case{"Bild", "-", -5, 0, "Bild\n"}, Case{"Linie3", "Arial", 140, -8, "Linie3\n"},
                        Case{"Maßstab", "500", 11, 2.5, "Maßstab 2.5 "},
                        Case{"Plan\x1f"
                             "A1",
                             "Arial", 16, 8, "Planquadrat\n"},
                        Case{"Figur2", "F 1", 22, 8, "Figur2\n"}}) {
    Add({c.id, "x", c.schrift, c.size, 0, 15, 0, 10, 20, 0, 0, c.typ});
    EXPECT_EQ(Entry_Name(), c.name);
  }
}

TEST_F(EntryTest, TheCursorSurvivesErrorsAndDeletedRows) {
  Add(Text("eins"));
  const QString first = rsEntries->Bookmark();
  Add(Text("zwei"));
  rsEntries->SetBookmark(first);
  const auto beyondTheEnd = [] {
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    for (int i = 0; i < 2; ++i) rsEntries->MoveNext();
  };
  EXPECT_THROW(beyondTheEnd(), Error);
  EXPECT_EQ(rsEntries->Bookmark(), first);
  {
    const KeepCurrentRow keep;
    rsEntries->Delete();
  }
  EXPECT_EQ(rsEntries->Text(column::Eintrag), "zwei");
}

TEST_F(EntryTest, HeaderRowKeepsWhatItIsToldAndRepairsTheRest) {
  HeaderRow header = Read_Header();
  EXPECT_EQ(std::tuple(header.ID, header.width, header.printFactor), std::tuple("!Unbekannt", 400, 1.0));
  header = {"!Moor", "/k/KARTE.MDB", "Karte.bmp", 12, 5, 7, 9, 400, 300, 2, 2.345, false};
  Write_Header(header);
  EXPECT_EQ(Read_Header(), header);
  bool repaired = true;
  EntryRow row = header.ToEntry();
  EXPECT_EQ(HeaderRow::FromEntry(row, &repaired), header);
  EXPECT_FALSE(repaired);
  struct Case {
    const char* id;
    int xline, yline, typ;
    bool repaired;
  };
  for (const Case& c : {Case{"Text", 1, 1000, -1, true}, Case{"!Moor", 3, 1000, -1, true},
                        Case{"!Moor", 1, 0, -2, false}, Case{"!Moor", 2, 1000, 4, true}}) {
    row.ID = c.id;
    row.Xline = c.xline;
    row.Yline = c.yline;
    row.Typ = c.typ;
    const HeaderRow read = HeaderRow::FromEntry(row, &repaired);
    EXPECT_EQ(repaired, c.repaired) << c.id << c.xline;
    EXPECT_EQ(read.ID, QString(c.id).startsWith(u'!') ? c.id : "!Unbekannt");
    EXPECT_EQ(std::tuple(read.orientation, read.printFactor), std::tuple(c.xline == 2 ? 2 : 1, 1.0));
    EXPECT_EQ(read.netVisible, c.typ != -2);
  }
  header.tablePath = "/home/" + QString(100, 'a') + "/KARTE.MDB";
  header.width = 40000;
  header.printFactor = 99;
  EXPECT_EQ(header.ToEntry().Eintrag.size(), 79);
  Write_Header(header);
  EXPECT_TRUE(Read_Header().tablePath.endsWith("/KARTE.MDB"));
  EXPECT_EQ(Read_Header().width, 32767);
}

TEST_F(EntryTest, FontFactorLivesInTheSettings) {
  EXPECT_EQ(Read_Font_Factor(), 1.0F);
  Write_Font_Factor(1.25F);
  EXPECT_EQ(Read_Font_Factor(), 1.25F);
  const auto settings = dbEntries->OpenRecordset("Qdata");
  EXPECT_EQ(settings->RecordCount(), 1);
  for (const auto& [nr, ort, factor] :
       {std::tuple{"FSZ", "0,8", 0.8F}, std::tuple{"FSZ", "x", 1.0F}, std::tuple{"Amsel", "2", 1.0F}}) {
    Set_Field(*settings, u"Nr", QString(nr));
    Set_Field(*settings, u"Ort", QString(ort));
    EXPECT_EQ(Read_Font_Factor(), factor) << nr << ort;
  }
  dbEntries->DropTable("Qdata");
  EXPECT_EQ(Read_Font_Factor(), 1.0F);
}

// Vertex tables ------------------------------------------------------------------------------------------------------

class VertexTest : public EntryTest {
 protected:
  static void Add_Line(const QString& id, const std::vector<QPoint>& points = {{1, 2}, {3, 4}}) {
    Write_Vertices(EntryId::Parse(id).TableName(), points);
    Add(Entry(id, 4));
  }
};

TEST_F(VertexTest, ATableEndsAtTheStopMarkAndIsWrittenWholeOrNotAtAll) {
  const std::vector<QPoint> points = {{0, 0}, {-15000, 5}};
  Write_Vertices("Flaeche7", {points[0], points[1], {stopMark, 0}, {9, 9}});
  EXPECT_EQ(Load_Vertices("Flaeche7"), points);
  EXPECT_TRUE(Load_Vertices("Flaeche8").empty());
  EXPECT_THROW(Write_Vertices("Flaeche7", {{5, 5}, {40000, 0}}), Error);
  EXPECT_EQ(Load_Vertices("Flaeche7"), points);
  Write_Vertices("Flaeche7", {{1, 1}});  // anew
  EXPECT_EQ(Load_Vertices("Flaeche7"), (std::vector<QPoint>{{1, 1}}));
  EXPECT_FALSE(Drop_Vertex_Table("MapData"));
  EXPECT_FALSE(Drop_Vertex_Table("Qdata"));
  dbEntries->Execute("INSERT INTO Flaeche7 VALUES (5, -2147483648), (2147483647, 5), (-2147483648, 1)");
  EXPECT_EQ(Load_Vertices("Flaeche7"), (std::vector<QPoint>{{1, 1}, {5, -32768}, {32767, 5}}))
      << "the last one ends it";
  EXPECT_TRUE(Drop_Vertex_Table("flaeche7"));
}

TEST_F(VertexTest, TheLowestFreeNumberIsTaken) {
  EXPECT_EQ(New_Poly_Table("Linie"), "Linie0");
  Add_Line("Linie0");
  Add_Line("-Linie1 - P1101L5.0B2.5");
  Add_Line("Linie3>Flaeche0");
  EXPECT_EQ(New_Poly_Table("Linie"), "Linie2");
  EXPECT_EQ(New_Poly_Table("Flaeche"), "Flaeche0");  // counted per kind
  dbEntries->CreateTable(Vertex_Def("Linie2"));      // left empty
  Write_Vertices("Linie4", {{1, 1}});                // less than two points
  dbEntries->CreateTable({"Linien", {{"xf", FieldType::Integer, 0}, {"yf", FieldType::Integer, 0}}});
  EXPECT_EQ(New_Poly_Table("Linie"), "Linie2");
  EXPECT_FALSE(dbEntries->HasTable("Linie2") || dbEntries->HasTable("Linie4"));
  EXPECT_TRUE(dbEntries->HasTable("Linien"));  // no number: not ours to drop
  Add_Line("Linie2", {{1, 1}});                // just begun, the current row
  EXPECT_EQ(New_Poly_Table("Linie"), "Linie4");
  EXPECT_TRUE(dbEntries->HasTable("Linie2"));
  dbEntries->DropTable("Linie2");
  Add_Line("Linie4");
  EXPECT_EQ(New_Poly_Table("Linie"), "Linie5");  // else the row "Linie2" would get another's shape
  With_Box("Falscher Id-Tabellen-Name", [] { EXPECT_EQ(New_Poly_Table("Kreis"), ""); });
}

TEST_F(VertexTest, FigureNumbersAndTheNameOfTheCurrentTable) {
  EXPECT_EQ(Next_Figure_ID(), "Figur1");
  for (const auto& [id, typ] : {std::pair{"Figur3", 20}, std::pair{"-Figur11", -223}, std::pair{"Figur40", 0}})
    Add(Entry(id, typ));
  Write_Vertices("Figur12", {{0, 0}, {1, 1}});  // left by a deleted figure
  EXPECT_EQ(Next_Figure_ID(), "Figur12");
  EXPECT_FALSE(dbEntries->HasTable("Figur12"));
  Add(Entry("Figur", 23));
  const Error error = Raised([] { Next_Figure_ID(); });
  EXPECT_EQ(std::tie(error.number, error.text), std::tuple(5000, "Keine Nummer \nError: 5000"));
}
