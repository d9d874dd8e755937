#include "store/entry_edit.h"

#include "state/events.h"
#include "state/mdi_state.h"
#include "store/vertex_table.h"
#include "support/table_fixture.h"

class EntryEditTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
    Map.Zoom = 2.0F;
    Map.ViewLeft = 100;
    Map.ViewTop = 50;
    CurVG = 4;
    CurHG = 15;
    CurRA = 215;
    events.RedrawWanted.Connect([this] { ++redraws; });
  }
  static void Edit_Box(const QString& tag, double size = 12) {
    Map.Text2.Tag = tag;
    Map.Text2.FontSize = size;
  }
  static EntryRow Row() { return Read_Entry(*rsEntries); }
  static void Activate(const EntryRow& row) {
    Add(row);
    Edit_Box("Change");
  }
  int redraws = 0;
};

TEST_F(EntryEditTest, ANewTextBecomesARow) {
  Edit_Box("Neu");
  Map.Text2.FontBold = Map.Text2.FontTransparent = true;
  EntFont = "Times New Roman";
  EntAngle = 30;
  Menu("mnuReset").Caption = "Rückgängig: Ersetzen";
  ASSERT_TRUE(Save_Text_Entry(10, 20, "Bergahorn"));
  EXPECT_EQ(Row(), (EntryRow{"Text", "Bergahorn", "Times New Roman-B-T<30", 12, 4, 15, 215, 120, 90, 0, 0, 0}));
  EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
  EXPECT_EQ(Map.Text2.Tag, "Old");
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig");
  EXPECT_FALSE(Save_Text_Entry(10, 20, "noch einmal"));  // nothing is in the box any more
  EXPECT_EQ(Entry_Count(), 1);
}

TEST_F(EntryEditTest, EmptyTextsAndBlanks) {
  struct Case {
    const char* tag;
    bool trim;
    QString typed, stored;
  };
  const QString mark(QChar(160));
  for (const Case& c :
       {Case{"Neu", false, "  ", mark}, Case{"Neu", false, mark, mark}, Case{"Neu", false, mark + "Moor", "Moor"},
        Case{"Neu", false, " Moor ", " Moor "}, Case{"Neu", true, " Großes Moor ", "Großes Moor"},
        Case{"Change", true, "", ""}, Case{"Change", false, mark + "x", "x"}}) {
    Add(Text("vorher"));
    frmMDI.trimInput = c.trim;
    Edit_Box(c.tag);
    ASSERT_TRUE(Save_Text_Entry(0, 0, c.typed));
    EXPECT_EQ(Row().Eintrag, c.stored);
  }
}

TEST_F(EntryEditTest, ATooLongTextIsRefusedNotCut) {
  for (const char* tag : {"Neu", "Change"}) {
    Add(Text("vorher"));
    Edit_Box(tag);
    MessageScript script("80 Zeichen");
    const int count = Entry_Count();
    EXPECT_FALSE(Save_Text_Entry(0, 0, QString(80, 'x')));
    EXPECT_EQ(Row().Eintrag, "vorher");
    EXPECT_EQ(Entry_Count(), count);
    EXPECT_EQ(Map.Text2.Tag, tag);  // the editor stays open
    ASSERT_TRUE(Save_Text_Entry(0, 0, QString(79, QChar(0xFC))));
    EXPECT_EQ(Row().Eintrag, QString(79, QChar(0xFC)));
  }
}

TEST_F(EntryEditTest, AChangeRespectsTheKindOfTheRow) {
  struct Case {
    EntryRow before;
    bool transparent;
    QString schrift;
    double size;
    int hg;
  };
  EntryRow text = Text("alt"), foot = Entry("Text", 203), hiddenLabel = Entry("Linie0", 40), figure = Entry("Text", 22);
  const EntryRow line = Entry("Linie0", 104);
  text.Schrift = foot.Schrift = "Courier New-I-C161<45";
  hiddenLabel.Groesse = -8;
  figure.Schrift = "F-3<30";
  for (const Case& c : {Case{text, true, "Courier New-B-T<45", 12, 2}, Case{foot, true, "Courier New-B-T<45", 12, 15},
                        Case{line, true, "Arial-B-T", 12, 15}, Case{line, false, "Arial-B", 12, 2},
                        Case{hiddenLabel, false, "Arial-B", -8, 2}, Case{figure, true, "F-3<30", 12, 2}}) {
    Activate(c.before);
    CurHG = 2;
    EntCharset = 0;
    Map.Text2.FontBold = true;
    Map.Text2.FontTransparent = c.transparent;
    ASSERT_TRUE(Save_Text_Entry(0, 0, "neu"));
    const EntryRow expected{c.before.ID, "neu", c.schrift, c.size, 4, c.hg, 215, 100, 50, 0, 0, c.before.Typ};
    EXPECT_EQ(Row(), expected) << c.schrift;
  }
}

TEST_F(EntryEditTest, ScaleBarHiddenRowsAndHeaderAreNotWritten) {
  const EntryRow scale{"Maßstab", " km", "2", 2, 4, 1, 215, 10, 20, 0, 0, 11};
  for (const EntryRow& row : {scale, Entry("Text", -1), Read_Header().ToEntry()}) {
    if (row.ID.startsWith('!')) {
      rsEntries->MoveFirst();
      Map.CurBookmark = rsEntries->Bookmark();
      Edit_Box("Change");
    } else {
      Activate(row);
    }
    const bool isScale = row == scale;
    EXPECT_EQ(Save_Text_Entry(0, 0, "Unsinn"), isScale) << row.ID;
    EXPECT_EQ(Row(), row);
  }
}

TEST_F(EntryEditTest, BlackOnBlackNeverHappens) {
  CurVG = CurHG = 0;
  for (const bool option : {true, false}) {
    frmMDI.tableColors = option;
    Edit_Box("Neu");
    ASSERT_TRUE(Save_Text_Entry(0, 0, "x"));
    EXPECT_EQ(Row().HG, option ? 14 : 0);
  }
}

TEST_F(EntryEditTest, DeletingAsksAndTakesTheVertexTableAlong) {
  Add(Text("bleibt"));
  Write_Vertices("Flaeche0", {{0, 0}, {5, 5}, {5, 0}});
  Add(Entry("Flaeche0 - P1101L5.0B2.5", 240, "Feuchtwiese"));
  MessageScript script("Feuchtwiese\n\nSoll dieser Eintrag gelöscht werden?", MsgAnswer::No);
  EXPECT_FALSE(Delete_Entry());
  EXPECT_EQ(Entry_Count(), 2);
  EXPECT_TRUE(dbEntries->HasTable("Flaeche0"));
  EXPECT_EQ(script.Seen().back().defaultButton, MsgDefault::Second);
  script.Expect("Flaeche0 - P1101L5.0B2.5\nFeuchtwiese", MsgAnswer::Yes);
  Tbl.Tag = "Clean";
  EXPECT_TRUE(Delete_Entry());
  EXPECT_EQ(Texts(), QStringList{"bleibt"});
  EXPECT_FALSE(dbEntries->HasTable("Flaeche0"));
  EXPECT_EQ(Tbl.Tag, "Dirty");
  EXPECT_EQ(Map.CurBookmark, rsEntries->Bookmark());
  EXPECT_EQ(redraws, 1);

  // Two rows share a table: it goes with the second one.
  Write_Vertices("Linie0", {{0, 0}, {5, 5}});
  for (const char* id : {"Linie0", "-Linie0"}) Add(Entry(id, 4, "Bach"));
  for (const bool shared : {true, false}) {
    script.Expect("Bach", MsgAnswer::Yes);
    EXPECT_TRUE(Delete_Entry());
    EXPECT_EQ(dbEntries->HasTable("Linie0"), shared);
  }
}

TEST_F(EntryEditTest, WhatDeletingRefusesAndSpares) {
  MessageScript script("Die Karte enthält noch keine Einträge");
  EXPECT_FALSE(Delete_Entry());
  Add(Text("eins"));
  Map.Text2.Tag = "Neu";
  Map.Text2.Text = "halb getippt";
  EXPECT_FALSE(Delete_Entry());  // only the box is cleared
  EXPECT_EQ(Map.Text2.Text, "");
  Map.CurBookmark = Map.HeaderBookmark;
  EXPECT_FALSE(Delete_Entry());
  EXPECT_EQ(Texts(), QStringList{"eins"});
  Add(Text("Entwurf"));  // an unfinished drawing goes without a question
  EXPECT_TRUE(Delete_Entry());
  EXPECT_EQ(Texts(), QStringList{"eins"});
  EntryRow foot = Entry("Text", 2);
  foot.Xline = 7;
  foot.Yline = 8;
  Add(foot);
  Map.RemoveReferenceOnly = true;
  EXPECT_TRUE(Delete_Entry());
  foot.Xline = foot.Yline = 0;
  EXPECT_EQ(Row(), foot);
  EXPECT_EQ(Entry_Count(), 2);
}

TEST_F(EntryEditTest, FootPointOfTextsOnly) {
  EntryRow text = Entry("2Text>Flaeche1", 0);
  Add(text);
  Set_Foot_Point(30, 40);
  text.ID = "Text>Flaeche1";
  text.Xline = 160;
  text.Yline = 130;
  EXPECT_EQ(Row(), text);
  EXPECT_EQ(Map.imgRfLine.Left, 22);
  EXPECT_EQ(Map.imgRfLine.Top, 32);
  Tbl.Tag = "Clean";
  Set_Foot_Point(30, 40);  // already there
  EXPECT_EQ(Tbl.Tag, "Clean");
  for (const int typ : {4, 140, 11, 20, 16}) {
    Add(Entry("Text", typ));
    Set_Foot_Point(30, 40);
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
