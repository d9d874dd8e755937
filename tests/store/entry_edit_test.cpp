#include "store/entry_edit.h"

class EntryEditTest : public OpenTableTest {
 protected:
  void SetUp() override {
    OpenTableTest::SetUp();
    events.RedrawWanted.Connect([this] { ++redraws; });
    events.ChangedEntriesWanted.Connect([this] { ++redraws; });
  }
  static TypedText Typed(const QString& text) {
    return {.at = {120, 90}, .text = text, .font = {}, .size = 12, .VG = 4, .HG = 15, .RA = 215};
  }
  static EntryRow Row() { return Read_Entry(*rsEntries); }
  int redraws = 0;
};

TEST_F(EntryEditTest, ANewTextBecomesARow) {
  Menu("mnuReset").Caption = "Rückgängig: Ersetzen";
  TypedText typed = Typed("Bergahorn");
  typed.font = {.family = "Times New Roman", .bold = true, .transparent = true, .angle = 30};
  ASSERT_TRUE(Save_Text_Entry(typed, TextRow::New));
  EXPECT_EQ(Row(), (EntryRow{"Text", "Bergahorn", "Times New Roman-B-T<30", 12, 4, 15, 215, 120, 90, 0, 0, 0}));
  EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig");
  EXPECT_EQ(Entry_Count(), 1);
  typed.at.setX(40000);
  EXPECT_EQ(Error_Of([&] { Save_Text_Entry(typed, TextRow::Current); }), errors::overflow);
  EXPECT_FALSE(rsEntries->Editing());
}

TEST_F(EntryEditTest, EmptyTextsAndBlanks) {
  constexpr TextRow fresh = TextRow::New, current = TextRow::Current;
  const QString mark(QChar(160));
  const std::tuple<TextRow, bool, QString, QString> cases[] = {{fresh, false, "  ", mark},
                                                               {fresh, false, mark, mark},
                                                               {fresh, false, mark + "Moor", "Moor"},
                                                               {fresh, false, " Moor ", " Moor "},
                                                               {fresh, true, " Großes Moor ", "Großes Moor"},
                                                               {current, true, "", ""},
                                                               {current, false, mark + "x", "x"}};
  for (const auto& [where, trim, typed, stored] : cases) {
    Add(Text("vorher"));
    frmMDI.trimInput = trim;
    ASSERT_TRUE(Save_Text_Entry(Typed(typed), where));
    EXPECT_EQ(Row().Eintrag, stored);
  }
}

TEST_F(EntryEditTest, AChangeRespectsTheKindOfTheRow) {
  EntryRow text = Text("alt"), foot = Entry("Text", 203), hiddenLabel = Entry("Linie0", 40), figure = Entry("Text", 22);
  const EntryRow line = Entry("Linie0", 104);
  text.Schrift = foot.Schrift = "Courier New-I-C161<45";
  hiddenLabel.Groesse = -8;
  figure.Schrift = "F-3<30";
  const std::tuple<EntryRow, bool, QString, double, int> cases[] = {
      {text, true, "Courier New-B-T<45", 12, 2}, {foot, true, "Courier New-B-T<45", 12, 15},
      {line, true, "Arial-B-T", 12, 15},         {line, false, "Arial-B", 12, 2},
      {hiddenLabel, false, "Arial-B", -8, 2},    {figure, true, "F-3<30", 12, 2}};
  for (const auto& [before, transparent, schrift, size, hg] : cases) {
    Add(before);
    TypedText typed = Typed("neu");
    typed.HG = 2;
    typed.font = {.family = "Symbol", .bold = true, .transparent = transparent, .angle = 10};
    ASSERT_TRUE(Save_Text_Entry(typed, TextRow::Current));
    const EntryRow expected{before.ID, "neu", schrift, size, 4, hg, 215, 120, 90, 0, 0, before.Typ};
    EXPECT_EQ(Row(), expected) << schrift;
  }
  const EntryRow scale{"Maßstab", " km", "2", 2, 4, 1, 215, 10, 20, 0, 0, 11};
  for (const EntryRow& row : {scale, Entry("Text", -1), Read_Header().ToEntry()}) {
    row.ID.startsWith('!') ? Go_To(0) : Add(row);
    EXPECT_EQ(Save_Text_Entry(Typed("Unsinn"), TextRow::Current), row == scale) << row.ID;
    EXPECT_EQ(Row(), row);
  }
}

TEST_F(EntryEditTest, BlackOnBlackNeverHappens) {
  TypedText typed = Typed("x");
  typed.VG = typed.HG = 0;
  for (const bool option : {true, false}) {
    frmMDI.tableColors = option;
    ASSERT_TRUE(Save_Text_Entry(typed, TextRow::New));
    EXPECT_EQ(Row().HG, option ? 14 : 0);
  }
}

TEST_F(EntryEditTest, DeletingAsksAndSparesTheHeader) {
  MessageScript script("Die Karte enthält noch keine Einträge");
  EXPECT_FALSE(Delete_Entry());
  Add(Text("bleibt"));
  Go_To(0);
  EXPECT_FALSE(Delete_Entry());
  Add(Entry("Flaeche0 - P1101L5.0B2.5", 240, "Feuchtwiese"));
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    script.Expect("Flaeche0 - P1101L5.0B2.5\nFeuchtwiese\n\nSoll dieser Eintrag gelöscht werden?", answer);
    EXPECT_EQ(Delete_Entry(), answer == MsgAnswer::Yes);
  }
  EXPECT_EQ(script.Seen().back().defaultButton, MsgDefault::Second);
  EXPECT_EQ(std::tuple(Map.CurBookmark, redraws), std::tuple(rsEntries->Bookmark(), 1));
  Add(Text("Entwurf"));  // an unfinished drawing goes without a question
  EXPECT_TRUE(Delete_Entry());
  EXPECT_EQ(Texts(), QStringList{"bleibt"});
}

TEST_F(EntryEditTest, FootPointOfTextsOnly) {
  EntryRow text = Entry("2Text>Flaeche1", 0);
  Add(text);
  Set_Foot_Point({160, 130});
  text.ID = "Text>Flaeche1";
  text.Xline = 160;
  text.Yline = 130;
  EXPECT_EQ(Row(), text);
  Tbl.Tag = TableTag::Clean;
  Set_Foot_Point({160, 130});  // already there
  EXPECT_EQ(Tbl.Tag, TableTag::Clean);
  for (const int typ : {4, 140, 11, 20, 16}) {
    Add(Entry("Text", typ));
    Set_Foot_Point({160, 130});
    EXPECT_EQ(Row(), Entry("Text", typ));
  }
}

TEST_F(EntryEditTest, RepairLeavesSoundRowsAloneAndPutsBadOnesRight) {
  Add(Text("gut"));
  EXPECT_FALSE(Repair_Row());
  dbEntries->Execute(
      "UPDATE MapData SET ID=' Text ', Schrift='', Größe='riesig', VG=77, HG='grün', RA=-5, Xmap=-3, Ymap='12', "
      "Xline=99999, Typ=250 WHERE Eintrag='gut'");
  rsEntries->Requery();
  rsEntries->MoveLast();
  EXPECT_TRUE(Repair_Row());
  EXPECT_EQ(Row(), (EntryRow{"Text", "gut", "Arial", 10, 0, 15, 0, 0, 12, 0, 0, 0}));
  EXPECT_FALSE(Repair_Row());
}
