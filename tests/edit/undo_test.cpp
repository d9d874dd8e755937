#include "edit/marks.h"
#include "edit/move.h"
#include "edit/order.h"
#include "edit/search_replace.h"
#include "edit/sql_query.h"
#include "edit/visibility.h"
#include "support/bulk_fixture.h"
#include "tools/assign.h"

namespace {

class Undo : public BulkTest {
 protected:
  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
  void Go_Anywhere() {
    rsEntries->MoveTo(1 + Below(Entry_Count()));
    Map.CurBookmark = rsEntries->Bookmark();
  }
  void Fill() {
    for (int i = 0; i < 6; ++i) {
      Add_Text(QString("Ort %1").arg(i), Below(600), Below(400), i % 4);
      Add(Make(20 + i % 4, QStringLiteral("Figur%1").arg(i + 1), "", Below(600), Below(400), 5 + Below(60),
               5 + Below(60)));
      Add_Polygon(QStringLiteral("Flaeche%1").arg(i), {{Below(300), 10}, {Below(300), 90}, {5, Below(90)}},
                  i % 2 ? 4 : 40);
      Add_Polygon(QStringLiteral("Linie%1").arg(i), {{Below(300), 10}, {Below(300), 90}});
    }
    Add_Polygon("Figur7", {{1, 2}, {50, 60}, {7, 90}}, 24);
    Add(Make(16, "Plan\x1fX", "A1", 10, 20, 60, 80));
    Add(Make(-12, "Np", "Nordpfeil", 10, 80, 10, 20));
  }
  // Single changes, which take no undo point.
  void Prepare() {
    for (int i = Below(6); i >= 0; --i) {
      Go_Anywhere();
      Mark_Obj();
    }
    if (Below(3) == 0) Deactivate_Current();
    if (Below(3) == 0) Hide_Current();
  }
  void Change(int which) {
    Go_Anywhere();
    switch (which) {
      case 0:
        return Justify(static_cast<JustifyMode>(1 + Below(5)));
      case 1:
        return Order_Entry(std::array{1, -1, 10, -10}[static_cast<size_t>(Below(4))]);
      case 2:
        return Below(2) ? Hide_Marked() : Show_All_Hidden();
      case 3:
        return Below(2) ? Deactivate_Marked() : Activate_All_Inactive();
      case 4:
        Move_Entries({static_cast<double>(Below(200) - 100), static_cast<double>(Below(200) - 100), Below(2) == 0});
        return;
      case 5:
        return Delete_Marked();
      case 6:
        while (!EntryId::Parse(rsEntries->Text(column::ID)).IsArea()) Go_Anywhere();
        return Assign_Entries(AssignKind::MarkedToArea);
      case 7:
        return Group_Marked();
      default:
        if (Tbl.HasUserColumns && Below(2)) {
          Remove_Column(rsEntries->Fields().back().name);
        } else {
          Add_Column({QStringLiteral("Spalte %1").arg(Below(100000)), FieldType::Text, 9}, {});
        }
    }
  }
  std::mt19937 random{4711};
};

TEST_F(Undo, EveryChangeOfManyEntriesIsTakenBackWhole) {
  Fill();
  MessageScript script(MsgAnswer::Yes);
  int changed[9] = {};
  for (int round = 0; round < 36; ++round) {
    Prepare();
    const QStringList before = Whole_Table();
    const int which = round % 9;
    Menu("mnuReset").Enabled = false;
    Change(which);
    const bool armed = Menu("mnuReset").Enabled;
    const QStringList after = Whole_Table();
    if (after != before) {
      ++changed[which];
      ASSERT_TRUE(armed) << "change " << which << " in round " << round << " cannot be taken back";
    }
    if (!armed || round % 4 == 3) continue;  // some changes stay, so that the table does not
    Undo_Last();
    ASSERT_EQ(Whole_Table(), before) << "change " << which << " in round " << round;
    EXPECT_FALSE(Menu("mnuReset").Enabled);
    if (Entry_Count() < 15) Fill();
  }
  for (int which = 0; which < 9; ++which) EXPECT_GT(changed[which], 0) << "change " << which;
}

// A stop, nothing to do: the menu must not promise to take back what did not happen, nor forget the last.
TEST_F(Undo, WhatWroteNothingLeavesTheOfferAsItWas) {
  Fill();
  MessageScript script(MsgAnswer::Yes);
  SearchState same;
  same.search = same.replace = QStringList("Eintrag = Ort 1");
  SqlState sql;
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
    work();
    EXPECT_EQ(Menu("mnuReset").Caption, "Rückgängig: Vorher") << name;
    ASSERT_TRUE(Menu("mnuReset").Enabled) << name;
    Undo_Last();
    EXPECT_EQ(Whole_Table().join(u'\n'), before) << name;
  }
}

}  // namespace
