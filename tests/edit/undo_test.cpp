#include "edit/marks.h"
#include "edit/move.h"
#include "edit/order.h"
#include "edit/search_replace.h"
#include "edit/sql_query.h"
#include "edit/visibility.h"
#include "support/bulk_fixture.h"
#include "tools/assign.h"

namespace {

// Rows of every kind, all but the last two marked, an area current.
class Undo : public BulkTest {
 protected:
  void SetUp() override {
    BulkTest::SetUp();
    QStringList keys;
    for (int i = 0; i < 3; ++i) {
      keys << Add_Text(u"Ort %1"_s.arg(i), 200 * i, 90, i % 4);
      keys << Add(Make(20 + i, u"Figur%1"_s.arg(i + 1), "", 300, 70 * i, 5 + 20 * i, 65));
      keys << Add_Polygon(u"Linie%1"_s.arg(i), {{30, 10}, {300, 90 * i}});
    }
    keys << Add_Polygon("Figur7", {{1, 2}, {50, 60}, {7, 90}}, 24) << Add(Make(16, "Plan\x1fX", "A1", 10, 20, 60, 80))
         << Add(Make(-12, "Np", "Nordpfeil", 10, 80, 10, 20))
         << Add_Polygon("Flaeche1", {{9, 9}, {90, 9}, {9, 90}}, 40);
    Add_Text("versteckt", 5, 5, -1);
    Add(Make(0, "-Text", "inaktiv", 9, 9));
    Mark_Rows(keys);
    Go(keys.back());
  }
};

TEST_F(Undo, EveryChangeOfManyEntriesIsTakenBackWhole) {
  const std::pair<const char*, std::function<void()>> changes[] = {
      {"justified", [] { Justify(JustifyMode::Left); }},
      {"in order", [] { Order_Entry(-10); }},
      {"hidden", Hide_Marked},
      {"shown", Show_All_Hidden},
      {"put to sleep", Deactivate_Marked},
      {"woken", Activate_All_Inactive},
      {"moved", [] { Move_Entries({.dx = 40, .dy = -3}); }},
      {"assigned", [] { Assign_Entries(AssignKind::MarkedToArea); }},
      {"grouped", Group_Marked},
      {"a column",
       [] {
         Add_Column({u"Finder"_s, FieldType::Text, 9}, {});
       }},
      {"deleted", Delete_Marked}};
  MessageScript script(MsgAnswer::Yes);
  for (const auto& [name, change] : changes) {
    const QString current = rsEntries->Bookmark();
    const QStringList before = Whole_Table();
    Menu("mnuReset").Enabled = false;
    change();
    EXPECT_NE(Whole_Table(), before) << name;
    ASSERT_TRUE(Menu("mnuReset").Enabled) << name;
    Undo_Last();
    ASSERT_EQ(Whole_Table(), before) << name;
    EXPECT_FALSE(Menu("mnuReset").Enabled) << name;
    Go(current);
  }
  ASSERT_TRUE(Add_Column({u"Finder"_s, FieldType::Text, 9}, {}));
  const QStringList before = Whole_Table();
  ASSERT_TRUE(Remove_Column(u"Finder"_s));
  Undo_Last();
  EXPECT_EQ(Whole_Table(), before);
}

// A stop, nothing to do: the menu must not promise to take back what did not happen, nor forget the last.
TEST_F(Undo, WhatWroteNothingLeavesTheOfferAsItWas) {
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
