#include "tools/assign.h"

#include "edit/marks.h"
#include "support/bulk_fixture.h"

class Assign : public BulkTest {
 protected:
  void SetUp() override {
    BulkTest::SetUp();
    text = Add_Text("Fund");
    other = Add(Make(0, "Text<4", "Fund 2", 5, 60));
    area = Add_Polygon("Flaeche3", {{1, 1}, {50, 50}, {1, 90}});
    line = Add(Make(4, "-Linie12 - P0110L1.0B1.0>Flaeche1", "", 1, 1));
  }
  static QString Ids(std::initializer_list<QString> keys) {
    QStringList ids;
    for (const QString& key : keys) ids << Row(key).ID;
    return ids.join(u' ');
  }
  QString text, other, area, line;
};

TEST_F(Assign, MarkedRowsTakeTheAreaOrLineInHand) {
  Mark_Rows({text, other, area});
  Go(area);
  Assign_Entries(AssignKind::MarkedToArea);
  EXPECT_EQ(Ids({text, other, area}), "Text>Flaeche3 Text>Flaeche3<4 Flaeche3") << "not to itself";
  Go(line);
  Assign_Entries(AssignKind::MarkedToLine);
  EXPECT_EQ(Ids({text, area}), "Text>Linie12 Flaeche3>Linie12") << "one assignment, by the bare name";
  Assign_Entries(AssignKind::None);
  EXPECT_EQ(Row(other).ID, QString("Text<4"));
  EXPECT_EQ(Row(line).ID, QString("-Linie12 - P0110L1.0B1.0>Flaeche1")) << "not marked";
  Unmark_All();
  Go(line);
  Assign_Entries(AssignKind::None);
  EXPECT_EQ(Row(line).ID, QString("-Linie12 - P0110L1.0B1.0"));
  const QString full = Add(Make(100, QString(75, 'x'), "", 1, 1));
  MessageScript script{{"Fläche oder Linie"}, {"84 Zeichen"}};
  Assign_Entries(AssignKind::MarkedToArea);
  Go(area);
  Assign_Entries(AssignKind::MarkedToArea);
  EXPECT_EQ(Row(full).ID, QString(75, 'x'));
}

TEST_F(Assign, ObjectWaitsForTheClickOnItsTarget) {
  Map_Redraw();
  ASSERT_TRUE(Take_Entry(text));
  Assign_Entries(AssignKind::ObjectToArea);
  EXPECT_EQ(InfoBar.Panel[0], QString("Zuordnen: Bitte klicken Sie auf die Fläche."));
  Click({700, 500});  // nothing lies there: it waits on
  EXPECT_EQ(Map_Pointer(), MapPointer::Cross);
  Click({20, 50});
  EXPECT_EQ(Map_Tool_In_Use(), nullptr);
  EXPECT_EQ(Row(text).ID, QString("Text>Flaeche3"));
  EXPECT_EQ(Map.InHand, text);
  MessageScript script;
  Assign_Entries(AssignKind::ObjectToLine);
  script.Expect("keine Linie");
  Click({20, 50});
  EXPECT_EQ(Map_Tool_In_Use(), nullptr);
  EXPECT_EQ(Row(text).ID, QString("Text>Flaeche3"));
  Assign_Entries(AssignKind::ObjectToArea);
  ASSERT_TRUE(Take_Entry(other));
  EXPECT_EQ(Map_Tool_In_Use(), nullptr) << "it waited for another entry";
}
