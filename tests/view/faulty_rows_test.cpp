#include "view/faulty_rows.h"

#include "support/hand_fixture.h"

namespace {

const QString question = QStringLiteral("Soll dieser Eintrag gelöscht werden?");

// Rows whose numbers are beyond what can be drawn.
class FaultyRowsTest : public HandTest {
 protected:
  static void Append_Faulty(const QString& id, int typ, int count = 1) {
    for (int i = 0; i < count; ++i) Append_Entry({id, "beschädigt", "Arial", 10, 0, 0, 0, 0, 0, 0, 0, typ});
    dbEntries->Execute(QStringLiteral("UPDATE MapData SET %1 = 99999 WHERE Eintrag = 'beschädigt' AND Typ = %2")
                           .arg(typ == 20 ? QStringLiteral("Xline") : QStringLiteral("Xmap"), QString::number(typ)));
    rsEntries->Requery();
  }
  static size_t Boxes_Of_A_Redraw(MsgAnswer answer) {
    const MessageScript script(answer);
    Map_Redraw();
    return script.Seen().size();
  }
};

TEST_F(FaultyRowsTest, WhatWasLeftIsAskedAgainOnlyWhenTheMapIsOpenedAnew) {
  Append_Faulty("Figur1", 20, 2);
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::No), 2U);
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::Yes), 0U);
  Map_Picture_With_Entries();
  // Another row is another question, the same row under another content as well.
  dbEntries->Execute("UPDATE MapData SET RA = 3 WHERE rowid = (SELECT max(rowid) FROM MapData)");
  rsEntries->Requery();
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::No), 1U);
  {
    const MessageScript script(MsgAnswer::No);
    Reload_Map();
    EXPECT_EQ(std::count_if(script.Seen().begin(), script.Seen().end(),
                            [](const MsgRequest& box) { return box.text.contains(question); }),
              2);
  }
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::Yes), 0U);
  EXPECT_EQ(Entry_Count(), 2);
}

TEST_F(FaultyRowsTest, OneAnswerServesForAll) {
  Append_Faulty("Flaeche1", 4);
  Write_Vertices("Flaeche1", {{0, 0}, {9, 0}, {9, 9}});
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::Yes), 1U);
  EXPECT_FALSE(dbEntries->HasTable("Flaeche1"));
  EXPECT_TRUE(Table_Is_Changed());
  Append_Faulty("Figur1", 20, 500);
  Append_Faulty("Flaeche0", 40);
  Write_Vertices("Flaeche0", {{0, 0}, {9, 0}, {9, 9}});
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::NoAll), 1U);
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::NoAll), 0U);
  EXPECT_EQ(Entry_Count(), 501);
  Map.LeftFaulty.clear();
  EXPECT_EQ(Boxes_Of_A_Redraw(MsgAnswer::YesAll), 1U);
  EXPECT_EQ(Entry_Count(), 0);
  EXPECT_FALSE(dbEntries->HasTable("Flaeche0"));
  EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Einträge löschen");
  MessageScript script;
  script.Expect(question, MsgAnswer::NoAll).Expect("wieder hergestellt");
  Undo_Last();
  EXPECT_EQ(Entry_Count(), 501);
  EXPECT_EQ(Load_Vertices("Flaeche0").size(), 3U);
}

}  // namespace
