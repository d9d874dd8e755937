#include "tools/mouse.h"

#include "support/hand_fixture.h"

using Mouse = HandTest;

TEST_F(Mouse, PositionAndEntryUnderThePointer) {
  Add(Text_Row("Amsel", 100, 100));
  Map_Redraw();
  int heavy = 0, light = 0;
  events.StateChanged.Connect([&] { ++heavy; });
  events.MapPainted.Connect([&] { ++heavy; });
  events.InfoBarChanged.Connect([&] { ++light; });
  const auto panel = [](size_t number) { return InfoBar.Panel[number]; };
  Map_Mouse_Move({400, 300}, false);
  EXPECT_EQ(panel(1), "|_ 400 : 300 Pixel");
  EXPECT_EQ(panel(2), " Abstand vom linken oberen Karteneck ");
  EXPECT_EQ(Map_Pointer(), MapPointer::Arrow);
  Map_Mouse_Move({110, 108}, false);
  EXPECT_EQ(panel(0), "Text: Amsel");
  EXPECT_EQ(Map_Pointer(), MapPointer::Move);
  InfoBar.Panel[0] = QStringLiteral("von anderen");
  Map_Mouse_Move({111, 108}, false);
  EXPECT_EQ(panel(0), "von anderen");  // still the same entry: not written again
  Map_Mouse_Move({111, 108}, false);
  EXPECT_EQ(std::pair(light, heavy), std::pair(3, 0));
  frmMDI.mouseUnit = MouseUnit::Metric;
  MapPixelMm = MapPixelMmY = 0.25;
  Set_Zoom(2.0);
  Map_Mouse_Move({100, 101}, false);
  EXPECT_EQ(panel(1), "|_ 50,0 : 50,5 mm");
  Add(Text_Row("Fink", 100, 100, -1));
  Map_Redraw();
  Click({600, 550});
  Map_Mouse_Move({110, 50}, false);
  EXPECT_EQ(panel(2), "1 Objekt unsichtbar");  // the number is not wiped away
}

TEST_F(Mouse, AClickThroughTheEntryInHandMeansTheOneAbove) {
  const QString below = Add(Figure_Row(20, {100, 100, 200, 200})), above = Add(Text_Row("Amsel", 150, 150));
  Map_Redraw();
  Click({280, 280});
  ASSERT_EQ(Map.InHand, below);
  Click({155, 156});
  EXPECT_EQ(Map.InHand, above);
  Click({280, 280});
  Drag({155, 156}, {165, 166});  // a drag means what is in hand
  EXPECT_EQ(At(below), QPoint(110, 110));
  EXPECT_EQ(At(above), QPoint(150, 150));
}

TEST_F(Mouse, KeysForTheEntryInHand) {
  const QString amsel = Add(Text_Row("Amsel", 100, 100));
  Map_Redraw();
  for (const int key : {Qt::Key_Left, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Return}) EXPECT_FALSE(Map_Key(key, {}));
  ASSERT_TRUE(Take_Entry(amsel));
  Text_Typed(QStringLiteral("Star"));
  EXPECT_TRUE(Map_Key(Qt::Key_Escape, {}));  // first the text is as it was, then the entry is left
  EXPECT_EQ(std::tuple(Map.Text2.Text, Map.InHand), std::tuple(QStringLiteral("Amsel"), amsel));
  EXPECT_TRUE(Map_Key(Qt::Key_Escape, {}));
  EXPECT_FALSE(Entry_In_Hand());
  EXPECT_EQ(Row(amsel).Eintrag, "Amsel");
  int ends = 0;
  events.EndWanted.Connect([&] { ++ends; });
  for (const MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    MessageScript script("Pause / Unterbrechen", answer);
    EXPECT_TRUE(Map_Key(Qt::Key_Pause, {}));
  }
  EXPECT_EQ(ends, 1);
}
