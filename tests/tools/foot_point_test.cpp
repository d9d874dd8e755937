#include "tools/foot_point.h"

#include "hand/hand_texts.h"
#include "support/hand_fixture.h"
#include "support/looks.h"

class FootPointTest : public HandTest {
 protected:
  static QPoint Foot(const QString& bookmark) { return {Row(bookmark).Xline, Row(bookmark).Yline}; }
};

TEST_F(FootPointTest, IsSetByAClickOrADragAndStaysInHand) {
  for (const bool drag : {false, true}) {
    const QString text = Take(Text_Row("Elster", 100, drag ? 300 : 100));
    Move_Foot_Point();
    EXPECT_TRUE(Map.imgRfLine.Visible);
    EXPECT_EQ(InfoBar.Panel[0], "Bezugspunkt verschieben: linke Maustaste drücken und bewegen");
    EXPECT_EQ(Map.InHand, text);
    EXPECT_TRUE(Button_Now("Rfline").Value);
    Map_Redraw();  // the tool lives through it
    Map_Mouse_Move({300, 200}, false);
    EXPECT_EQ(Box(Map.imgRfLine), QRect(292, 192, 16, 16));
    EXPECT_FALSE(Map_Paint_Over().empty());
    if (drag)
      Drag({300, 200}, {400, 250});
    else
      Click({400, 250});
    EXPECT_EQ(Foot(text), QPoint(400, 250));
    EXPECT_EQ(Row(text).Typ, 1);
    EXPECT_EQ(Map.InHand, text);
    EXPECT_EQ(Map_Tool_In_Use(), nullptr);
    EXPECT_EQ(Box(Map.imgRfLine), QRect(392, 242, 16, 16));
    EXPECT_TRUE(Has_Foot_Point());
    End_Entry();
  }
}

TEST_F(FootPointTest, StaysInTheViewIsGivenUpAndRemovedAfterAQuestion) {
  Zoom_At(2, 0, 0);
  const QString text = Take(Text_Row("Elster", 100, 100));
  Move_Foot_Point();
  Map_Key(Qt::Key_Escape, {});
  EXPECT_FALSE(Map.imgRfLine.Visible);
  EXPECT_EQ(std::pair(Map.InHand, Foot(text)), std::pair(text, QPoint(0, 0)));
  Move_Foot_Point();
  Map_Mouse_Down({200, 100}, MouseButton::Left, {});
  Map_Mouse_Up({-30, 150}, MouseButton::Left);
  EXPECT_EQ(Foot(text), QPoint(1, 300)) << "0 would mean none";
  Tbl.Tag = TableTag::Clean;
  With_Box("Fußpunkt für den Text: Elster entfernen?", MsgAnswer::No, Change_Foot_Point);
  EXPECT_EQ(std::tuple(Foot(text), Tbl.Tag), std::tuple(QPoint(1, 300), TableTag::Clean));
  With_Box("Fußpunkt", MsgAnswer::Yes, Change_Foot_Point);
  EXPECT_EQ(std::tuple(Foot(text), Tbl.Tag), std::tuple(QPoint(0, 0), TableTag::Dirty));
  EXPECT_FALSE(Map.imgRfLine.Visible);
}

TEST_F(FootPointTest, EndMarkIsTheKind) {
  const std::tuple<int, int, int> cases[] = {{0, 1, 3}, {1, 1, 3}, {102, 2, 103}, {3, 3, 3},
                                             {5, 0, 5}, {7, 0, 7}, {-1, 0, -1}};
  for (const auto& [typ, shown, after] : cases) {
    const QString text = Take({"Text", "Elster", "Arial", 12, 0, 14, -100, 100, 100, 300, 200, typ});
    EXPECT_EQ(End_Mark_In_Hand(), shown) << typ;
    Set_End_Mark(3);
    EXPECT_EQ(Row(text).Typ, after) << typ;
    End_Entry();
  }
  const QString next = Take(Text_Row("Star", 100, 100));
  Move_Foot_Point();
  Click({200, 200});
  EXPECT_EQ(Row(next).Typ, 3);
}
