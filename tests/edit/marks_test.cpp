#include "edit/marks.h"

#include "edit/move.h"
#include "edit/scale_edit.h"
#include "edit/sql_query.h"
#include "edit/visibility.h"
#include "hand/group.h"
#include "objects/north_arrow.h"
#include "support/bulk_fixture.h"

namespace {

class Marks : public BulkTest {
 protected:
  void SetUp() override {
    BulkTest::SetUp();
    for (int i = 0; i < 4; ++i) keys.append(Add_Text(QString("Text %1").arg(i), 50 * i, 30 * i));
  }
  void Mark(int i) {
    Go(keys[i]);
    Mark_Obj();
  }
  QList<int> Types() {
    QList<int> types;
    for (const QString& key : keys) types.append(Typ(key));
    return types;
  }
  QStringList keys;
};

TEST_F(Marks, TheOneMarkedLastIsTheOnlyAnchor) {
  Mark(2);
  Mark(0);
  Mark(3);
  EXPECT_EQ(Types(), QList<int>({100, 0, 100, 200}));
  EXPECT_EQ(Map.MarkCount, 3);
  Mark(3);  // taken back: the one marked before it, though another one lies above
  EXPECT_EQ(Types(), QList<int>({200, 0, 100, 0}));
  Map.MarkOrder.clear();  // as after loading: the last marked row of the table follows
  Mark(1);
  Mark(1);
  EXPECT_EQ(Types(), QList<int>({200, 0, 100, 0}));
  Map.MarkOrder.clear();
  Mark(0);
  EXPECT_EQ(Types(), QList<int>({0, 0, 200, 0}));
  rsEntries->MoveFirst();
  Map.CurBookmark = rsEntries->Bookmark();
  for (const auto change : {Mark_Obj, Hide_Current, Deactivate_Current}) change();
  EXPECT_EQ(Row(Header_Key()).Typ, -1);
  EXPECT_TRUE(Row(Header_Key()).ID.startsWith('!'));
}

TEST_F(Marks, WhateverDeletesTheAnchorTheOneMarkedBeforeItFollows) {
  const auto anchor = [this] {
    return keys.indexOf(*std::find_if(keys.begin(), keys.end(),
                                      [](const QString& key) { return rsEntries->HasRow(key) && Typ(key) >= 200; }));
  };
  const std::function<void(qint64)> ways[] = {[](qint64 key) { Go(QString::number(key)), Delete_Entry(true); },
                                              [](qint64 key) { Delete_Rows({key}); },
                                              [](qint64) {
                                                SqlState sql;
                                                Apply_Sql(sql, QStringLiteral("DELETE FROM MapData WHERE Typ >= 200"));
                                              }};
  for (const auto& way : ways) {
    while (keys.size() < 4) keys.append(Add_Text("neu", 5, 5));
    Unmark_All();
    for (const int i : {1, 0, 3}) Mark(i);
    MessageScript script(MsgAnswer::Yes);
    way(keys[3].toLongLong());
    keys.removeLast();
    EXPECT_EQ(anchor(), 0) << "not the last one of the table";
  }
  // Kinds that make room for a new one of their own.
  for (const int typ : {11, -12}) {
    const QString own = Add(Make(typ, typ == 11 ? "Maßstab" : "Np", " m", 10, 10, 60, 20));
    Mark_Rows({own});
    EXPECT_EQ(std::abs(Typ(own)), 200 + std::abs(typ));
    if (typ == 11)
      Add_Scale_Row({.ScaleValue = 5, .ScaleLenPx = 100, .at = {}});
    else
      Add_North_Arrow({50, 50});
    EXPECT_EQ(anchor(), 0) << typ;
  }
}

TEST_F(Marks, WhatCannotBeSeenStaysAsItIs) {
  const QString hidden = Add(Make(-101, "Text", "versteckt", 5, 5)), anchor = Add(Make(-201, "Text", "Anker", 7, 7));
  Mark_Rows({hidden, anchor});
  EXPECT_EQ(Typ(anchor), -201);
  Mark_Rows({keys[0], keys[1]});
  const QString stay = QStringLiteral("2 ausgeblendete Einträge bleiben, wie sie sind.");
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Justieren", [] { Justify(JustifyMode::Top); }},
      {"Gruppe", [] { Group_Marked(); }},
      {"Aktivität", [] { Deactivate_Marked(); }},
      {"Verschieben", [] { Move_Entries({.dx = 5, .dy = 5, .markedOnly = true}); }}};
  for (const auto& [name, way] : ways) {
    const EntryRow before = Row(hidden), shown = Row(keys[0]);
    InfoBar.Panel[0].clear();
    way();
    EXPECT_EQ(Row(hidden), before) << name;
    EXPECT_NE(Row(keys[0]), shown) << name;
    EXPECT_TRUE(InfoBar.Panel[0].endsWith(stay)) << name << InfoBar.Panel[0].toStdString();
  }
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    MessageScript script("2 markierten", answer);
    Go(keys[0]);
    Delete_Marked();
    EXPECT_EQ(script.Seen()[0].defaultButton, MsgDefault::Second);
    EXPECT_TRUE(script.Seen()[0].text.contains(stay));
    EXPECT_EQ(rsEntries->HasRow(keys[0]), answer == MsgAnswer::No);
  }
  EXPECT_FALSE(rsEntries->HasRow(keys[1]));
  EXPECT_TRUE(rsEntries->HasRow(hidden) && rsEntries->HasRow(anchor) && rsEntries->HasRow(Map.CurBookmark));
}

TEST_F(Marks, EachRowIsMarkedOnceAndOnlyMarkedOnesAreWritten) {
  const QString hidden = Add(Make(-103, "Text", "versteckt", 5, 5));
  Mark_Rows({keys[1], keys[1], Header_Key(), QStringLiteral("99")});
  EXPECT_EQ(Types(), QList<int>({0, 200, 0, 0}));
  const qint64 before = dbEntries->ChangeCount();
  Unmark_All();
  EXPECT_EQ(dbEntries->ChangeCount() - before, 2);
  EXPECT_EQ(Typ(hidden), -3);
  EXPECT_EQ(Types(), QList<int>({0, 0, 0, 0}));
}

TEST_F(Marks, GroupsAreNumberedAndDissolved) {
  const auto group = [](const QStringList& members) {
    Mark_Rows(members);
    Group_Marked();
  };
  group({keys[0], keys[1]});
  Unmark_All();
  group({keys[2], keys[3]});
  EXPECT_EQ(std::tuple(Row(keys[0]).ID, Row(keys[3]).ID), std::tuple("Text<1", "Text<2"));
  EXPECT_EQ(Group_Of(keys[1]), QStringList({keys[0], keys[1]}));
  group({keys[0]});  // marks of two groups make a new one
  EXPECT_EQ(Group_Of(keys[0]), QStringList({keys[0], keys[2], keys[3]}));
  EXPECT_EQ(Group_Of(keys[1]), QStringList({keys[1]}));
  Group_Marked();
  EXPECT_EQ(Group_Of(keys[0]), QStringList({keys[0]}));
  EXPECT_EQ(std::tuple(Row(keys[3]).ID, Row(keys[1]).ID), std::tuple("Text", "Text<1"));
  Add(Make(100, QString(79, 'x'), "lang", 1, 1));
  With_Box("81 Zeichen", Group_Marked);
  With_Box("80 Zeichen", Deactivate_Marked);
  EXPECT_EQ(Row(keys[0]).ID, "Text");
}

TEST_F(Marks, JustifyAlignsEdgesWithTheOneMarkedLast) {
  keys.append(Add(Make(1, "Text", "mit Fußpunkt", 300, 100, 350, 180)));
  keys.append(Add(Make(20, "Figur1", "", 100, 200, 60, 40)));
  Mark_Rows({keys[1], keys[4], keys[5], keys[0]});
  Go(keys[0]);
  Set_Field(column::Xmap, qint64{400});
  Justify(JustifyMode::Left);
  EXPECT_EQ(At(keys[1]), QPoint(400, 30));
  EXPECT_EQ(std::pair(Row(keys[4]).Xmap, Row(keys[4]).Xline), std::pair(400, 350)) << "the foot point stays";
  EXPECT_EQ(Row(keys[2]).Xmap, 100) << "not marked";
  Justify(JustifyMode::Right);
  Justify(JustifyMode::Bottom);
  Map_Redraw();
  // What is drawn is what counts: all boxes end in the same column and line.
  QList<int> right, bottom;
  for (int i = 1; i <= Map.EntryRegions.Count(); ++i) {
    const EntryRegion& region = Map.EntryRegions.Row(i);
    if (region.kind != 0 || Typ(region.Bookmark()) < 100) continue;
    right.append(qRound(region.bounds.right()));
    bottom.append(qRound(region.bounds.bottom()));
  }
  EXPECT_EQ(right.size(), 4);
  EXPECT_EQ(right.count(right[0]), 4);
  EXPECT_EQ(bottom.count(bottom[0]), 4);
}

TEST_F(Marks, EqualSizesShapesOnly) {
  const QString free = Add_Polygon("Figur3", {{0, 0}, {10, 0}, {10, 20}}, 24);
  const QString square = Add(Make(21, "Figur1", "", 100, 200, 60, 60)),
                plan = Add(Make(16, "Plan\x1fX", "", 10, 20, 40, 50));
  const QString anchor = Add(Make(20, "Figur2", "", 300, 300, 80, 30));
  Mark_Rows({keys[0], free, square, plan, anchor});
  Justify(JustifyMode::Equal);
  EXPECT_EQ(entry_box(Row(square)), (EntryBox{100, 200, 30, 30}));
  EXPECT_EQ(entry_box(Row(plan)), (EntryBox{10, 20, 80, 30}));
  EXPECT_EQ(Load_Vertices("Figur3"), (std::vector<QPoint>{{0, 0}, {80, 0}, {80, 30}}));
  EXPECT_EQ(Row(keys[0]).Xmap, 0);
  Mark_Rows({keys[0]});
  MessageScript script("keine Figur");
  const QStringList before = Whole_Table();
  Justify(JustifyMode::Equal);
  EXPECT_EQ(Whole_Table(), before);
}

}  // namespace
